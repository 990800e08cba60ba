// What a file that replaces another takes over from it.
#include <endian.h>
#include <grp.h>
#include <pwd.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <string_view>
#include <vector>

#include "hosts/cli/posix/Descriptor.h"

namespace vrn::cli::system {

namespace {

constexpr const char* accessControlList = "system.posix_acl_access";

constexpr mode_t groupBits(mode_t mode) { return mode >> 3U & 07U; }
constexpr mode_t otherBits(mode_t mode) { return mode & 07U; }
constexpr mode_t ownerAccess(mode_t mode) { return mode >> 6U & 06U; }

std::string valueOf(int file, const std::string& name, const std::string& shown) {
    for (;;) {
        const auto size = fgetxattr(file, name.c_str(), nullptr, 0);
        std::string value(static_cast<std::size_t>(std::max<ssize_t>(size, 0)), '\0');
        const auto got = size < 0 ? size : fgetxattr(file, name.c_str(), value.data(), value.size());
        if (got >= 0) {
            value.resize(static_cast<std::size_t>(got));
            return value;
        }
        if (errno != ERANGE) {
            fail(shown, "its extended attribute " + name + " cannot be read", errno);
        }
    }
}

// What the system works out of the content is not the old file's to give.
bool isOfContent(std::string_view name) { return name == "security.ima" || name == "security.evm"; }

std::map<std::string, std::string> attributesOf(int file, const std::string& shown) {
    std::string names;
    ssize_t size = 0;
    do {
        size = flistxattr(file, nullptr, 0);
        names.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
        size = size <= 0 ? size : flistxattr(file, names.data(), names.size());
    } while (size < 0 && errno == ERANGE);
    if (size < 0 && errno != ENOTSUP) {
        fail(shown, "its extended attributes cannot be read", errno);
    }
    std::map<std::string, std::string> attributes;
    for (std::size_t at = 0; size > 0 && at < static_cast<std::size_t>(size);) {
        const std::string name(names.c_str() + at);
        at += name.size() + 1;
        if (!isOfContent(name)) {
            attributes.emplace(name, valueOf(file, name, shown));
        }
    }
    return attributes;
}

// The rights of the file's own group. With an access control list the mode holds the list's mask in their place.
mode_t groupRights(const Traits& traits) {
    struct Entry {
        std::uint16_t tag;
        std::uint16_t rights;
        std::uint32_t id;
    };
    constexpr std::size_t header = 4;
    constexpr std::uint16_t owningGroup = 0x04;
    const auto list = traits.attributes.find(accessControlList);
    const auto mask = groupBits(traits.status.st_mode);
    if (list == traits.attributes.end()) {
        return mask;
    }
    const auto& bytes = list->second;
    for (auto at = header; at + sizeof(Entry) <= bytes.size(); at += sizeof(Entry)) {
        Entry entry{};
        std::memcpy(&entry, bytes.data() + at, sizeof entry);
        if (le16toh(entry.tag) == owningGroup) {
            return mask & le16toh(entry.rights);
        }
    }
    return 0;
}

std::string groupName(gid_t group) {
    const auto* const entry = getgrgid(group);  // NOLINT(concurrency-mt-unsafe): under the lock of `requireHarmless`
    return entry != nullptr ? entry->gr_name : std::to_string(group);
}

bool isMember(const std::string& name, gid_t own, gid_t group) {
    int count = 0;
    (void)getgrouplist(name.c_str(), own, nullptr, &count);
    std::vector<gid_t> groups(static_cast<std::size_t>(count));
    (void)getgrouplist(name.c_str(), own, groups.data(), &count);
    return std::find(groups.begin(), groups.end(), group) != groups.end();
}

// Throws when the file, with what it could not keep, would shut somebody out.
void requireHarmless(const Traits& old, const struct stat& now, const std::string& shown) {
    static std::mutex mutex;
    const std::scoped_lock lock(mutex);
    const auto& status = old.status;
    const bool keepsGroup = now.st_gid == status.st_gid;
    const bool hasList = old.attributes.contains(accessControlList);
    if (!keepsGroup && (hasList || groupRights(old) != otherBits(status.st_mode))) {
        fail(shown, "only its owner or root can write it and keep its group " + groupName(status.st_gid));
    }
    // Somebody who is not known any more cannot be shut out either.
    const auto* const owner = getpwuid(status.st_uid);  // NOLINT(concurrency-mt-unsafe): under the lock
    if (now.st_uid == status.st_uid || owner == nullptr) {
        return;
    }
    const std::string name = owner->pw_name;
    const bool isInGroup = keepsGroup && isMember(name, owner->pw_gid, status.st_gid);
    const auto left = isInGroup ? groupRights(old) : otherBits(status.st_mode);
    if ((ownerAccess(status.st_mode) & ~left) != 0) {
        fail(shown, "only its owner " + name + " or root can write it without shutting " + name + " out");
    }
}

}  // namespace

Traits traitsOf(int file, const std::string& shown) {
    Traits traits;
    if (fstat(file, &traits.status) != 0) {
        fail(shown, "cannot be read", errno);
    }
    traits.attributes = attributesOf(file, shown);
    return traits;
}

void takeOver(int file, const Traits& old, const std::string& shown) {
    const auto& wanted = old.status;
    const bool gaveAll = fchown(file, wanted.st_uid, wanted.st_gid) == 0;
    if (!gaveAll) {
        const int groupNotGiven = fchown(file, static_cast<uid_t>(-1), wanted.st_gid);
        static_cast<void>(groupNotGiven);  // what it is now counts
        struct stat now {};
        if (fstat(file, &now) != 0) {
            fail(shown, "cannot be written", errno);
        }
        requireHarmless(old, now, shown);
    }
    const auto given = attributesOf(file, shown);
    // The folder may have given the new file a list of its own.
    if (given.contains(accessControlList) && !old.attributes.contains(accessControlList) &&
        fremovexattr(file, accessControlList) != 0) {
        fail(shown, "its permissions cannot be kept", errno);
    }
    for (const auto& [name, value] : old.attributes) {
        const auto same = given.find(name);
        if ((same == given.end() || same->second != value) &&
            fsetxattr(file, name.c_str(), value.data(), value.size(), 0) != 0) {
            fail(shown,
                 (name == accessControlList ? "its access control list" : "its extended attribute " + name) +
                     " cannot be kept",
                 errno);
        }
    }
    // Rights to act as a user or group are for the one that gave them.
    if (fchmod(file, wanted.st_mode & (gaveAll ? 07777U : 0777U)) != 0) {
        fail(shown, "its permissions cannot be kept", errno);
    }
}

}  // namespace vrn::cli::system
