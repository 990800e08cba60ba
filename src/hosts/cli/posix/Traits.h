// What a file has besides its content: owner, group, permissions, access control list, extended attributes.
#pragma once

#include <sys/stat.h>

#include <map>
#include <string>

namespace vrn::cli::system {

using ExtendedAttributes = std::map<std::string, std::string>;

struct Traits {
    struct stat status {};
    ExtendedAttributes attributes;  ///< the access control list is one of them
};

/// Of an open file. Throws `Fault`, in which the file is called `shown`.
[[nodiscard]] Traits traitsOf(int file, const std::string& shown);

/// Gives a new file of this process the traits of an old one. A user who is not root cannot give a file away: owner and group may
/// become another as long as nobody loses access by it. Throws `Fault` for whatever else cannot be kept.
void takeOver(int file, const Traits& old, const std::string& shown);

}  // namespace vrn::cli::system
