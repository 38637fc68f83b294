// What only the platform layer's own stand-ins have: the places of the system's folders, and files
// that differ in nothing but case.
#include "platform/file.h"
#include "platform/folder.h"
#include "tests/platform/environment.h"
#include "tests/platform/file_errors.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/process.h"

#include <gtest/gtest.h>
#include <iostream>

namespace {

using TARVO::platform::File;
using TARVO::platform::FileError;
using TARVO::platform::SpecialFolder;

TEST(Posix, RefusesWhatIsNoFileWithoutWaiting) {
    for (const auto* path : {u"/dev/zero", TARVO_TEST_PIPE}) {
        EXPECT_EQ(errorOf(File::openForReading(path)), FileError::other);
        EXPECT_EQ(errorOf(File::openExclusive(path)), FileError::other);
    }
}

TEST(Posix, PlacesFoldersByTheEnvironment) {
    const TemporaryFolder folder;
    const std::string here = std::filesystem::path{folder.path()}.string();
    const std::string root = here + "/some/root";
    const std::string data = here + "/data";
    const std::string home = here + "/home";
    const std::string obstacle = std::filesystem::path{folder.write(u"file", "")}.string();
    struct Case {
        const char* root;
        const char* data;
        const char* home;
        std::string common;
        std::string local;
    };
    const std::vector<Case> cases{
        {root.c_str(), data.c_str(), home.c_str(), root + "/ProgramData", root + "/LocalAppData"},
        {nullptr, data.c_str(), home.c_str(), "/var/lib", data},
        {nullptr, nullptr, home.c_str(), "/var/lib", home + "/.local/share"},
        {nullptr, "data", home.c_str(), "/var/lib", home + "/.local/share"},
        {nullptr, nullptr, nullptr, "/var/lib", ""},
        {nullptr, nullptr, "home", "/var/lib", ""},
        {"root", data.c_str(), home.c_str(), "", ""},
        {"", data.c_str(), home.c_str(), "", ""},
        {obstacle.c_str(), data.c_str(), home.c_str(), "", ""},
    };
    for (const auto& row : cases) {
        Environment environment;
        environment.set("TARVO_PLATFORM_ROOT", row.root);
        environment.set("XDG_DATA_HOME", row.data);
        environment.set("HOME", row.home);
        const std::filesystem::path common{
            TARVO::platform::specialFolder(SpecialFolder::commonAppData)};
        const std::filesystem::path local{
            TARVO::platform::specialFolder(SpecialFolder::localAppData)};
        EXPECT_EQ(common.string(), row.common);
        EXPECT_EQ(local.string(), row.local);
        EXPECT_EQ(std::filesystem::is_directory(local), !row.local.empty());
    }
}

TEST(Posix, PrefersTheExactSpellingAndThenTheFirst) {
    const TemporaryFolder folder;
    folder.write(u"NAME", "1");
    folder.write(u"Name", "22");
    folder.write(u"name", "333");
    const auto sizeOf = [&](std::u16string_view name) {
        return File::openForReading(folder / name).file.size();
    };
    EXPECT_EQ(sizeOf(u"NAME"), 1u);
    EXPECT_EQ(sizeOf(u"Name"), 2u);
    EXPECT_EQ(sizeOf(u"name"), 3u);
    EXPECT_EQ(sizeOf(u"nAME"), 1u);
}

TEST(Posix, LeavesALinkToNothingAlone) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("nothing", folder / u"link");
    EXPECT_EQ(File::openExclusive(folder / u"link").error, FileError::notFound);
    // Not `exists`: whoever takes turns between the two ways to open would never come to an end.
    EXPECT_EQ(File::createExclusive(folder / u"link").error, FileError::other);
    EXPECT_FALSE(TARVO::platform::fileExists(folder / u"link"));
}

TEST(Posix, TakesALinkToItselfForSomethingThere) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("loop", folder / u"loop");
    EXPECT_TRUE(TARVO::platform::fileExists(folder / u"loop"));
    EXPECT_FALSE(TARVO::platform::fileExists(folder / std::u16string(300, u'n')));
}

// A superuser may do everything, so this is told by a child that has given up such rights.
void openWithoutRights() {
    support::leavePrivileges();
    for (std::string line; std::getline(std::cin, line);) {
        const std::u16string path{line.begin(), line.end()};
        std::cout << nameOf(File::openForReading(path).error) << ' '
                  << nameOf(File::openExclusive(path).error) << ' '
                  << nameOf(File::createExclusive(path).error) << std::endl;
    }
}
const support::Role kOrdinaryUser{"ordinary user", openWithoutRights};

TEST(Posix, HeedsTheRightsOfFilesAndFolders) {
    using std::filesystem::perms;
    const TemporaryFolder folder;
    const std::filesystem::path readOnly{folder.write(u"read-only", "")};
    const std::filesystem::path locked{folder.write(u"locked", "")};
    std::filesystem::permissions(readOnly, perms::owner_read | perms::others_read);
    std::filesystem::permissions(locked, perms::none);
    std::filesystem::permissions(folder.path(), perms::owner_read | perms::owner_exec |
                                                    perms::others_read | perms::others_exec);
    support::Process user{"ordinary user"};
    EXPECT_EQ(user.ask(readOnly.string()), "none accessDenied exists");
    EXPECT_EQ(user.ask(locked.string()), "accessDenied accessDenied exists");
    EXPECT_EQ(user.ask(std::filesystem::path{folder / u"new"}.string()),
              "notFound notFound accessDenied");
    EXPECT_EQ(user.wait(), 0);
    std::filesystem::permissions(folder.path(), perms::owner_all);
}

// Writes ten bytes at once where five have room, then once more where none has.
void writeToAFullDisk() {
    support::limitFileSize(5);
    std::string line;
    std::getline(std::cin, line);
    File file = File::openExclusive(std::u16string{line.begin(), line.end()}).file;
    for (const auto* text : {"0123456789", "x"}) {
        const auto count = file.write(std::string_view{text});
        std::cout << (count ? std::to_string(*count) : "failure") << std::endl;
    }
}
const support::Role kFullDisk{"full disk", writeToAFullDisk};

TEST(Posix, WritesAsMuchAsThereIsRoomFor) {
    const TemporaryFolder folder;
    const auto path = folder.write(u"file", "");
    support::Process writer{"full disk"};
    EXPECT_EQ(writer.ask(std::filesystem::path{path}.string()), "5");
    EXPECT_EQ(writer.receive(), "0");
    EXPECT_EQ(folder.textOf(path), "01234");
}

} // namespace
