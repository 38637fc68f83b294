#include "platform/folder.h"
#include "tests/platform/temporary_folder.h"

#include <gtest/gtest.h>

namespace {

TEST(Folder, IsMadeBelowAnExistingOneAlone) {
    const TemporaryFolder folder;
    const auto path = folder / u"New";
    EXPECT_FALSE(platform::folderExists(path));
    EXPECT_FALSE(platform::createFolder(folder / u"New/Sub"));
    EXPECT_TRUE(platform::createFolder(path));
    EXPECT_TRUE(platform::folderExists(path));
    EXPECT_FALSE(platform::createFolder(path));
    EXPECT_TRUE(platform::createFolder(folder / u"New/Sub"));
}

TEST(Folder, IsFoundWhateverTheCase) {
    const TemporaryFolder folder;
    ASSERT_TRUE(platform::createFolder(folder / u"Some"));
    EXPECT_TRUE(platform::folderExists(folder / u"sOME"));
    EXPECT_FALSE(platform::createFolder(folder / u"SOME"));
    EXPECT_TRUE(platform::createFolder(folder / u"SOME/Sub"));
    EXPECT_TRUE(platform::folderExists(folder / u"Some/Sub"));
}

TEST(Folder, IsNoFile) {
    const TemporaryFolder folder;
    const auto file = folder.write(u"file", "");
    EXPECT_FALSE(platform::folderExists(file));
    EXPECT_FALSE(platform::createFolder(file));
}

TEST(Folder, OfTheSystemIsThereAndOfItsOwnKind) {
    const auto common = platform::specialFolder(platform::SpecialFolder::commonAppData);
    const auto local = platform::specialFolder(platform::SpecialFolder::localAppData);
    EXPECT_NE(common, local);
    for (const auto& path : {common, local}) {
        EXPECT_TRUE(platform::folderExists(path));
        EXPECT_TRUE(std::filesystem::path{path}.is_absolute());
    }
}

} // namespace
