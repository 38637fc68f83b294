// Commits without rights or room, which only this system lets a test arrange.
#include "tests/platform/temporary_folder.h"
#include "tests/support/process.h"
#include "tests/support/registry_writers.h"

#include <cstdlib>
#include <iostream>
#include <sstream>

namespace {

using namespace tests;
using std::filesystem::perms;

// A writer of an ordinary user. Gets the folder of its machine state first; then a code answers
// each line of "writer", "set NAME LENGTH", "commit", "room BYTES", "room" and "die at BYTES", and
// the path of the registry file any other.
void runCommands() {
    std::string line;
    std::getline(std::cin, line);
    setenv("TARVO_PLATFORM_ROOT", line.c_str(), 1);
    TarvoLibrary::get(); // from here on it may be out of reach
    support::leavePrivileges();
    Writer writer;
    while (std::getline(std::cin, line)) {
        std::istringstream words(line);
        std::string command;
        words >> command;
        TarvoResult result = RC_OK;
        if (command == "writer") {
            result = openWriter(writer);
        } else if (command == "commit") {
            result = commitOf(writer);
        } else if (command == "set") {
            std::string name;
            std::size_t length = 0;
            words >> name >> length;
            setText(keyWriter(writer, u"/"), wide(name).c_str(),
                    std::u16string(length, u'x').c_str());
        } else if (command == "room") {
            std::size_t bytes = 0;
            support::limitFileSize(words >> bytes ? std::optional(bytes) : std::nullopt);
        } else if (command == "die") {
            std::size_t bytes = 0;
            words >> command >> bytes;
            support::dieAtFileSize(bytes);
        } else {
            std::cout << registryFile(Scope::user).string() << std::endl;
            continue;
        }
        std::cout << result << std::endl;
    }
}
const support::Role kOrdinaryUser{"ordinary user", runCommands};

class CommitOfAnOrdinaryUser : public testing::Test {
  protected:
    void SetUp() override {
        std::filesystem::permissions(machine_.path(), perms::all);
        user_.send(std::filesystem::path(machine_.path()).string());
        file_ = user_.ask("file");
        EXPECT_EQ(user_.ask("writer"), "0");
        EXPECT_EQ(user_.ask("set first 1000"), "0");
        EXPECT_EQ(user_.ask("commit"), "0");
    }

    const TemporaryFolder machine_;
    support::Process user_{"ordinary user"};
    std::filesystem::path file_;
};

TEST_F(CommitOfAnOrdinaryUser, NeedsTheRightsToTheFileAndTheFolder) {
    const perms folder = std::filesystem::status(file_.parent_path()).permissions();
    const perms file = std::filesystem::status(file_).permissions();
    const std::string before = fileText(file_);

    EXPECT_EQ(user_.ask("set second 1"), "0");
    std::filesystem::permissions(file_, perms::owner_read);
    EXPECT_EQ(user_.ask("commit"), "501");
    EXPECT_EQ(fileText(file_), before);
    std::filesystem::permissions(file_, file);
    EXPECT_EQ(user_.ask("commit"), "0");
    EXPECT_EQ(fileText(backupOf(file_)), before);
    std::filesystem::permissions(file_, perms::none);
    EXPECT_EQ(user_.ask("writer"), "501");

    std::filesystem::remove(file_);
    EXPECT_EQ(user_.ask("writer"), "0");
    std::filesystem::permissions(file_.parent_path(), perms::owner_read | perms::owner_exec);
    EXPECT_EQ(user_.ask("commit"), "501");
    std::filesystem::permissions(file_.parent_path(), folder);
    EXPECT_EQ(user_.ask("commit"), "0");
}

TEST_F(CommitOfAnOrdinaryUser, EndsAFileWhereTheDiskIsFull) {
    const std::string before = fileText(file_);
    EXPECT_EQ(user_.ask("set second 50000"), "0");
    EXPECT_EQ(user_.ask("room 20000"), "0");
    for (int attempt = 0; attempt < 2; ++attempt) {
        EXPECT_EQ(user_.ask("commit"), "100");
        EXPECT_EQ(fileText(file_).size(), 20000u);
        EXPECT_NE(fileText(file_).substr(0, 60), before.substr(0, 60));
        // The second attempt backs up what the first has left.
        EXPECT_EQ(fileText(attempt == 0 ? backupOf(file_) : wholeBackupOf(file_)), before);
    }

    writeFile(file_, before);
    EXPECT_EQ(user_.ask("room"), "0");
    EXPECT_EQ(user_.ask("commit"), "0");
    const std::string after = fileText(file_);
    EXPECT_NE(after.find(std::string(1000, 'x') + "</value>\n"), std::string::npos);
    EXPECT_NE(after.find(std::string(50000, 'x') + "</value>\n"), std::string::npos);
    EXPECT_TRUE(after.ends_with("</registry>\n"));
}

// What is left of a commit that was killed half-way through its writing.
TEST_F(CommitOfAnOrdinaryUser, LeavesABackupAndNoHoldWhenItIsKilledAsItWrites) {
    const std::string before = fileText(file_);
    EXPECT_EQ(user_.ask("set second 50000"), "0");
    EXPECT_EQ(user_.ask("die at 20000"), "0");
    EXPECT_EQ(user_.ask("commit"), "(ended)");
    EXPECT_EQ(fileText(file_).size(), 20000u);
    EXPECT_NE(fileText(file_).substr(0, 60), before.substr(0, 60));
    EXPECT_EQ(fileText(backupOf(file_)), before);

    restoreBackup(file_);
    support::Process other("ordinary user");
    other.send(std::filesystem::path(machine_.path()).string());
    EXPECT_EQ(other.ask("writer"), "0");
    EXPECT_EQ(other.ask("set third 1"), "0");
    EXPECT_EQ(other.ask("commit"), "0");
    EXPECT_EQ(fileText(backupOf(file_)), before);
}

TEST(CommitWithoutAFolder, IsToldFromAnEmptyScope) {
    const TemporaryFolder machine;
    std::filesystem::permissions(machine.path(), perms::none);
    support::Process user("ordinary user");
    user.send(std::filesystem::path(machine.path()).string());
    EXPECT_EQ(user.ask("writer"), "0");
    EXPECT_EQ(user.ask("set first 1"), "0");
    EXPECT_EQ(user.ask("commit"), "506");
}

} // namespace
