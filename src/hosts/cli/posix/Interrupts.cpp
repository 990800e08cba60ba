// Signals that end a program, noted while something is being written; and waits that would otherwise never end.
#include <fcntl.h>
#include <poll.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>

#include "hosts/cli/System.h"
#include "hosts/cli/posix/Descriptor.h"

namespace vrn::cli::system {

namespace {

// Set by a signal, read by every thread.
std::atomic<int> notedSignal = 0;
std::atomic<bool> isDeferring = false;
static_assert(std::atomic<int>::is_always_lock_free);

// Whoever waits for a descriptor waits for the reading end of this pipe as well: no signal comes between looking and waiting.
std::array<int, 2> wakePipe{-1, -1};

constexpr std::array<int, 3> interrupts{SIGINT, SIGTERM, SIGHUP};
std::array<struct sigaction, interrupts.size()> formerActions{};
struct sigaction formerPipeAction {};

extern "C" void noteInterrupt(int signal) {
    const int error = errno;
    int none = 0;
    notedSignal.compare_exchange_strong(none, signal);
    const char byte = 0;
    [[maybe_unused]] const auto written = write(wakePipe[1], &byte, 1);
    errno = error;
}

void emptyWakePipe() noexcept {
    std::array<char, 16> bytes{};
    while (read(wakePipe[0], bytes.data(), bytes.size()) > 0) {
    }
}

// Whether the descriptor is ready before an interruption is noted, or is within a moment after that.
bool awaitReady(int descriptor, short events) noexcept {
    constexpr int moment = 1000;
    std::array<pollfd, 2> all{pollfd{descriptor, events, 0}, pollfd{wakePipe[0], POLLIN, 0}};
    while (!isDeferring || !interrupted()) {
        if (poll(all.data(), wakePipe[0] < 0 ? 1 : 2, -1) > 0 && all[0].revents != 0) {
            return true;
        }
    }
    return (events & POLLOUT) != 0 && poll(all.data(), 1, moment) > 0;
}

// Somebody else may have made the descriptor one that does not wait.
void awaitAlone(int descriptor, short events) noexcept {
    pollfd ready{descriptor, events, 0};
    (void)poll(&ready, 1, -1);
}

}  // namespace

InterruptGuard::InterruptGuard() noexcept {
    if (wakePipe[0] < 0 && pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        wakePipe = {-1, -1};
    }
    emptyWakePipe();
    notedSignal = 0;
    isDeferring = true;
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = SA_RESTART;  // who waits for others waits in poll, which never begins again
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < interrupts.size(); ++i) {
        (void)sigaction(interrupts[i], nullptr, &formerActions[i]);
        if (formerActions[i].sa_handler != SIG_IGN) {
            (void)sigaction(interrupts[i], &action, nullptr);
        }
    }
    // A reader that goes away is no reason to stop in the middle either: the output fails, and that is reported at the end.
    action.sa_handler = SIG_IGN;
    (void)sigaction(SIGPIPE, &action, &formerPipeAction);
}

InterruptGuard::~InterruptGuard() {
    for (std::size_t i = 0; i < interrupts.size(); ++i) {
        (void)sigaction(interrupts[i], &formerActions[i], nullptr);
    }
    (void)sigaction(SIGPIPE, &formerPipeAction, nullptr);
    isDeferring = false;
}

bool interrupted() noexcept { return notedSignal != 0; }

void followInterrupt() noexcept {
    const int signal = notedSignal;
    if (signal != 0) {
        (void)std::signal(signal, SIG_DFL);
        (void)std::raise(signal);
    }
}

ssize_t readSome(int descriptor, char* buffer, std::size_t size) noexcept {
    for (;;) {
        const auto count = read(descriptor, buffer, size);
        if (count < 0 && errno == EAGAIN) {
            awaitAlone(descriptor, POLLIN);
        } else if (count >= 0 || errno != EINTR) {
            return count;
        }
    }
}

ssize_t readSomeWaiting(int descriptor, char* buffer, std::size_t size) noexcept {
    if (!awaitReady(descriptor, POLLIN)) {
        errno = ECANCELED;
        return -1;
    }
    return readSome(descriptor, buffer, size);
}

bool writeAll(int descriptor, std::string_view bytes) noexcept {
    while (!bytes.empty()) {
        const auto written = write(descriptor, bytes.data(), bytes.size());
        if (written >= 0) {
            bytes.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            awaitAlone(descriptor, POLLOUT);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool writeAllWaiting(int descriptor, std::string_view bytes) noexcept {
    while (isDeferring && !bytes.empty()) {
        if (!awaitReady(descriptor, POLLOUT)) {
            errno = ECANCELED;
            return false;
        }
        const auto part = bytes.substr(0, PIPE_BUF);  // a pipe that is ready takes so much at once
        if (!writeAll(descriptor, part)) {
            return false;
        }
        bytes.remove_prefix(part.size());
    }
    return writeAll(descriptor, bytes);
}

}  // namespace vrn::cli::system
