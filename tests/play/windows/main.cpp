// play_control FOLDER: plays every session of a folder to the scripted host over the control, a new control in a new window for
// each, unless it has its replies already. All in one process: starting one takes longer than a session.
#include <windows.h>
// After windows.h, which it builds on.
#include <ole2.h>

#include <filesystem>
#include <fstream>
#include <iostream>

#include "hosts/sample/script/ScriptHost.h"
#include "play/Sessions.h"
#include "sample/ActivationContext.h"

namespace {

namespace fs = std::filesystem;

void play(const fs::path& requests) {
    const auto replies = fs::path(requests).replace_extension(vrn::play::repliesOfControl);
    if (fs::exists(replies)) {
        return;
    }
    std::ifstream in(requests, std::ios::binary);
    std::ofstream out(replies, std::ios::binary);
    vrn::sample::runScriptHost(in, out);
}

}  // namespace

int main(int count, char** texts) {
    if (count != 2 || FAILED(OleInitialize(nullptr))) {
        std::cerr << "play_control FOLDER\n";
        return 2;
    }
    int status = 0;
    try {
        const vrn::test::ActivationContext control;
        for (const auto& entry : fs::directory_iterator(texts[1])) {
            if (entry.path().extension() == vrn::play::requestsOfSession) {
                play(entry.path());
            }
        }
    } catch (const std::exception& error) {
        std::cerr << "play_control: " << error.what() << '\n';
        status = 1;
    }
    OleUninitialize();
    return status;
}
