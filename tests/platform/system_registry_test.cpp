// What the system's own registry and the stand-in for it both do.
#include "platform/system_registry.h"
#include "tests/support/process.h"
#include "tests/support/system_registry.h"
#include "tests/support/text.h"

#include <algorithm>
#include <cstdlib>
#include <gtest/gtest.h>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

namespace {

using support::Process;
using support::ScratchKey;
using support::storedValue;
using support::StoredValue;
using support::subkeysOf;
using support::textBytes;
using TARVO::platform::RegistryBatch;
using TARVO::platform::RegistryRoot;
using TARVO::platform::RegistryView;
using TARVO::platform::SubkeyNames;
using TARVO::platform::SystemKey;
using tests::narrow;
using tests::wide;

using Names = std::vector<std::u16string>;

// The values of a key of the user's, as another process reads them: asks for names, gives numbers.
void tellValues() {
    std::string path;
    std::getline(std::cin, path);
    for (std::string name; std::getline(std::cin, name);) {
        const auto key = SystemKey::open(RegistryRoot::currentUser, wide(path).c_str());
        const auto value = key ? storedValue(key, wide(name).c_str()) : std::nullopt;
        std::cout << testing::PrintToString(value) << std::endl;
    }
}
const support::Role kTeller{"teller of values", tellValues};

TEST(SystemRegistry, KeepsValuesOfAnyTypeAsTheyAre) {
    const std::vector<std::pair<std::u16string, StoredValue>> values{
        {u"", {1, textBytes(u"default")}},
        {u"text", {1, textBytes(u"C:\\Program Files\\\"x\"\\\u00E4\u20AC\U0001F600")}},
        {u"a\\b\"c=@[;", {1, textBytes(u" ; [x] \\")}},
        {u"empty text", {1, textBytes(u"")}},
        {u"lines", {1, textBytes(u"one\r\ntwo\tthree")}},
        {u"no terminator", {1, support::bytesOf(u"text")}},
        {u"terminators", {1, textBytes(std::u16string{u"a\0b\0", 4})}},
        {u"half a character", {1, {0x61, 0x00, 0x62}}},
        {u"half a pair", {1, textBytes(u"\xD83D")}},
        {u"long text", {1, textBytes(std::u16string(0x8000, u'x'))}},
        {u"nothing", {1, {}}},
        {u"number", {TARVO::platform::kNumberValue, {0xEF, 0xBE, 0xAD, 0xDE}}},
        {u"short number", {TARVO::platform::kNumberValue, {1, 2, 3}}},
        {u"bytes", {3, {0, 1, 254, 255}}},
        {u"no bytes", {3, {}}},
        {u"texts", {7, textBytes(std::u16string{u"a\0b\0", 4})}},
        {u"untyped", {0, {1}}},
        {u"of a type of its own", {0x12345678, {1}}},
    };
    const ScratchKey scratch;
    const SystemKey key = scratch.forWriting();
    {
        RegistryBatch batch;
        for (const auto& [name, value] : values) {
            EXPECT_TRUE(store(key, name.c_str(), value));
        }
        EXPECT_TRUE(batch.store());
    }
    const SystemKey reader = scratch.forReading();
    Process other{"teller of values"};
    other.send(narrow(scratch.path()));
    for (const auto& [name, value] : values) {
        EXPECT_EQ(storedValue(reader, name.c_str()), value);
        EXPECT_EQ(other.ask(narrow(name)), testing::PrintToString(std::optional{value}));
    }
    EXPECT_EQ(storedValue(reader, nullptr), values.front().second);
    EXPECT_EQ(storedValue(reader, u"none"), std::nullopt);
}

TEST(SystemRegistry, ReadsAValueOnlyWhole) {
    const ScratchKey scratch;
    EXPECT_TRUE(scratch.forWriting().setText(u"name", u"long"));
    const SystemKey key = scratch.forReading();
    std::vector<std::byte> buffer(9);
    EXPECT_EQ(key.findValue(u"name")->size, 10u);
    EXPECT_FALSE(key.readValue(u"name", buffer));
    buffer.resize(100);
    EXPECT_EQ(key.readValue(u"name", buffer)->size, 10u);
    EXPECT_TRUE(scratch.forWriting().setText(u"NAME", u"")); // in its place
    EXPECT_EQ(scratch.forReading().findValue(u"name")->size, 2u);
}

TEST(SystemRegistry, FindsKeysByPathsWithoutRegardToCase) {
    const ScratchKey scratch;
    const SystemKey top = scratch.forWriting();
    EXPECT_TRUE(top.create(u"One\\Two\\Three").setText(u"Name", u"3"));
    EXPECT_TRUE(top.create(u"ONE\\two").setText(nullptr, u"2"));
    const SystemKey key = scratch.forReading();
    EXPECT_EQ(subkeysOf(key), Names{u"One"});
    EXPECT_EQ(subkeysOf(key.open(u"one")), Names{u"Two"});
    EXPECT_TRUE(storedValue(key.open(u"oNE\\tWO").open(u"tHREE"), u"nAME"));
    EXPECT_TRUE(storedValue(key.open(u"One\\Two\\"), u""));
    EXPECT_EQ(subkeysOf(key.open(u"")), Names{u"One"});
    for (const auto* path : {u"Two", u"One\\Three", u"\\One", u"\\", u"On"}) {
        EXPECT_FALSE(key.open(path)) << narrow(path);
        EXPECT_FALSE(top.openForWriting(path)) << narrow(path);
        EXPECT_FALSE(top.deleteTree(path)) << narrow(path);
    }
    EXPECT_FALSE(SystemKey{}.open(u"One"));
}

TEST(SystemRegistry, PassesOverNamesThatAreLongerThanTheBuffer) {
    const ScratchKey scratch;
    const SystemKey top = scratch.forWriting();
    Names expected;
    for (const std::size_t size : {1, 127, 128, 200, 255}) {
        for (const char16_t letter : {u'a', u'z'}) {
            const std::u16string name(size, letter);
            EXPECT_TRUE(top.create(name.c_str()));
            EXPECT_TRUE(scratch.forReading().open(name.c_str()));
            if (size < 128) {
                expected.push_back(name);
            }
        }
    }
    Names names = subkeysOf(scratch.forReading());
    std::ranges::sort(names);
    std::ranges::sort(expected);
    EXPECT_EQ(names, expected);
}

TEST(SystemRegistry, RemovesAKeyWithAllBelowIt) {
    const ScratchKey scratch;
    const SystemKey top = scratch.forWriting();
    for (const auto* path : {u"a\\b\\c", u"a\\d", u"ab"}) {
        EXPECT_TRUE(top.create(path));
    }
    EXPECT_TRUE(top.setText(u"a", u"value"));
    EXPECT_FALSE(top.deleteTree(u""));
    EXPECT_TRUE(top.deleteTree(u"a\\b"));
    EXPECT_EQ(subkeysOf(scratch.forReading().open(u"a")), Names{u"d"});
    EXPECT_TRUE(top.deleteTree(u"A"));
    EXPECT_FALSE(top.deleteTree(u"A"));
    EXPECT_EQ(subkeysOf(scratch.forReading()), Names{u"ab"});
    EXPECT_TRUE(storedValue(scratch.forReading(), u"a"));
}

TEST(SystemRegistry, GivesNoMoreThanWhatAKeyWasOpenedFor) {
    const ScratchKey scratch;
    const SystemKey writer = scratch.forWriting();
    EXPECT_TRUE(writer.create(u"sub").setText(nullptr, u"text"));
    EXPECT_FALSE(writer.openForWriting(u"sub").findValue(nullptr));
    EXPECT_TRUE(storedValue(writer.open(u"sub"), nullptr));
    EXPECT_EQ(subkeysOf(writer), Names{});
    EXPECT_FALSE(scratch.forReading().setText(nullptr, u"text"));
    EXPECT_FALSE(SystemKey::openForWriting(RegistryRoot::classesRoot, u"CLSID"));
}

TEST(SystemRegistry, ComesToAnEndOfAKeyThatIsGone) {
    const ScratchKey scratch;
    const SystemKey top = scratch.forWriting();
    for (const auto* path : {u"key\\a\\x", u"key\\b", u"key\\c"}) {
        EXPECT_TRUE(top.create(path));
    }
    const SystemKey writer = top.openForWriting(u"key");
    const SystemKey reader = scratch.forReading().open(u"key");
    SubkeyNames names{reader};
    EXPECT_TRUE(names.next());
    EXPECT_TRUE(top.deleteTree(u"key"));
    while (names.next()) {
    }
    EXPECT_FALSE(names.next());
    EXPECT_FALSE(writer.setText(nullptr, u"text"));
    EXPECT_FALSE(scratch.forReading().open(u"key"));
}

// A class that is registered in the machine's classes of one view or both, and gone with the
// object.
class MachineClass {
  public:
    SystemKey create(RegistryView view) const {
        return classes(view).openForWriting(u"CLSID", view).create(name_.c_str(), view);
    }
    bool remove(RegistryView view) const {
        return classes(view).deleteTree((u"CLSID\\" + name_).c_str(), view);
    }
    bool isAt(RegistryRoot root, const std::u16string& path, RegistryView view) const {
        return static_cast<bool>(SystemKey::open(root, (path + name_).c_str(), view));
    }
    MachineClass() = default;
    MachineClass(const MachineClass&) = delete;
    MachineClass& operator=(const MachineClass&) = delete;
    ~MachineClass() {
        remove(RegistryView::view32);
        remove(RegistryView::view64);
    }

