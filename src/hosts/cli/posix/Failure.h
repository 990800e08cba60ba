// What the user reads of a call of the system that failed.
#pragma once

#include <string>
#include <system_error>

#include "hosts/cli/ExitStatus.h"
#include "hosts/cli/Names.h"

namespace vrn::cli::system {

[[noreturn]] inline void fail(const std::string& path, const std::string& what) {
    throw Fault(displayName(path) + ": " + what);
}

[[noreturn]] inline void fail(const std::string& path, const std::string& what, int error) {
    fail(path, what + ": " + std::generic_category().message(error));
}

[[noreturn]] inline void failUnreadable(const std::string& path, int error) {
    fail(path, unreadable({error, std::generic_category()}));
}

}  // namespace vrn::cli::system
