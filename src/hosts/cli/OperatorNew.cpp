// Where mimalloc is linked: its own operator new ends the program when there is no more memory. This one throws, as the standard
// says, so that the file at hand is reported and the others go on.
#include <unistd.h>

#include <cstdlib>
#include <new>
#include <string_view>

#include "hosts/cli/Call.h"

namespace {

// Without any memory not even an exception can be thrown, and the first allocations come before main.
[[gnu::constructor(101)]] void requireSomeMemory() {
    void* const memory = std::malloc(1);
    if (memory == nullptr) {
        constexpr std::string_view message = "vrnmethod: there is not enough memory\n";
        [[maybe_unused]] const auto written = write(STDERR_FILENO, message.data(), message.size());
        _exit(static_cast<int>(vrn::cli::ExitStatus::Fault));
    }
    std::free(memory);
}

}  // namespace

// NOLINTBEGIN(cppcoreguidelines-no-malloc)
void* operator new(std::size_t size) {
    if (void* const memory = std::malloc(size > 0 ? size : 1)) {
        return memory;
    }
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t /*size*/) noexcept { std::free(memory); }
// NOLINTEND(cppcoreguidelines-no-malloc)
