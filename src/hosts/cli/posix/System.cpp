#include "hosts/cli/System.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <istream>
#include <ostream>
#include <streambuf>

#include "hosts/cli/posix/Descriptor.h"

namespace vrn::cli::system {

namespace {

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
