// SPDX-FileCopyrightText: The Vexta authors
// SPDX-License-Identifier: Apache-2.0
// Who may read a result may read it after it was saved again, and nobody else.
#include "platform/files.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string>

#include <grp.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

struct stat factsOf(const std::string& path) {
    struct stat facts = {};
    EXPECT_EQ(::stat(path.c_str(), &facts), 0) << path;
    return facts;
}

unsigned modeOf(const std::string& path) {
    return factsOf(path).st_mode & 07777U;
}

/// The umask of a test.
class Umask {
public:
    explicit Umask(mode_t mask) : m_previous(::umask(mask)) {}
    ~Umask() { ::umask(m_previous); }
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    mode_t m_previous;
};

class ReplacedAccess : public testing::Test {
protected:
    std::string writeWithMode(mode_t mode) const {
        const std::string path = directory.write("result", "old");
        EXPECT_EQ(::chmod(path.c_str(), mode), 0);
        return path;
    }
    /// Replaces the file in each way there is.
    void replaceBy(const std::string& path, const std::function<void()>& check) const {
        ASSERT_TRUE(platform::writeFileAtomically(path, "new").ok());
        EXPECT_EQ(support::readFile(path), "new");
        check();
        auto finished =
            platform::AtomicFile::ofFinished(directory.write("finished", "moved"), path);
        ASSERT_TRUE(finished.ok() && finished.value().commit().ok());
        EXPECT_EQ(support::readFile(path), "moved");
        check();
    }
    const support::TempDir directory;
    const Umask usual{022};
};

TEST_F(ReplacedAccess, PermissionBitsStayAsTheyWere) {
    for (const mode_t mode : {0600U, 0640U, 0664U, 0666U, 0604U, 0755U, 0400U}) {
        const std::string path = writeWithMode(mode);
        replaceBy(path, [&] { EXPECT_EQ(modeOf(path), mode); });
        fs::remove(path);
    }
}

TEST_F(ReplacedAccess, ANewFileFollowsTheUmask) {
    const Umask strict(027);
    ASSERT_TRUE(platform::writeFileAtomically(directory.file("new"), "new").ok());
    EXPECT_EQ(modeOf(directory.file("new")), 0640U);
    auto finished =
        platform::AtomicFile::ofFinished(directory.write("finished", ""), directory.file("other"));
    ASSERT_TRUE(finished.ok() && finished.value().commit().ok());
    EXPECT_EQ(modeOf(directory.file("other")), 0640U);
}

TEST_F(ReplacedAccess, NoFileComesToRunAsSomeoneElse) {
    const std::string path = writeWithMode(06755);
    replaceBy(path, [&] { EXPECT_EQ(modeOf(path), 0755U); });
}

TEST_F(ReplacedAccess, ACopyHasTheAccessOfANewFile) {
    const std::string path = writeWithMode(0600);
    ASSERT_TRUE(platform::copyFileAtomically(directory.write("input", "new"), path).ok());
    EXPECT_EQ(modeOf(path), 0644U);
}

TEST_F(ReplacedAccess, AFileInPlaceOfALinkIsClosedToThoseToWhomItsTargetWas) {
    const std::string target = writeWithMode(0600);
    fs::create_symlink(target, directory.file("link"));
    ASSERT_TRUE(platform::writeFileAtomically(directory.file("link"), "new").ok());
    EXPECT_FALSE(fs::is_symlink(directory.file("link")));
    EXPECT_EQ(modeOf(directory.file("link")), 0600U);
    // Nor does the target's owner give it more than a new file has.
    ASSERT_EQ(::chmod(target.c_str(), 0666), 0);
    fs::create_symlink(target, directory.file("open"));
    ASSERT_TRUE(platform::writeFileAtomically(directory.file("open"), "new").ok());
    EXPECT_EQ(modeOf(directory.file("open")), 0644U);
}

// --- Owner and group, which only root may give away

constexpr uid_t kSomebody = 54321;
constexpr gid_t kTheirGroup = 54322;
constexpr gid_t kAnotherGroup = 54323;

TEST_F(ReplacedAccess, RootKeepsOwnerAndGroup) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can make a file of someone else's";
    }
    const std::string path = writeWithMode(0640);
    ASSERT_EQ(::chown(path.c_str(), kSomebody, kTheirGroup), 0);
    replaceBy(path, [&] {
        EXPECT_EQ(factsOf(path).st_uid, kSomebody);
        EXPECT_EQ(factsOf(path).st_gid, kTheirGroup);
        EXPECT_EQ(modeOf(path), 0640U);
    });
}