  private:
    static SystemKey classes(RegistryView view) {
        return SystemKey::openForWriting(RegistryRoot::localMachine, u"Software\\Classes", view);
    }

    std::u16string name_ = TARVO::platform::classText(TARVO::platform::newIdentifier()).data();
};

TEST(SystemRegistry, HasClassesInTwoViews) {
    struct Seen {
        bool in32;
        bool in64;
        void check(const MachineClass& one) const {
            const auto machine = RegistryRoot::localMachine;
            const auto merged = RegistryRoot::classesRoot;
            const auto either = RegistryView::either;
            const std::u16string classes = u"Software\\Classes\\";
            EXPECT_EQ(one.isAt(machine, classes + u"CLSID\\", RegistryView::view32), in32);
            EXPECT_EQ(one.isAt(merged, u"clsid\\", RegistryView::view32), in32);
            EXPECT_EQ(one.isAt(machine, classes + u"Wow6432Node\\CLSID\\", either), in32);
            EXPECT_EQ(one.isAt(machine, classes + u"CLSID\\", RegistryView::view64), in64);
            EXPECT_EQ(one.isAt(merged, u"CLSID\\", RegistryView::view64), in64);
            EXPECT_EQ(one.isAt(machine, classes + u"CLSID\\", either), in64);
            EXPECT_EQ(one.isAt(merged, u"CLSID\\", either), in64);
        }
    };
    const MachineClass one;
    Seen{false, false}.check(one);
    EXPECT_TRUE(one.create(RegistryView::view32).create(u"Below"));
    Seen{true, false}.check(one);
    EXPECT_FALSE(one.remove(RegistryView::view64));
    EXPECT_TRUE(one.create(RegistryView::view64));
    Seen{true, true}.check(one);
    EXPECT_TRUE(one.remove(RegistryView::view32));
    Seen{false, true}.check(one);
    EXPECT_TRUE(one.remove(RegistryView::view64));
    Seen{false, false}.check(one);
}

TEST(SystemRegistry, ShowsABatchHereAtOnceAndElsewhereAtItsEnd) {
    const ScratchKey scratch;
    Process other{"teller of values"};
    other.send(narrow(scratch.path()));
    RegistryBatch batch;
    {
        RegistryBatch inner;
        EXPECT_TRUE(scratch.forWriting().create(u"sub\\key").setText(u"name", u"text"));
        EXPECT_TRUE(scratch.forWriting().setText(u"", u"a"));
        EXPECT_TRUE(scratch.forWriting().deleteTree(u"sub\\key"));
        EXPECT_TRUE(inner.store());
    }
    EXPECT_EQ(subkeysOf(scratch.forReading()), Names{u"sub"});
    EXPECT_FALSE(scratch.forReading().open(u"sub\\key"));
    EXPECT_TRUE(batch.store());
    EXPECT_EQ(other.ask(""),
              testing::PrintToString(std::optional{StoredValue{1, textBytes(u"a")}}));
}

constexpr int kKeys = 25;

// Adds keys of its own to a key, every other one in a batch.
void addKeys() {
    std::string line;
    std::getline(std::cin, line);
    const std::size_t space = line.find(' ');
    const std::u16string prefix = wide(line.substr(0, space));
    const std::u16string path = wide(line.substr(space + 1));
    int made = 0;
    for (int i = 0; i < kKeys; ++i) {
        std::optional<RegistryBatch> batch;
        if (i % 2 == 0) {
            batch.emplace();
        }
        const auto key = SystemKey::openForWriting(RegistryRoot::currentUser, path.c_str());
        const std::u16string name = prefix + wide(std::to_string(i));
        const bool isSet = key && key.create(name.c_str()).setText(u"name", u"text");
        made += isSet && (!batch || batch->store()) ? 1 : 0;
    }
    std::cout << made << std::endl;
}
const support::Role kAdder{"adder of keys", addKeys};

TEST(SystemRegistry, LosesNoChangeOfSeveralProcesses) {
    const ScratchKey scratch;
    std::vector<std::unique_ptr<Process>> processes;
    for (const char* prefix : {"a ", "b ", "c "}) {
        processes.push_back(std::make_unique<Process>("adder of keys"));
        processes.back()->send(prefix + narrow(scratch.path()));
    }
    for (const auto& process : processes) {
        EXPECT_EQ(process->receive(), std::to_string(kKeys));
    }
    const SystemKey key = scratch.forReading();
    const Names names = subkeysOf(key);
    EXPECT_EQ(names.size(), kKeys * processes.size());
    for (const auto& name : names) {
        EXPECT_TRUE(storedValue(key.open(name.c_str()), u"name"));
    }
}

} // namespace
