// The files that stand for the system's registry: between processes and threads, without rights or
// room, and in other hands.
#include "platform/posix/hive.h"
#include "tests/platform/environment.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/process.h"
#include "tests/support/system_registry.h"

#include <gtest/gtest.h>
#include <iostream>
#include <thread>

namespace {

using support::Process;
using support::storedValue;
using support::subkeysOf;
using support::textBytes;
using TARVO::platform::Hive;
using TARVO::platform::RegistryBatch;
using TARVO::platform::RegistryRoot;
using TARVO::platform::RegistryView;
using TARVO::platform::SystemKey;

constexpr RegistryRoot kUser = RegistryRoot::currentUser;
constexpr RegistryRoot kMachine = RegistryRoot::localMachine;

// A machine whose registry is empty.
class Machine {
  public:
    Machine() { environment_.set("TARVO_PLATFORM_ROOT", root().c_str()); }

    std::string root() const { return std::filesystem::path{folder_.path()}.string(); }
    const TemporaryFolder& folder() const { return folder_; }
    std::u16string userFile() const { return folder_ / u"HKCU.reg"; }

  private:
    TemporaryFolder folder_;
    Environment environment_;
};

bool setText(RegistryRoot root, const char16_t* path, const char16_t* name, const char16_t* text) {
    const auto top = SystemKey::openForWriting(root, u"");
    return top && top.create(path).setText(name, text);
}

std::u16string textAt(const SystemKey& key, const char16_t* name) {
    const auto value = key ? storedValue(key, name) : std::nullopt;
    return value ? std::u16string{reinterpret_cast<const char16_t*>(value->bytes.data())}
                 : u"(none)";
}

TEST(Hive, LiesWhereTheEnvironmentSays) {
    const TemporaryFolder folder;
    const std::string here = std::filesystem::path{folder.path()}.string();
    struct Case {
        std::string root;
        std::string config;
        std::string home;
        std::string file;
    };
    for (const auto& [root, config, home, file] : std::vector<Case>{
             {here + "/a/b", "/none", "/none", "/a/b/HKCU.reg"},
             {"-", here + "/config", "/none", "/config/Ostrandia/registry/HKCU.reg"},
             {"-", "-", here + "/home", "/home/.config/Ostrandia/registry/HKCU.reg"},
             {"relative", here, here, ""},
             {"-", "relative", "relative", ""},
         }) {
        const auto orUnset = [](const std::string& text) {
            return text == "-" ? nullptr : text.c_str();
        };
        Environment environment;
        environment.set("TARVO_PLATFORM_ROOT", orUnset(root));
        environment.set("XDG_CONFIG_HOME", orUnset(config));
        environment.set("HOME", orUnset(home));
        EXPECT_EQ(setText(kUser, u"key", u"", u"text"), !file.empty());
        EXPECT_EQ(!file.empty(), std::filesystem::is_regular_file(here + file));
    }
}

TEST(Hive, OfTheUserLiesOverThatOfTheMachineInTheClassesRoot) {
    const Machine machine;
    EXPECT_TRUE(setText(kMachine, u"Software\\Classes\\Both\\m", u"", u"machine"));
    EXPECT_TRUE(setText(kMachine, u"Software\\Classes\\Both", u"name", u"machine"));
    EXPECT_TRUE(setText(kMachine, u"Software\\Classes\\Both", u"other", u"machine"));
    EXPECT_TRUE(setText(kMachine, u"Software\\Classes\\OfMachine", u"", u"machine"));
    EXPECT_TRUE(setText(kUser, u"Software\\Classes\\BOTH\\a", u"", u"user"));
    EXPECT_TRUE(setText(kUser, u"Software\\Classes\\BOTH\\M\\n", u"", u"user"));
    EXPECT_TRUE(setText(kUser, u"Software\\Classes\\BOTH", u"Name", u"user"));
    EXPECT_TRUE(setText(kUser, u"Software\\Classes\\Wow6432Node\\CLSID\\{U}", u"", u"user"));
    const auto root = SystemKey::open(RegistryRoot::classesRoot, u"");
    EXPECT_EQ(subkeysOf(root),
              (std::vector<std::u16string>{u"BOTH", u"CLSID", u"OfMachine", u"Wow6432Node"}));
    const auto both = root.open(u"both");
    EXPECT_EQ(subkeysOf(both), (std::vector<std::u16string>{u"a", u"M"}));
    EXPECT_EQ(textAt(both, u"name"), u"user");
    EXPECT_EQ(textAt(both, u"other"), u"machine");
    EXPECT_EQ(textAt(both.open(u"m"), u""), u"machine");
    EXPECT_EQ(textAt(both.open(u"m\\n"), u""), u"user");
    EXPECT_EQ(textAt(root.open(u"CLSID\\{U}", RegistryView::view32), u""), u"user");
    EXPECT_FALSE(root.open(u"CLSID\\{U}", RegistryView::view64));
}

TEST(Hive, ThatIsNotUnderstoodIsLeftAlone) {
    const Machine machine;
    EXPECT_TRUE(setText(kMachine, u"Software\\Classes\\Key", u"", u"text"));
    const std::string good = "Windows Registry Editor Version 5.00\n[HKEY_CURRENT_USER\\Key]\n";
    const std::string bad = good + "\"name\"=unquoted\n";
    machine.folder().write(u"HKCU.reg", bad);
    EXPECT_FALSE(SystemKey::open(kUser, u""));
    EXPECT_FALSE(SystemKey::open(kUser, u"Key"));
    EXPECT_FALSE(setText(kUser, u"Other", u"", u"text"));
    EXPECT_FALSE(SystemKey::openForWriting(kUser, u"Key"));
    EXPECT_TRUE(SystemKey::open(RegistryRoot::classesRoot, u"Key"));
    EXPECT_EQ(TemporaryFolder::textOf(machine.userFile()), bad);
    machine.folder().write(u"HKCU.reg", good);
    const auto key = SystemKey::openForWriting(kUser, u"Key");
    RegistryBatch batch;
    EXPECT_TRUE(key.setText(u"", u"text"));
    machine.folder().write(u"HKCU.reg", bad);
    EXPECT_FALSE(batch.store());
    EXPECT_EQ(TemporaryFolder::textOf(machine.userFile()), bad);
    std::filesystem::remove(machine.userFile());
    std::filesystem::create_directory(machine.userFile());
    EXPECT_FALSE(SystemKey::open(kUser, u""));
}

TEST(Hive, IsReadOnceForAsLongAsItsFileStays) {
    const Machine machine;
    Hive& hive = Hive::ofUser();
    EXPECT_EQ(hive.root(), hive.root());
    EXPECT_TRUE(setText(kUser, u"Key", u"", u"one"));
    // A file is trusted when it has become old enough to show the next change by its time.
    TARVO::platform::ReadOnlyHiveKey root = hive.root();
    for (auto next = hive.root(); next != root; next = hive.root()) {
        root = std::move(next);
    }
    const SystemKey key = SystemKey::open(kUser, u"Key");
    const std::string text = TemporaryFolder::textOf(machine.userFile());
    machine.folder().write(u"HKCU.reg", std::string{text}.replace(text.find("one"), 3, "two"));
    EXPECT_EQ(textAt(key, u""), u"one");
    EXPECT_EQ(textAt(SystemKey::open(kUser, u"Key"), u""), u"two");
}

TEST(Hive, IsShownByAnOpenKeyAsItWas) {
    const Machine machine;
    RegistryBatch batch; // with no file yet, all is done to one tree
    EXPECT_TRUE(setText(kUser, u"Key\\Sub", u"", u"one"));
    const SystemKey key = SystemKey::open(kUser, u"Key");
    EXPECT_TRUE(setText(kUser, u"Key\\Sub", u"", u"two"));
    EXPECT_TRUE(setText(kUser, u"Key\\Other", u"", u"two"));
    const SystemKey later = SystemKey::open(kUser, u"Key");
    EXPECT_TRUE(SystemKey::openForWriting(kUser, u"").deleteTree(u"Key"));
    EXPECT_EQ(textAt(key.open(u"Sub"), u""), u"one");
    EXPECT_EQ(subkeysOf(key).size(), 1u);
    EXPECT_EQ(textAt(later.open(u"Sub"), u""), u"two");
    EXPECT_EQ(subkeysOf(later).size(), 2u);
}

// Tells what can be done with two keys that are there.
void useWithoutRights() {
    support::leavePrivileges();
    for (std::string root; std::getline(std::cin, root);) {
        setenv("TARVO_PLATFORM_ROOT", root.c_str(), 1);
        for (const auto hive : {kUser, kMachine}) {
            std::cout << (SystemKey::open(hive, u"Key") ? 'r' : '-')
                      << (SystemKey::openForWriting(hive, u"Key") ? 'w' : '-');
        }
        std::cout << std::endl;
    }
}
const support::Role kOrdinaryHiveUser{"ordinary user of hives", useWithoutRights};

TEST(Hive, NeedsTheRightToReplaceItsFile) {
    using std::filesystem::perms;
    const Machine machine;
    std::filesystem::permissions(machine.root(), perms::all);
    EXPECT_TRUE(setText(kUser, u"Key", u"", u"text"));
    EXPECT_TRUE(setText(kMachine, u"Key", u"", u"text"));
    const perms shared =
        perms::owner_read | perms::owner_write | perms::others_read | perms::others_write;
    std::filesystem::permissions(machine.userFile(), shared);
    EXPECT_TRUE(setText(kUser, u"Key", u"", u"again"));
    EXPECT_EQ(std::filesystem::status(machine.userFile()).permissions(), shared);
    Process user{"ordinary user of hives"};
    EXPECT_EQ(user.ask(machine.root()), geteuid() == 0 ? "r-r-" : "rwrw");
    std::filesystem::permissions(machine.folder() / u"HKCU.reg.lock", shared);
    EXPECT_EQ(user.ask(machine.root()), geteuid() == 0 ? "rwr-" : "rwrw");
    std::filesystem::permissions(machine.root(), perms::owner_read | perms::owner_exec |
                                                     perms::others_read | perms::others_exec);
    EXPECT_EQ(user.ask(machine.root()), "r-r-");
    std::filesystem::permissions(machine.root(), perms::owner_all);
}

// Fails to change a key, by itself and in a batch.
void writeWithoutRoom() {
    support::limitFileSize(400);
    const std::u16string big(500, u'x');
    std::cout << setText(kUser, u"Key", u"", big.c_str());
    RegistryBatch batch;
    std::cout << setText(kUser, u"Key", u"", big.c_str()) << batch.store();
    std::cout << (textAt(SystemKey::open(kUser, u"Key"), u"") == u"old") << std::endl;
}
const support::Role kFullHiveDisk{"full disk for hives", writeWithoutRoom};

TEST(Hive, StaysAsItIsWhereThereIsNoRoom) {
    const Machine machine;
    EXPECT_TRUE(setText(kUser, u"Key", u"", u"old"));
    const std::string before = TemporaryFolder::textOf(machine.userFile());
    Process writer{"full disk for hives"};
    EXPECT_EQ(writer.receive(), "0101");
    EXPECT_EQ(TemporaryFolder::textOf(machine.userFile()), before);
}

// Sets two values to the same number again and again, and tells each when it is stored.
void countInPairs() {
    for (int i = 1;; ++i) {
        const std::string text = std::to_string(i);
        const std::u16string number{text.begin(), text.end()};
        RegistryBatch batch;
        setText(kUser, u"Key", u"one", number.c_str());
        setText(kUser, u"Key", u"two", number.c_str());
        if (batch.store()) {
            std::cout << text << std::endl;
        }
    }
}
const support::Role kPairCounter{"counter in pairs", countInPairs};

TEST(Hive, LosesNothingThatAKilledProcessHasStored) {
    const Machine machine;
    for (int round = 0; round < 5; ++round) {
        Process counter{"counter in pairs"};
        for (int i = 0; i < round; ++i) {
            counter.receive();
        }
        counter.kill();
        std::string last = "0";
        while (const auto line = counter.receive()) {
            last = *line;
        }
        counter.wait();
        const SystemKey key = SystemKey::open(kUser, u"Key");
        const std::u16string number = textAt(key, u"one");
        EXPECT_EQ(textAt(key, u"two"), number);
        if (last != "0") {
            EXPECT_GE(std::stoi(std::string{number.begin(), number.end()}), std::stoi(last));
        }
        EXPECT_TRUE(setText(kUser, u"Key", u"three", u"3"));
    }
}

TEST(Hive, ShowsReadersWholeBatchesAlone) {
    const Machine machine;
    EXPECT_TRUE(setText(kUser, u"Key\\Sub", u"one", u"0"));
    EXPECT_TRUE(setText(kUser, u"Key\\Sub", u"two", u"0"));
    Process counter{"counter in pairs"};
    EXPECT_EQ(counter.receive(), "1");
    const auto read = [] {
        for (int i = 0; i < 200; ++i) {
            const SystemKey key = SystemKey::open(kUser, u"Key");
            EXPECT_EQ(textAt(key, u"one"), textAt(key, u"two"));
            EXPECT_EQ(textAt(key.open(u"Sub"), u"one").size(), 1u);
        }
    };
    const auto write = [] {
        for (int i = 0; i < 20; ++i) {
            EXPECT_TRUE(setText(kUser, u"Key\\Sub", u"one", i % 2 ? u"1" : u"2"));
        }
    };
    std::thread reader{read};
    std::thread otherReader{read};
    std::thread writer{write};
    reader.join();
    otherReader.join();
    writer.join();
    counter.kill();
}

} // namespace
