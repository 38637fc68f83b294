// Definition files that come and go with a commit.
#include "platform/file.h"
#include "tests/platform/temporary_folder.h"
#include "types/library_files.h"

#include <tarvo/result.h>

#include <filesystem>
#include <functional>
#include <future>
#include <gtest/gtest.h>

namespace {

using TARVO::LibraryFiles;

TEST(LibraryFiles, ComeAndGoBesideTheRegistryFile) {
    const TemporaryFolder data;
    const TemporaryFolder elsewhere;
    const std::u16string registry = data / u"registry.dat";
    data.write(u"old.tidl", "a longer text of before");
    data.write(u"retired.tidl", "");
    LibraryFiles files;
    files.stage(elsewhere.write(u"new", "new"), u"new.tidl");
    files.stage(elsewhere.write(u"old", "newer"), u"old.tidl");
    files.stage(data.write(u"own.tidl", "own"), u"own.tidl"); // it is there already
    files.retire(u"missing.tidl");
    files.retire(u"retired.tidl");
    EXPECT_EQ(files.copyStaged(registry), RC_OK);
    EXPECT_TRUE(TARVO::platform::fileExists(data / u"retired.tidl"));
    EXPECT_EQ(files.removeRetired(registry), RC_OK);
    EXPECT_EQ(TemporaryFolder::textOf(data / u"new.tidl"), "new");
    EXPECT_EQ(TemporaryFolder::textOf(data / u"old.tidl"), "newer");
    EXPECT_EQ(TemporaryFolder::textOf(data / u"own.tidl"), "own");
    EXPECT_FALSE(TARVO::platform::fileExists(data / u"retired.tidl"));

    EXPECT_EQ(files.removeRetired(u"registry.dat"), RC_NOT_FOUND);
    files.clear();
    TARVO::platform::removeFile(data / u"new.tidl");
    EXPECT_EQ(files.copyStaged(registry), RC_OK);
    EXPECT_EQ(files.removeRetired(u"registry.dat"), RC_OK);
    EXPECT_FALSE(TARVO::platform::fileExists(data / u"new.tidl"));
}

// Two at the same time, since each is tried for ten seconds: a source that is gone, and a target
// that not even a superuser can write.
TEST(LibraryFiles, KeepTheCopiesBeforeOneThatFails) {
    const auto copyThenFail = [](const TemporaryFolder& data, const std::u16string& source) {
        LibraryFiles files;
        files.stage(data.write(u"source", "text"), u"first.tidl");
        files.stage(source, u"second.tidl");
        EXPECT_EQ(files.copyStaged(data / u"registry.dat"), RC_NO_DATA_FOLDER);
        EXPECT_EQ(TemporaryFolder::textOf(data / u"first.tidl"), "text");
    };
    const TemporaryFolder withoutSource;
    const TemporaryFolder withoutRight;
    std::filesystem::create_directory(withoutRight / u"second.tidl");
    const auto other = std::async(std::launch::async, copyThenFail, std::cref(withoutRight),
                                  withoutRight.write(u"other", "text"));
    copyThenFail(withoutSource, withoutSource / u"missing");
}

} // namespace
