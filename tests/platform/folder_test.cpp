#include "platform/folder.h"
#include "tests/platform/temporary_folder.h"

#include <gtest/gtest.h>

namespace {

TEST(Folder, IsMadeBelowAnExistingOneAlone) {
    const TemporaryFolder folder;
    const auto path = folder / u"New";
    EXPECT_FALSE(TARVO::platform::folderExists(path));
    EXPECT_FALSE(TARVO::platform::createFolder(folder / u"New/Sub"));
    EXPECT_TRUE(TARVO::platform::createFolder(path));
    EXPECT_TRUE(TARVO::platform::folderExists(path));
    EXPECT_FALSE(TARVO::platform::createFolder(path));
    EXPECT_TRUE(TARVO::platform::createFolder(folder / u"New/Sub"));
}

TEST(Folder, IsFoundWhateverTheCase) {
    const TemporaryFolder folder;
    ASSERT_TRUE(TARVO::platform::createFolder(folder / u"Some"));
    EXPECT_TRUE(TARVO::platform::folderExists(folder / u"sOME"));
    EXPECT_FALSE(TARVO::platform::createFolder(folder / u"SOME"));
    EXPECT_TRUE(TARVO::platform::createFolder(folder / u"SOME/Sub"));
    EXPECT_TRUE(TARVO::platform::folderExists(folder / u"Some/Sub"));
}

TEST(Folder, IsNoFile) {
    const TemporaryFolder folder;
    const auto file = folder.write(u"file", "");
    EXPECT_FALSE(TARVO::platform::folderExists(file));
    EXPECT_FALSE(TARVO::platform::createFolder(file));
}

TEST(Folder, OfTheSystemIsThereAndOfItsOwnKind) {
    const auto common =
        TARVO::platform::specialFolder(TARVO::platform::SpecialFolder::commonAppData);
    const auto local = TARVO::platform::specialFolder(TARVO::platform::SpecialFolder::localAppData);
    EXPECT_NE(common, local);
    for (const auto& path : {common, local}) {
        EXPECT_TRUE(TARVO::platform::folderExists(path));
        EXPECT_TRUE(std::filesystem::path{path}.is_absolute());
    }
}

} // namespace
