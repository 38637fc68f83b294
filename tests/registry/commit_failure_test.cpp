// Commits that find an obstacle: the code, the state that they leave, and that the same writer's
// next commit goes through once the obstacle is gone.
#include "tests/support/registry_writers.h"

namespace {

using namespace tests;

TEST(CommitFailure, NeedsTheFolder) {
    const auto file = registryFile(Scope::user);
    const Writer writer = newWriter();
    setText(keyWriter(writer, u"/"), u"v", u"1");
    std::filesystem::remove_all(file.parent_path());
    EXPECT_EQ(commitOf(writer), RC_UNSPECIFIED);
    EXPECT_FALSE(std::filesystem::exists(file.parent_path()));
    std::filesystem::create_directories(file.parent_path());
    commit(writer);
    EXPECT_EQ(textOf(*keyAt(nullptr), u"v"), u"1");
}

TEST(CommitFailure, ChangesNothingThatCannotBeBackedUp) {
    const auto file = registryFile(Scope::user);
    std::filesystem::remove(backupOf(file));
    setScope(Scope::user, "");
    const Writer writer = newWriter();
    setText(keyWriter(writer, u"/"), u"v", u"2");
    TARVO::platform::File held = TARVO::platform::File::openExclusive(file.u16string()).file;
    EXPECT_EQ(commitOf(writer), RC_NO_DATA_FOLDER); // gives up after ten seconds
    held.close();
    const std::string before = fileText(file);
    EXPECT_EQ(before.find("<value"), std::string::npos);
    commit(writer);
    EXPECT_EQ(fileText(backupOf(file)), before);
    EXPECT_EQ(textOf(*keyAt(nullptr), u"v"), u"2");
}

} // namespace
