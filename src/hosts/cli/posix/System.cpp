// The process on POSIX: signals that end it, noted while something is being written; waits that would otherwise never end; its
// standard streams, which do not get stuck in them.
#include "hosts/cli/System.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <istream>
#include <ostream>
#include <streambuf>

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

// The C++ library's own buffers read and write on when a signal wants them to stop.
class StandardBuffer final : public std::streambuf {
  public:
    explicit StandardBuffer(int descriptor) : descriptor_(descriptor) {
        setp(buffer_.data(), buffer_.data() + buffer_.size());
    }

  protected:
    int_type underflow() override {
        const auto count = readSomeWaiting(descriptor_, buffer_.data(), buffer_.size());
        if (count < 0 && errno != ECANCELED) {
            throw std::ios_base::failure("read");  // the stream becomes bad rather than ending
        }
        if (count <= 0) {
            return traits_type::eof();
        }
        setg(buffer_.data(), buffer_.data(), buffer_.data() + count);
        return traits_type::to_int_type(*gptr());
    }

    int_type overflow(int_type c) override {
        if (sync() != 0) {
            return traits_type::eof();
        }
        if (!traits_type::eq_int_type(c, traits_type::eof())) {
            *pptr() = traits_type::to_char_type(c);
            pbump(1);
        }
        return traits_type::not_eof(c);
    }

    int sync() override {
        const std::string_view pending(pbase(), static_cast<std::size_t>(pptr() - pbase()));
        setp(buffer_.data(), buffer_.data() + buffer_.size());
        return writeAllWaiting(descriptor_, pending) ? 0 : -1;
    }

  private:
    int descriptor_;
    std::array<char, 65536> buffer_{};
};

// Open for the other direction, so that whoever uses the stream gets an error.
void takeIfClosed(int descriptor, int flags) {
    if (fcntl(descriptor, F_GETFD) < 0 && errno == EBADF) {
        (void)open("/dev/null", flags);  // the lowest number that is free, which is this one
    }
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

std::vector<std::string> prepare(int argc, char** argv) {
    takeIfClosed(STDIN_FILENO, O_WRONLY);
    takeIfClosed(STDOUT_FILENO, O_RDONLY);
    takeIfClosed(STDERR_FILENO, O_RDONLY);
    // Beyond a limit on file sizes a write is to fail, not to end the program.
    (void)std::signal(SIGXFSZ, SIG_IGN);
    return {argv, argv + argc};
}

std::istream& input() {
    static StandardBuffer buffer(STDIN_FILENO);
    static std::istream stream(&buffer);
    return stream;
}

std::ostream& output() {
    static StandardBuffer buffer(STDOUT_FILENO);
    static std::ostream stream(&buffer);
    return stream;
}

std::ostream& errors() {
    static StandardBuffer buffer(STDERR_FILENO);
    static std::ostream stream(&buffer);
    stream.setf(std::ios::unitbuf);
    return stream;
}

bool isTerminal(Stream stream) noexcept { return isatty(stream == Stream::Out ? STDOUT_FILENO : STDERR_FILENO) == 1; }

unsigned terminalWidth() noexcept {
    struct winsize size {};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80U;
}

}  // namespace vrn::cli::system
