#include "hosts/cli/System.h"

#include <windows.h>

#include <io.h>
#include <shellapi.h>

#include <atomic>
#include <cstdio>
#include <iostream>

#include "text/windows/Wide.h"

namespace vrn::cli::system {

namespace {

std::atomic<bool> interruptFlag = false;

BOOL WINAPI noteInterrupt(DWORD /*event*/) {
    interruptFlag = true;
    return TRUE;
}

}  // namespace

std::vector<std::string> prepare(int /*argc*/, char** /*argv*/) {
    // The arguments of main are in the ANSI code page, which not every name is in.
    int count = 0;
    LPWSTR* const all = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    arguments.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        arguments.push_back(text::fromWide(all[i]));
    }
    (void)LocalFree(static_cast<HLOCAL>(all));
    (void)SetConsoleOutputCP(CP_UTF8);
    std::ios::sync_with_stdio(false);
    // One thread may read a method from standard input while another writes results.
    std::cin.tie(nullptr);
    return arguments;
}

std::istream& input() { return std::cin; }
std::ostream& output() { return std::cout; }
std::ostream& errors() { return std::cerr; }

bool isTerminal(Stream stream) noexcept { return _isatty(_fileno(stream == Stream::Out ? stdout : stderr)) != 0; }

unsigned terminalWidth() noexcept {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    return GetConsoleScreenBufferInfo(GetStdHandle(STD_ERROR_HANDLE), &info) != 0
               ? static_cast<unsigned>(info.srWindow.Right - info.srWindow.Left + 1)
               : 80U;
}

InterruptGuard::InterruptGuard() noexcept {
    interruptFlag = false;
    (void)SetConsoleCtrlHandler(noteInterrupt, TRUE);
}

InterruptGuard::~InterruptGuard() { (void)SetConsoleCtrlHandler(noteInterrupt, FALSE); }

bool interrupted() noexcept { return interruptFlag; }

// The exit status says it: there are no signals to end by.
void followInterrupt() noexcept {}

}  // namespace vrn::cli::system
