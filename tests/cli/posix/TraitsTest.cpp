// What a rewritten file keeps, and when it is not rewritten because it could not: as other users see it, so only root can test it.
#include <gmock/gmock.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <functional>

#include "cli/ToolFixture.h"
#include "hosts/cli/System.h"

namespace vrn::test {
namespace {

using ::testing::HasSubstr;

constexpr uid_t owner = 61001;  // known to no system
constexpr uid_t colleague = 61002;
constexpr gid_t lab = 62001;
constexpr const char* access = "system.posix_acl_access";
constexpr const char* byDefault = "system.posix_acl_default";

// An access control list as the system keeps it: the owner's, a colleague's, the group's, the mask's and everybody's rights.
std::string accessList(unsigned colleagues, unsigned group, unsigned mask) {
    std::string list("\2\0\0\0", 4);
    const auto add = [&list](unsigned tag, unsigned rights, std::uint32_t id) {
        for (const std::uint32_t half : {tag, rights, id & 0xFFFFU, id >> 16U}) {
            list += {static_cast<char>(half & 0xFFU), static_cast<char>(half >> 8U)};
        }
    };
    add(0x01, 6, 0xFFFFFFFF);
    add(0x02, colleagues, colleague);
    add(0x04, group, 0xFFFFFFFF);
    add(0x10, mask, 0xFFFFFFFF);
    add(0x20, 0, 0xFFFFFFFF);
    return list;
}

class TraitsTest : public ToolFixture {
  protected:
    void SetUp() override {
        ToolFixture::SetUp();
        if (geteuid() != 0) {
            GTEST_SKIP() << "needs root";
        }
        fs::permissions(folder, fs::perms(0777));
        name_ = path("f").string();
        write("f", "old");
        if (setxattr(name_.c_str(), access, accessList(6, 4, 6).data(), accessList(6, 4, 6).size(), 0) != 0) {
            GTEST_SKIP() << "the file system has no access control lists";
        }
        ASSERT_EQ(removexattr(name_.c_str(), access), 0);
    }

    void own(uid_t user, gid_t group, mode_t mode) const {
        ASSERT_EQ(chown(name_.c_str(), user, group), 0);
        ASSERT_EQ(chmod(name_.c_str(), mode), 0);
    }
    void setAttribute(const std::string& file, const char* name, const std::string& value) const {
        ASSERT_EQ(setxattr(path(file).c_str(), name, value.data(), value.size(), 0), 0) << name;
    }
    std::string attribute(const std::string& file, const char* name) const {
        std::string value(4096, '\0');
        const auto size = getxattr(path(file).c_str(), name, value.data(), value.size());
        return size < 0 ? "none" : value.substr(0, static_cast<std::size_t>(size));
    }
    std::string ownersAndMode(const std::string& file) const {
        struct stat status {};
        EXPECT_EQ(stat(path(file).c_str(), &status), 0);
        std::ostringstream text;
        text << status.st_uid << ":" << status.st_gid << " " << std::oct << (status.st_mode & 07777U);
        return text.str();
    }

    /// What the tool has to say when a user writes the file; "written" when nothing.
    std::string writtenBy(uid_t user, gid_t group) const {
        std::array<int, 2> ends{};
        EXPECT_EQ(pipe(ends.data()), 0);
        const auto child = fork();
        if (child == 0) {
            std::string said = "no such user";
            if (setgroups(1, &group) == 0 && setresgid(user, user, user) == 0 && setresuid(user, user, user) == 0) {
                try {
                    cli::system::replaceFile(name_, "new", "");
                    said = "written";
                } catch (const cli::Fault& fault) {
                    said = fault.what();
                }
            }
            _exit(::write(ends[1], said.data(), said.size()) < 0 ? 1 : 0);
        }
        close(ends[1]);
        std::string said(4096, '\0');
        const auto size = ::read(ends[0], said.data(), said.size());
        close(ends[0]);
        waitpid(child, nullptr, 0);
        return said.substr(0, size < 0 ? 0 : static_cast<std::size_t>(size));
    }

    std::string name_;
};

TEST_F(TraitsTest, RootKeepsAll) {
    own(owner, lab, 0640);
    setAttribute("f", access, accessList(6, 4, 6));
    setAttribute("f", "user.origin", "instrument 7");
    cli::system::replaceFile(name_, "new", ".bak");
    for (const auto* const file : {"f", "f.bak"}) {
        EXPECT_EQ(ownersAndMode(file), "61001:62001 660") << file;
        EXPECT_EQ(attribute(file, access), accessList(6, 4, 6)) << file;
        EXPECT_EQ(attribute(file, "user.origin"), "instrument 7") << file;
    }
}

TEST_F(TraitsTest, TheGroupKeepsItsFile) {
    own(owner, lab, 0660);
    EXPECT_EQ(writtenBy(colleague, lab), "written");
    EXPECT_EQ(ownersAndMode("f"), "61002:62001 660");
    EXPECT_EQ(read("f"), "new");
}

TEST_F(TraitsTest, TheGroupGainsNothingFromTheMaskOfAList) {
    own(owner, lab, 0640);
    setAttribute("f", access, accessList(6, 4, 6));
    EXPECT_EQ(writtenBy(colleague, lab), "written");
    EXPECT_EQ(attribute("f", access), accessList(6, 4, 6));
    EXPECT_EQ(ownersAndMode("f"), "61002:62001 660");
}

TEST_F(TraitsTest, AListOfTheFolderIsNotGivenToAFileThatHadNone) {
    setAttribute(".", byDefault, accessList(6, 6, 6));
    own(owner, lab, 0640);
    cli::system::replaceFile(name_, "new", "");
    EXPECT_EQ(attribute("f", access), "none");
    EXPECT_EQ(ownersAndMode("f"), "61001:62001 640");
}

TEST_F(TraitsTest, WhoeverWouldBeShutOutKeepsTheFile) {
    own(owner, lab, 0606);
    EXPECT_THAT(writtenBy(colleague, colleague),
                HasSubstr("f: only its owner or root can write it and keep its group 62001"));
    constexpr uid_t known = 1;
    own(known, lab, 0660);
    EXPECT_THAT(writtenBy(colleague, lab), HasSubstr("or root can write it without shutting "));
    EXPECT_EQ(read("f"), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 3);
    own(known, lab, 0666);
    EXPECT_EQ(writtenBy(colleague, colleague), "written") << "nobody loses anything";
    EXPECT_EQ(ownersAndMode("f"), "61002:61002 666");
}

}  // namespace
}  // namespace vrn::test
