#include "host/TemporaryFolder.h"

#include <ZEL/base/SafeFile.h>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace ZEL::tests {
namespace {

using Result = SafeFile::Result;

struct SafeFileTest : testing::Test {
    SafeFileTest() { ::umask(022); }

    [[nodiscard]] std::string path(std::string const & name) const { return folder.path(name); }
    [[nodiscard]] std::string content(std::string const & name) const { return folder.content(name); }
    [[nodiscard]] bool exists(std::string const & name) const { return std::filesystem::exists(path(name)); }
    [[nodiscard]] struct stat statusOf(std::string const & name) const {
        struct stat status {};
        EXPECT_EQ(::stat(path(name).c_str(), &status), 0) << name;
        return status;
    }
    [[nodiscard]] unsigned int modeOf(std::string const & name) const { return statusOf(name).st_mode & 07777U; }
    void makeGoal(unsigned int mode) const { ASSERT_EQ(::chmod(folder.file("x", "old").c_str(), mode), 0); }
    void write(std::string const & text) const { static_cast<void>(folder.file("x~", text)); }

    TemporaryFolder folder;
};

TEST_F(SafeFileTest, ANewFileIsMadeAsTheUserMakesFilesAndAnotherOneAsItWas) {
    SafeFile made(path("x"));
    ASSERT_TRUE(made.open());
    write("new");
    EXPECT_FALSE(exists("x"));
    EXPECT_EQ(made.put(), Result::Done);
    EXPECT_EQ(modeOf("x"), 0644U);

    uid_t const self = ::geteuid();
    for (auto const & [mode, owner] : {std::pair(0600U, self), std::pair(0666U, self), std::pair(04751U, self),
                                       std::pair(0440U, self), std::pair(0664U, uid_t(1001))}) {
        makeGoal(mode);
        bool const hasAttributes = ::setxattr(path("x").c_str(), "user.note", "kept", 4, 0) == 0;
        if (self == 0) {
            ASSERT_EQ(::chown(path("x").c_str(), owner, 2000), 0);
            ASSERT_EQ(::chmod(path("x").c_str(), mode), 0); // which a change of the owner narrows
        }
        struct stat const before = statusOf("x");
        SafeFile file(path("x"));
        ASSERT_TRUE(file.open());
        EXPECT_EQ(modeOf("x~"), before.st_uid == self ? mode | 0600U : 0600U) << "before the first byte";
        write("new " + std::to_string(mode));
        ASSERT_EQ(file.put(), ::access(path("x").c_str(), W_OK) == 0 ? Result::Done : Result::NotOpened);
        file.remove();
        struct stat const after = statusOf("x");
        EXPECT_EQ(after.st_mode, before.st_mode);
        EXPECT_EQ(after.st_uid, before.st_uid);
        EXPECT_EQ(after.st_gid, before.st_gid);
        std::array<char, 4> note{};
        EXPECT_TRUE(!hasAttributes || ::getxattr(path("x").c_str(), "user.note", note.data(), note.size()) == 4);
        EXPECT_FALSE(exists("x~"));
        std::filesystem::remove(path("x"));
    }
}

TEST_F(SafeFileTest, WhatMustNotBeReplacedTakesACopy) {
    makeGoal(0640);
    std::filesystem::create_hard_link(path("x"), path("second"));
    std::filesystem::create_symlink("x", path("link"));
    for (std::string const name : {"x", "link"}) {
        SafeFile file(path(name));
        ASSERT_TRUE(file.open());
        EXPECT_EQ(modeOf(name + "~"), 0600U);
        static_cast<void>(folder.file(name + "~", "by " + name));
        EXPECT_EQ(file.put(), Result::Done);
        EXPECT_EQ(content("second"), "by " + name);
        EXPECT_FALSE(exists(name + "~"));
    }
    EXPECT_TRUE(std::filesystem::is_symlink(path("link")));
    EXPECT_EQ(statusOf("x").st_nlink, 2U);
}

TEST_F(SafeFileTest, WhereAnOwnerCannotBeKeptTheFileIsWrittenThrough) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "needs another user";
    }
    makeGoal(0666);
    ASSERT_EQ(::chown(path("x").c_str(), 1001, 2000), 0);
    ASSERT_EQ(::chmod(path("").c_str(), 0777), 0);
    ino_t const place = statusOf("x").st_ino;
    ASSERT_EQ(::seteuid(1002), 0);
    SafeFile file(path("x"));
    bool const isOpen = file.open();
    unsigned int const mode = modeOf("x~");
    write("new");
    Result const result = file.put();
    ASSERT_EQ(::seteuid(0), 0);
    EXPECT_TRUE(isOpen);
    EXPECT_EQ(mode, 0600U);
    EXPECT_EQ(result, Result::Done);
    EXPECT_EQ(content("x"), "new");
    EXPECT_EQ(statusOf("x").st_uid, 1001U);
    EXPECT_EQ(statusOf("x").st_ino, place);
}

