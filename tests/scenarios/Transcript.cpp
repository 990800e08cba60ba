#include "scenarios/Transcript.h"

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

namespace vrn::test {

namespace fs = std::filesystem;

std::vector<std::string> linesOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<fs::path> transcriptsIn(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (entry.path().extension() == ".transcript") {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> requestsOf(const fs::path& transcript) {
    LastMethod method;
    std::vector<std::string> requests;
    for (const auto& line : linesOf(transcript)) {
        if (line.starts_with("> ")) {
            requests.push_back(method.filledInto(line.substr(2)));
        } else if (line.starts_with("< ")) {
            method.see(requests.back(), line.substr(2));
        }
    }
    return requests;
}

std::string LastMethod::filledInto(std::string request) const {
    return replaced(std::move(request), "\"@LAST_METHOD@\"", json_);
}

void LastMethod::see(const std::string& request, const std::string& reply) {
    if (request.find("\"GetMethodXml\"") != std::string::npos) {
        json_ = nlohmann::json::parse(reply).value("result", nlohmann::json()).dump();
    }
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
        text.replace(at, from.size(), to);
    }
    return text;
}

}  // namespace vrn::test
