#include "platform/file.h"
#include "tests/platform/file_errors.h"
#include "tests/platform/temporary_folder.h"

#include <array>
#include <gtest/gtest.h>
#include <numeric>
#include <set>
#include <vector>

namespace {

using TARVO::platform::File;
using TARVO::platform::FileError;

// What each way of opening gives. An open that succeeds is closed again at once.
struct Errors {
    FileError reading;
    FileError exclusive;
    FileError create;
    bool operator==(const Errors&) const = default;
};

void PrintTo(const Errors& errors, std::ostream* out) {
    *out << nameOf(errors.reading) << ' ' << nameOf(errors.exclusive) << ' '
         << nameOf(errors.create);
}

Errors errorsOf(const std::u16string& path) {
    const FileError reading = errorOf(File::openForReading(path));
    const FileError exclusive = errorOf(File::openExclusive(path));
    return {reading, exclusive, errorOf(File::createExclusive(path))};
}

std::set<std::u16string> namesIn(const std::u16string& folder) {
    std::set<std::u16string> names;
    for (const auto& entry : std::filesystem::directory_iterator{folder}) {
        names.insert(entry.path().filename().u16string());
    }
    return names;
}

std::string readAll(File& file, std::size_t pieceSize) {
    std::string text;
    std::vector<char> piece(pieceSize);
    for (;;) {
        const auto count = file.read(piece);
        EXPECT_TRUE(count.has_value());
        if (!count || *count == 0) {
            return text;
        }
        text.append(piece.data(), *count);
    }
}

TEST(File, TellsFailuresApart) {
    const TemporaryFolder folder;
    folder.write(u"file", "text");
    const Errors present{FileError::none, FileError::none, FileError::exists};
    const Errors absent{FileError::notFound, FileError::notFound, FileError::none};
    const Errors nowhere{FileError::pathNotFound, FileError::pathNotFound, FileError::pathNotFound};
    const Errors aFolder{FileError::accessDenied, FileError::accessDenied, FileError::exists};
    EXPECT_EQ(errorsOf(folder / u"file"), present);
    EXPECT_EQ(errorsOf(folder / u"new"), absent);
    EXPECT_EQ(errorsOf(folder / u"new"), present);
    EXPECT_EQ(errorsOf(folder / u"missing/file"), nowhere);
    EXPECT_EQ(errorsOf(folder / u"file/file"), nowhere);
    EXPECT_EQ(errorsOf(u""), nowhere);
    EXPECT_EQ(errorsOf(folder.path()), aFolder);
}

TEST(File, ReadsToTheEndInPiecesOfAnySize) {
    const TemporaryFolder folder;
    std::string text(100'000, '\0');
    std::iota(text.begin(), text.end(), '\0'); // all bytes, line ends of every kind among them
    const auto path = folder.write(u"file", text);
    for (const std::size_t size :
         {std::size_t{1024}, std::size_t{99'999}, std::size_t{1'000'000}}) {
        auto [file, error] = File::openForReading(path);
        ASSERT_EQ(error, FileError::none);
        EXPECT_EQ(file.size(), text.size());
        EXPECT_EQ(readAll(file, size), text);
        std::array<char, 1> more{};
        EXPECT_EQ(file.read(more), 0u);
    }
}

TEST(File, IsOverwrittenAndCutInPlace) {
    const TemporaryFolder folder;
    const auto path = folder.write(u"file", "a long text\r\n");
    {
        File file = File::openExclusive(path).file;
        ASSERT_TRUE(file);
        EXPECT_EQ(readAll(file, 4), "a long text\r\n");
        EXPECT_TRUE(file.seekTo(0));
        EXPECT_EQ(file.write(std::string_view{"new\n"}), 4u);
        EXPECT_TRUE(file.truncateHere());
        EXPECT_EQ(file.size(), 4u);
    }
    EXPECT_EQ(folder.textOf(path), "new\n");
}

TEST(File, FailsToWriteWhatItMayOnlyRead) {
    const TemporaryFolder folder;
    const auto path = folder.write(u"file", "text");
    File file = File::openForReading(path).file;
    EXPECT_EQ(file.write(std::string_view{"more"}), std::nullopt);
    EXPECT_FALSE(file.truncateHere());
    EXPECT_EQ(folder.textOf(path), "text");
}

TEST(File, EndsItsHoldWhenItIsClosedMovedOverOrDestroyed) {
    const TemporaryFolder folder;
    const auto path = folder.write(u"file", "");
    const auto isFree = [&] {
        return errorOf(File::openExclusive(path)) == FileError::none;
    };

    File file = File::openExclusive(path).file;
    EXPECT_FALSE(isFree());
    File other{std::move(file)};
    EXPECT_FALSE(isFree());
    other.close();
    EXPECT_TRUE(isFree());

    file = File::openExclusive(path).file;
    EXPECT_FALSE(isFree());
    file = File{};
    EXPECT_TRUE(isFree());
}

TEST(File, CopiesOverAnExistingFile) {
    const TemporaryFolder folder;
    const std::string text(70'000, 'x'); // more than one buffer of a copy
    const auto from = folder.write(u"from", text);
    const auto to = folder / u"to";
    EXPECT_TRUE(TARVO::platform::copyFileOver(from, to));
    EXPECT_EQ(folder.textOf(to), text);

    folder.write(u"from", "short");
    const File reader = File::openForReading(from).file;
    EXPECT_TRUE(TARVO::platform::copyFileOver(from, to));
    EXPECT_EQ(folder.textOf(to), "short");
}

TEST(File, CopiesAFileThatCannotBeWritten) {
    using std::filesystem::perms;
    const TemporaryFolder folder;
    const auto from = folder.write(u"from", "text");
    const auto to = folder / u"to";
    std::filesystem::permissions(from, perms::owner_read);
    EXPECT_TRUE(TARVO::platform::copyFileOver(from, to));
    EXPECT_NE(std::filesystem::status(to).permissions() & perms::owner_write, perms::none);
    EXPECT_TRUE(TARVO::platform::copyFileOver(from, to));
    EXPECT_EQ(folder.textOf(to), "text");
    std::filesystem::permissions(from, perms::owner_all);
}

TEST(File, CopiesNothingThatIsHeldMissingOrTheTargetItself) {
    const TemporaryFolder folder;
    const auto from = folder.write(u"from", "text");
    const auto to = folder.write(u"to", "old");
    EXPECT_FALSE(TARVO::platform::copyFileOver(folder / u"missing", to));
    EXPECT_FALSE(TARVO::platform::copyFileOver(from, folder / u"missing/to"));
    EXPECT_FALSE(TARVO::platform::copyFileOver(folder.path(), to));
    EXPECT_FALSE(TARVO::platform::copyFileOver(from, folder.path()));
    EXPECT_FALSE(TARVO::platform::copyFileOver(from, from));
    {
        const File writer = File::openExclusive(from).file;
        EXPECT_FALSE(TARVO::platform::copyFileOver(from, to));
    }
    {
        const File reader = File::openForReading(to).file;
        EXPECT_FALSE(TARVO::platform::copyFileOver(from, to));
    }
    EXPECT_EQ(folder.textOf(from), "text");
    EXPECT_EQ(folder.textOf(to), "old");
}

TEST(File, IsFoundAndRemovedByName) {
    const TemporaryFolder folder;
    const auto path = folder.write(u"file", "");
    {
        const File held = File::openExclusive(path).file;
        EXPECT_TRUE(TARVO::platform::fileExists(path));
    }
    EXPECT_TRUE(TARVO::platform::removeFile(path));
    EXPECT_FALSE(TARVO::platform::fileExists(path));
    EXPECT_FALSE(TARVO::platform::removeFile(path));
    EXPECT_FALSE(TARVO::platform::removeFile(folder.path()));
    EXPECT_TRUE(TARVO::platform::fileExists(folder.path()));
}

TEST(File, IsTheSameUnderAnotherSpelling) {
    const TemporaryFolder folder;
    ASSERT_TRUE(TARVO::platform::createFolder(folder / u"sub"));
    const auto one = folder.write(u"one", "text");
    const auto other = folder.write(u"other", "text");
    const File held = File::openExclusive(one).file;
    EXPECT_TRUE(TARVO::platform::isSameFile(one, folder / u"sub/../one"));
    EXPECT_TRUE(TARVO::platform::isSameFile(one, folder / u"ONE"));
    EXPECT_FALSE(TARVO::platform::isSameFile(one, other));
    EXPECT_FALSE(TARVO::platform::isSameFile(one, folder / u"missing"));
    EXPECT_FALSE(TARVO::platform::isSameFile(folder / u"missing", folder / u"missing"));
}

TEST(File, IsFoundWhateverTheCase) {
    const TemporaryFolder folder;
    ASSERT_TRUE(TARVO::platform::createFolder(folder / u"Some"));
    ASSERT_TRUE(TARVO::platform::createFolder(folder / u"Some/Folder"));
    const auto path = folder.write(u"Some/Folder/Name.Dat", "text");
    for (const auto* name :
         {u"some/folder/name.dat", u"SOME/FOLDER/NAME.DAT", u"Some//foLder/./NAME.dat"}) {
        const auto spelled = folder / name;
        EXPECT_EQ(errorsOf(spelled), (Errors{FileError::none, FileError::none, FileError::exists}));
        EXPECT_TRUE(TARVO::platform::fileExists(spelled));
        EXPECT_TRUE(
            TARVO::platform::copyFileOver(folder / u"Some/Folder/Name.Dat", folder / u"copy"));
        EXPECT_FALSE(TARVO::platform::copyFileOver(path, spelled));
    }
    // A new name is spelled as it is passed, in the folder that is there.
    EXPECT_EQ(errorOf(File::createExclusive(folder / u"some/FOLDER/New")), FileError::none);
    EXPECT_TRUE(TARVO::platform::copyFileOver(path, folder / u"SOME/folder/Copy"));
    EXPECT_EQ(namesIn(folder / u"Some/Folder"),
              (std::set<std::u16string>{u"Name.Dat", u"New", u"Copy"}));
    EXPECT_TRUE(TARVO::platform::removeFile(folder / u"some/folder/name.DAT"));
    EXPECT_EQ(namesIn(folder / u"Some/Folder"), (std::set<std::u16string>{u"New", u"Copy"}));
    EXPECT_EQ(errorsOf(folder / u"some/missing/name.dat").create, FileError::pathNotFound);
}

TEST(File, MayHaveANameInAnyScript) {
    const TemporaryFolder folder;
    const std::u16string name = u"Gr\u00FC\u00DFe-\u65E5\u672C-\U0001F600.dat";
    EXPECT_EQ(errorOf(File::createExclusive(folder / name)), FileError::none);
    EXPECT_EQ(namesIn(folder.path()), (std::set<std::u16string>{name}));
}

} // namespace