TEST_F(SafeFileTest, TheSecondOfTwoWritersIsRefused) {
    makeGoal(0600);
    SafeFile first(path("x"));
    ASSERT_TRUE(first.open());
    write("of the first");
    SafeFile second(path("x"));
    EXPECT_FALSE(second.open());
    EXPECT_EQ(second.getReason(), "another program is writing it");
    second.removeLeftover();
    EXPECT_EQ(content("x~"), "of the first");
    EXPECT_EQ(first.put(), Result::Done);
    EXPECT_EQ(content("x"), "of the first");

    // One that does not keep to the rules.
    ASSERT_TRUE(second.open());
    std::filesystem::rename(folder.file("other", "a stranger's"), path("x~"));
    EXPECT_EQ(second.put(), Result::NotOpened);
    second.remove();
    EXPECT_EQ(content("x~"), "a stranger's");
    EXPECT_EQ(content("x"), "of the first");
}

TEST_F(SafeFileTest, AWriterThatIsKilledLeavesTheEarlierFileAndNobodyInTheWay) {
    makeGoal(0600);
    pid_t const child = ::fork();
    if (child == 0) {
        SafeFile file(path("x"));
        static_cast<void>(file.open());
        write("half");
        ::chmod(path("x~").c_str(), 0666);
        ::raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(content("x"), "old");
    EXPECT_EQ(content("x~"), "half");

    SafeFile file(path("x"));
    ASSERT_TRUE(file.open());
    EXPECT_EQ(content("x~"), "");
    EXPECT_EQ(modeOf("x~"), 0600U) << "not that of the leftover";
    file.remove();
    write("half");
    SafeFile(path("x")).removeLeftover();
    EXPECT_FALSE(exists("x~"));
}

TEST_F(SafeFileTest, AFreeNameLeavesWhatIsThere) {
    makeGoal(0600);
    write("a stranger's");
    SafeFile first(path("x"), SafeFile::Beside::FreeName);
    SafeFile second(path("x"), SafeFile::Beside::FreeName);
    ASSERT_TRUE(first.open());
    ASSERT_TRUE(second.open());
    EXPECT_EQ(first.getTemporaryName(), path("x~2"));
    EXPECT_EQ(second.getTemporaryName(), path("x~3"));
    static_cast<void>(folder.file("x~2", "new"));
    EXPECT_EQ(first.put(), Result::Done);
    SafeFile::removeAllOpen();
    EXPECT_EQ(content("x"), "new");
    EXPECT_EQ(content("x~"), "a stranger's");
    EXPECT_FALSE(exists("x~3"));
}

TEST_F(SafeFileTest, ACopyThatFailsHalfWaySaysSoAndLeavesTheWholeFile) {
    makeGoal(0600);
    std::filesystem::create_hard_link(path("x"), path("second"));
    SafeFile file(path("x"));
    ASSERT_TRUE(file.open());
    write(std::string(200'000, 'n'));
    auto const former = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    rlimit const small{100'000, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    Result const result = file.put();
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, former);
    EXPECT_EQ(result, Result::Damaged);
    EXPECT_EQ(file.getReason(), "File too large");
    EXPECT_EQ(content("x~").size(), 200'000U);
}

TEST_F(SafeFileTest, WhatCannotBeMadeIsSaid) {
    std::filesystem::create_directory(path("folder~"));
    for (auto const & [name, reason] :
         {std::pair(path("no/x"), "No such file or directory"), std::pair(path("folder"), "Is a directory"),
          std::pair(path("x") + std::string("\0y", 2), "Invalid argument")}) {
        SafeFile file(name);
        EXPECT_FALSE(file.open());
        EXPECT_EQ(file.getReason(), reason);
        EXPECT_EQ(file.put(), Result::NotOpened);
    }
}

} // namespace
} // namespace ZEL::tests
