// Commits of several processes to one scope: nothing is lost, a reader sees the work of whole
// commits alone, and whoever finds the file held waits.
#include "tests/support/process.h"
#include "tests/support/registry_writers.h"

#include <algorithm>
#include <future>
#include <iostream>
#include <list>
#include <thread>

namespace {

using namespace tests;
using support::Process;

constexpr int kProcesses = 8;
constexpr int kCommits = 50;

// Each commit leaves a value of its own at the root, and its number in two keys.
std::u16string valueOf(int process, int commit) {
    return wide(std::to_string(process) + '.' + std::to_string(commit));
}

class Reader {
  public:
    // What is wrong with what the registry shows now; nothing if all is well.
    std::string look() {
        tarvo::Reference<IVaskRegistryKey> root;
        if (const TarvoResult result = openKey(nullptr, root); result != RC_OK)
            return "can't read: " + std::to_string(result);
        for (int process = 0; process < kProcesses; ++process) {
            const std::u16string name = wide(std::to_string(process));
            if (textOf(*root, name.c_str(), u"left") != textOf(*root, name.c_str(), u"right"))
                return "half a commit";
        }
        Names seen = valueNames(*root);
        if (!std::ranges::includes(seen, seen_))
            return "a value is gone";
        seen_ = std::move(seen);
        return {};
    }

  private:
    Names seen_;
};

// Gets the number of the process and makes the commits, each through a writer of its own: one that
// went on would mend with its next commit what was lost of the last.
void commitOften() {
    int process = 0;
    std::cin >> process;
    const std::u16string name = wide(std::to_string(process));
    Reader reader;
    for (int i = 0; i < kCommits; ++i) {
        const std::u16string number = wide(std::to_string(i));
        const Writer writer = newWriter();
        setText(keyWriter(writer, u"/"), valueOf(process, i).c_str(), u"");
        setText(keyWriter(writer, u"/left"), name.c_str(), number.c_str());
        setText(keyWriter(writer, u"/right"), name.c_str(), number.c_str());
        std::cout << commitOf(writer) << reader.look() << std::endl;
    }
}
const support::Role kCommitter{"committer", commitOften};

TEST(CommitOfProcesses, LosesNothingAndIsSeenWhole) {
    removeScope(Scope::user);
    std::list<Process> processes;
    Names expected;
    for (int process = 0; process < kProcesses; ++process) {
        processes.emplace_back("committer");
        for (int i = 0; i < kCommits; ++i)
            expected.insert(valueOf(process, i));
    }
    for (int number = 0; Process & process : processes)
        process.send(std::to_string(number++));
    Reader reader;
    for (int i = 0; i < kCommits; ++i)
        for (Process& process : processes) {
            EXPECT_EQ(process.receive(), "0");
            EXPECT_EQ(reader.look(), "");
        }
    for (Process& process : processes)
        EXPECT_EQ(process.wait(), 0);
    EXPECT_EQ(valueNames(*keyAt(nullptr)), expected);
}

// Holds the user's registry file until the next line: to read it at "read", else alone.
void holdFile() {
    const std::u16string path = registryFile(Scope::user).u16string();
    TARVO::platform::OpenedFile held;
    for (std::string line; std::getline(std::cin, line);) {
        held.file.close();
        if (line == "read")
            held = TARVO::platform::File::openForReading(path);
        else if (line == "write")
            held = TARVO::platform::File::openExclusive(path);
        std::cout << (held.file ? "held" : "free") << std::endl;
    }
}
const support::Role kHolder{"holder", holdFile};

TEST(CommitOfProcesses, WaitsForWhoeverHoldsTheFile) {
    const auto file = registryFile(Scope::user);
    for (const char* way : {"read", "write"}) {
        SCOPED_TRACE(way);
        setScope(Scope::user, "");
        std::filesystem::remove(backupOf(file));
        const Writer writer = newWriter();
        setText(keyWriter(writer, u"/"), u"v", u"1");
        Process holder{"holder"};
        EXPECT_EQ(holder.ask(way), "held");
        auto result = std::async(std::launch::async, [&] { return commitOf(writer); });
        if (way == std::string_view("read")) {
            // The copy can be made; behind it, the commit has to wait.
            while (fileText(backupOf(file)) != fileText(file))
                std::this_thread::yield();
        }
        EXPECT_EQ(holder.ask("close"), "free");
        EXPECT_EQ(result.get(), RC_OK);
        EXPECT_EQ(textOf(*keyAt(nullptr), u"v"), u"1");
    }
}

} // namespace