/// Runs `action` as a user of those groups, none of whom is root.
bool asSomebody(std::initializer_list<gid_t> groups, const std::function<bool()>& action) {
    const pid_t child = ::fork();
    if (child == 0) {
        const gid_t first = *groups.begin();
        const bool changed = ::setgroups(groups.size(), groups.begin()) == 0 &&
                             ::setresgid(first, first, first) == 0 &&
                             ::setresuid(kSomebody, kSomebody, kSomebody) == 0;
        ::_exit(changed && action() ? 0 : 1);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST_F(ReplacedAccess, AMemberKeepsTheGroupOfAnothersFile) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can act as someone else";
    }
    ASSERT_EQ(::chmod(directory.path().c_str(), 0777), 0);
    const std::string path = writeWithMode(0660);
    ASSERT_EQ(::chown(path.c_str(), 0, kTheirGroup), 0);
    ASSERT_TRUE(asSomebody({kAnotherGroup, kTheirGroup},
                           [&] { return platform::writeFileAtomically(path, "new").ok(); }));
    EXPECT_EQ(factsOf(path).st_uid, kSomebody);
    EXPECT_EQ(factsOf(path).st_gid, kTheirGroup);
    EXPECT_EQ(modeOf(path), 0660U);
}

TEST_F(ReplacedAccess, AGroupThatCannotBeKeptLeavesItsRightsToNoOther) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can act as someone else";
    }
    ASSERT_EQ(::chmod(directory.path().c_str(), 0777), 0);
    struct Case {
        mode_t before;
        mode_t after;
    };
    for (const Case& one : {Case{0660, 0600}, Case{0664, 0644}, Case{0604, 0600}}) {
        const std::string path = writeWithMode(one.before);
        ASSERT_EQ(::chown(path.c_str(), 0, kTheirGroup), 0);
        ASSERT_TRUE(asSomebody({kAnotherGroup},
                               [&] { return platform::writeFileAtomically(path, "new").ok(); }));
        EXPECT_EQ(factsOf(path).st_gid, kAnotherGroup);
        EXPECT_EQ(modeOf(path), one.after);
        fs::remove(path);
    }
}

// --- POSIX access lists

constexpr const char* kAccessList = "system.posix_acl_access";

/// An access list as the system stores it: the owner may read and write, one user of ours may read,
/// the group and all others nothing.
std::string listForOneReader() {
    struct Entry {
        std::uint16_t tag;
        std::uint16_t permissions;
        std::uint32_t id;
    };
    constexpr std::uint32_t kNobodySpecial = 0xffffffff;
    const Entry entries[] = {{0x01, 6, kNobodySpecial}, // the owner
                             {0x02, 4, kSomebody},
                             {0x04, 0, kNobodySpecial},  // the group
                             {0x10, 4, kNobodySpecial},  // the most that any but the owner may
                             {0x20, 0, kNobodySpecial}}; // all others
    const auto put = [](std::string& bytes, std::uint32_t value, int size) {
        for (int i = 0; i < size; ++i) {
            bytes += static_cast<char>(value >> (8 * i) & 0xffU);
        }
    };
    std::string bytes;
    put(bytes, 2, 4); // the version
    for (const Entry& entry : entries) {
        put(bytes, entry.tag, 2);
        put(bytes, entry.permissions, 2);
        put(bytes, entry.id, 4);
    }
    return bytes;
}

bool setList(const std::string& path, const char* name) {
    const std::string list = listForOneReader();
    return ::setxattr(path.c_str(), name, list.data(), list.size(), 0) == 0;
}

std::string listOf(const std::string& path) {
    std::string list(1024, '\0');
    const ssize_t size = ::getxattr(path.c_str(), kAccessList, list.data(), list.size());
    list.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return list;
}

TEST_F(ReplacedAccess, AnAccessListStaysAsItWas) {
    const std::string path = writeWithMode(0600);
    if (!setList(path, kAccessList)) {
        GTEST_SKIP() << "this file system knows no access lists";
    }
    replaceBy(path, [&] {
        EXPECT_EQ(listOf(path), listForOneReader());
        EXPECT_EQ(modeOf(path), 0640U) << "the group's bits show the most that the list allows";
    });
}

TEST_F(ReplacedAccess, TheListThatADirectoryGivesNewFilesOpensNoReplacedOne) {
    const std::string path = writeWithMode(0640);
    if (!setList(directory.path(), "system.posix_acl_default")) {
        GTEST_SKIP() << "this file system knows no access lists";
    }
    replaceBy(path, [&] {
        EXPECT_EQ(listOf(path), "");
        EXPECT_EQ(modeOf(path), 0640U);
    });
}

TEST_F(ReplacedAccess, AFileWhoseGroupAndListCannotBeKeptIsItsOwnersAlone) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can act as someone else";
    }
    ASSERT_EQ(::chmod(directory.path().c_str(), 0777), 0);
    const std::string path = writeWithMode(0600);
    ASSERT_EQ(::chown(path.c_str(), 0, kTheirGroup), 0);
    if (!setList(path, kAccessList)) {
        GTEST_SKIP() << "this file system knows no access lists";
    }
    ASSERT_TRUE(asSomebody({kAnotherGroup},
                           [&] { return platform::writeFileAtomically(path, "new").ok(); }));
    EXPECT_EQ(listOf(path), "");
    EXPECT_EQ(modeOf(path), 0600U);
}

} // namespace
