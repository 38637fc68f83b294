// Processes that are killed in the middle of their commits. Whatever the moment: the file or the
// copy beside it is whole, nothing that was reported is missing from it, and no hold on the file is
// left behind. The moments are drawn; that of a half-written file, which not every run meets, has a
// test of its own (commit_posix_test.cpp).
#include "tests/support/process.h"
#include "tests/support/registry_writers.h"

#include <algorithm>
#include <chrono>
#include <iostream>
#include <optional>
#include <random>
#include <sstream>
#include <thread>
#include <vector>

namespace {

using namespace tests;
using support::Process;
using Clock = std::chrono::steady_clock;

// Big enough for a process to be killed while it writes.
constexpr int kBigValues = 100;
constexpr std::size_t kBigText = 10'000;

// A commit sets the same number at the root and in a key, so near both ends of the file.
TarvoResult commitNumber(const Writer& writer, int number) {
    const std::u16string text = wide(std::to_string(number));
    setText(keyWriter(writer, u"/"), u"n", text.c_str());
    setText(keyWriter(writer, u"/key"), u"n", text.c_str());
    return commitOf(writer);
}

int numberNow() {
    return std::stoi(narrow(textOf(*keyAt(nullptr), u"n")));
}

// Tells the number that is in the file, and then commits one after the other and tells each.
void commitNumbers() {
    int number = numberNow();
    const Writer writer = newWriter();
    TarvoResult result = RC_OK;
    while (result == RC_OK) {
        std::cout << number << std::endl;
        result = commitNumber(writer, ++number);
    }
    std::cout << "failed: " << result << std::endl;
}
const support::Role kVictim{"victim", commitNumbers};

// The lines of a file but those that a commit changes, and the number if these agree on one.
struct Content {
    std::vector<std::string> lines;
    std::optional<int> number;
};

Content contentOf(const std::filesystem::path& path) {
    static const std::string start = "<value name=\"n\" type=\"string\">";
    Content content;
    std::vector<std::string> numbers;
    std::istringstream text(fileText(path));
    for (std::string line; std::getline(text, line);) {
        if (const std::size_t found = line.find(start); found != std::string::npos)
            numbers.push_back(line.substr(found + start.size()));
        else if (!line.starts_with("<registry id=\"{"))
            content.lines.push_back(std::move(line));
    }
    std::ranges::sort(content.lines); // tables have no order
    if (numbers.size() == 2 && numbers[0] == numbers[1])
        content.number = std::stoi(numbers[0]);
    return content;
}

class CommitKill : public testing::Test {
  protected:
    void SetUp() override {
        removeScope(Scope::user);
        const Writer writer = newWriter();
        for (int i = 0; i < kBigValues; ++i) {
            const std::u16string text(kBigText, static_cast<char16_t>(u'a' + i % 26));
            setText(keyWriter(writer, u"/"), wide("big " + std::to_string(i)).c_str(),
                    text.c_str());
        }
        ASSERT_EQ(commitNumber(writer, 0), RC_OK);
        const Clock::time_point start = Clock::now();
        ASSERT_EQ(commitNumber(writer, 0), RC_OK);
        commitTime_ = Clock::now() - start;
        lines_ = contentOf(file_).lines;
    }

    // The number of a file; nothing if it isn't whole.
    std::optional<int> numberIn(const std::filesystem::path& path) const {
        const Content content = contentOf(path);
        return content.lines == lines_ ? content.number : std::nullopt;
    }

    // Kills a process at some moment of its commits; gives the last number that it has told.
    int killOne() {
        Process victim{"victim"};
        std::string told = victim.receive().value_or("ended");
        // No event of the victim's tells what it is in the middle of, so the moment is drawn.
        // Nothing is waited for.
        std::this_thread::sleep_for(commitTime_ *
                                    std::uniform_real_distribution(0.0, 2.0)(random_));
        victim.kill();
        while (const auto more = victim.receive())
            told = *more;
        victim.wait();
        return std::stoi(told);
    }

    const std::filesystem::path file_ = registryFile(Scope::user);
    std::vector<std::string> lines_;
    std::chrono::duration<double> commitTime_{};
    std::mt19937 random_{1};
};

TEST_F(CommitKill, LeavesAWholeStateAndNoHold) {
    constexpr int kKills = 200;
    constexpr std::chrono::seconds kLongest{8}; // where it is slow to start a process
    const Clock::time_point end = Clock::now() + kLongest;
    int kills = 0;
    for (; kills < kKills && Clock::now() < end; ++kills) {
        const int told = killOne();
        if (const auto number = numberIn(file_)) {
            ASSERT_TRUE(number == told || number == told + 1) << *number << ", told " << told;
        } else {
            ASSERT_EQ(numberIn(backupOf(file_)), told);
            restoreBackup(file_);
        }
    }
    RecordProperty("kills", kills);
    EXPECT_EQ(commitNumber(newWriter(), -1), RC_OK);
    EXPECT_EQ(numberNow(), -1);
    EXPECT_GE(kills, 10);
}

} // namespace
