// Changing the registry through the library's interface: what is recorded, what a commit makes of
// it, and what readers see meanwhile.
#include "tests/support/registry_writers.h"

#include <atomic>
#include <thread>

namespace {

using namespace tests;
using tarvo::Reference;
using Key = Reference<IVaskRegistryKey>;

Key keyOf(const Writer& writer, const char16_t* path) {
    Key key;
    EXPECT_EQ(writer->table->getKey(writer->me, path, key.out()), RC_OK);
    return key;
}

// A key writer begins with the slots of a key.
IVaskRegistryKey& asKey(const KeyWriter& key) {
    return *reinterpret_cast<IVaskRegistryKey*>(key.get());
}

// The file's lines behind the first, which holds an id that is new each time.
std::string userFileContent() {
    const std::string text = fileText(registryFile(Scope::user));
    return text.substr(std::min(text.find('\n'), text.size() - 1) + 1);
}

using RegistryWriter = EmptyScopes;

// Each key holds one value and one key, since there is no order among several.
TEST_F(RegistryWriter, WritesTheFileLineByLine) {
    const auto writer = newWriter();
    const TarvoUUID uuid = {{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}};
    setText(keyWriter(writer, u"/"), u"Text", u"<a href=\"x\">'&'</a>\t\n\u0001\u00C4\U0001F600");
    setText(keyWriter(writer, u"/B"), u"v", nullptr);
    const auto c = keyWriter(writer, u"/b\\C/");
    EXPECT_EQ(c->table->setIntegerValue(c->me, u"v", INT32_MIN), RC_OK);
    const auto d = keyWriter(writer, u"/b/c/d");
    EXPECT_EQ(d->table->setEmptyValue(d->me, u"v"), RC_OK);
    EXPECT_EQ(d->table->setUUIDValue(d->me, u"V", &uuid), RC_OK); // in the place of the other
    const auto e = keyWriter(writer, u"/b/c/d/e\u00C4");
    EXPECT_EQ(e->table->setEmptyValue(e->me, u"&"), RC_OK);
    commit(writer);
    EXPECT_TRUE(fileText(registryFile(Scope::user)).starts_with("<registry id=\"{"));
    EXPECT_EQ(userFileContent(),
              " <value name=\"text\" type=\"string\">&lt;a href=&quot;x&quot;&gt;&apos;&amp;&apos;"
              "&lt;/a&gt;&#9;&#10;\xC3\x84\xF0\x9F\x98\x80</value>\n"
              " <key name=\"b\">\n"
              "  <value name=\"v\" type=\"string\"></value>\n"
              "  <key name=\"c\">\n"
              "   <value name=\"v\" type=\"integer\">-2147483648</value>\n"
              "   <key name=\"d\">\n"
              "    <value name=\"v\" type=\"uuid\">{00010203-0405-0607-0809-0a0b0c0d0e0f}</value>\n"
              "    <key name=\"e\xC3\x84\">\n"
              "     <value name=\"&amp;\" type=\"empty\"/>\n"
              "    </key>\n"
              "   </key>\n"
              "  </key>\n"
              " </key>\n"
              "</registry>\n");
    EXPECT_EQ(textOf(*keyAt(u"/"), u"text"), u"<a href=\"x\">'&'</a>\t\n\u00C4\U0001F600");
}

TEST_F(RegistryWriter, ChecksNamesAndPaths) {
    const auto writer = newWriter();
    const auto root = keyWriter(writer, nullptr);
    const auto* table = root->table;
    KeyWriter key;
    const struct {
        const char16_t* path;
        TarvoResult create;       // of a key writer
        TarvoResult getKeyWriter; // of the writer
        TarvoResult deleteKey;    // of the writer
        TarvoResult getKey;       // of the writer
    } paths[] = {
        {u"a", RC_OK, RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME},
        {u"A/b/", RC_OK, RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME},
        {u"/a", RC_INVALID_KEY_NAME, RC_OK, RC_OK, RC_NOT_FOUND},
        {u"/a\\B/", RC_INVALID_KEY_NAME, RC_OK, RC_OK, RC_NOT_FOUND},
        {u"a//b", RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME,
         RC_INVALID_KEY_NAME},
        {u"/a//b", RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME, RC_NOT_FOUND},
        {u"/a\tb", RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME, RC_NOT_FOUND},
        {u"/\xDC00\xD800", RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME, RC_INVALID_KEY_NAME,
         RC_NOT_FOUND},
        {u"/\U0001F600", RC_INVALID_KEY_NAME, RC_OK, RC_OK, RC_NOT_FOUND},
        {u"", RC_INVALID_KEY_NAME, RC_OK, RC_ACCESS_DENIED, RC_OK},
        {u"/", RC_INVALID_KEY_NAME, RC_OK, RC_ACCESS_DENIED, RC_OK},
        {u"\\", RC_INVALID_KEY_NAME, RC_OK, RC_ACCESS_DENIED, RC_OK},
        {nullptr, RC_NULL_POINTER, RC_OK, RC_NULL_POINTER, RC_OK},
    };
    for (const auto& [path, create, getKeyWriter, deleteKey, getKey] : paths) {
        const std::string shown = path == nullptr ? "null" : narrow(path);
        Key read;
        EXPECT_EQ(writer->table->getKey(writer->me, path, read.out()), getKey) << shown;
        EXPECT_EQ(table->createKey(root->me, path, key.out()), create) << shown;
        EXPECT_EQ(writer->table->getKeyWriter(writer->me, path, key.out()), getKeyWriter) << shown;
        EXPECT_EQ(writer->table->deleteKey(writer->me, path), deleteKey) << shown;
        writer->table->deleteKey(writer->me, u"/a");
    }

    const struct {
        const char16_t* name;
        TarvoResult result;
    } names[] = {{u"a", RC_OK},
                 {u"\u00C4 b!", RC_OK},
                 {u"", RC_INVALID_KEY_NAME},
                 {u"a/b", RC_INVALID_KEY_NAME},
                 {u"a\\", RC_INVALID_KEY_NAME},
                 {u"a\nb", RC_INVALID_KEY_NAME},
                 {u"\xDBFF", RC_INVALID_KEY_NAME},
                 {nullptr, RC_NULL_POINTER}};
    const TarvoUUID uuid = {};
    for (const auto& [name, result] : names) {
        EXPECT_EQ(table->setStringValue(root->me, name, u"x"), result);
        EXPECT_EQ(table->setIntegerValue(root->me, name, 1), result);
        EXPECT_EQ(table->setUUIDValue(root->me, name, &uuid), result);
        EXPECT_EQ(table->setEmptyValue(root->me, name), result);
        EXPECT_EQ(table->deleteValue(root->me, nullptr, name), result);
        EXPECT_EQ(writer->table->deleteValue(writer->me, u"", name), result);
    }
    EXPECT_TRUE(valueNames(asKey(root)).empty());
    EXPECT_EQ(table->setUUIDValue(root->me, u"a/b", nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->deleteKey(root->me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->createKey(root->me, u"a", nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->deleteKey(root->me, u""), RC_INVALID_KEY_NAME);
    EXPECT_EQ(table->deleteKey(root->me, u"no/such/key"), RC_OK);
    EXPECT_EQ(writer->table->deleteValue(writer->me, nullptr, u"a"), RC_NULL_POINTER);
    EXPECT_EQ(writer->table->deleteValue(writer->me, u"a", nullptr), RC_INVALID_KEY_NAME);
    EXPECT_EQ(writer->table->deleteValue(writer->me, u"/no/such", u"a"), RC_OK);
    EXPECT_EQ(writer->table->getKeyWriter(writer->me, u"/", nullptr), RC_NULL_POINTER);
    EXPECT_EQ(writer->table->getKey(writer->me, u"/", nullptr), RC_NULL_POINTER);
    EXPECT_EQ(TARVO_CALL(vaskGetRegistryWriter)(0, nullptr), RC_NULL_POINTER);
}

TEST_F(RegistryWriter, MergesWithWhatOthersCommitted) {
    setScope(Scope::user,
             R"(<key name="k"><value name="old" type="empty"/></key><key name="gone"/>)");
    const auto first = newWriter();
    const auto second = newWriter();
    setText(keyWriter(first, u"/k"), u"x", u"1");
    setText(keyWriter(second, u"/k"), u"y", u"2");
    setText(keyWriter(first, u"/k"), u"both", u"first");
    setText(keyWriter(second, u"/k"), u"both", u"second");
    EXPECT_EQ(first->table->deleteKey(first->me, u"/gone"), RC_OK);
    commit(first);
    commit(second);
    const auto key = keyAt(u"/k");
    EXPECT_EQ(valueNames(*key), (Names{u"both", u"old", u"x", u"y"}));
    EXPECT_EQ(textOf(*key, u"both"), u"second");
    EXPECT_EQ(keyNames(*keyAt(nullptr)), Names{u"k"});
    commit(first); // replays what it has recorded
    EXPECT_EQ(textOf(*keyAt(u"/k"), u"both"), u"first");
}

TEST_F(RegistryWriter, DecidesByAFixedOrderWhatWins) {
    setScope(Scope::user, R"(<value name="a" type="empty"/><value name="b" type="empty"/>
        <key name="k"><value name="old" type="empty"/></key><key name="d"><key name="below"/></key>)");
    const auto writer = newWriter();
    const auto root = keyWriter(writer, u"/");
    root->table->deleteValue(root->me, nullptr, u"a");
    setText(root, u"a", u"set last");
    setText(root, u"b", u"x");
    root->table->deleteValue(root->me, nullptr, u"b");
    root->table->deleteKey(root->me, u"k");
    const auto anew = keyWriter(writer, u"/k");
    EXPECT_TRUE(valueNames(asKey(anew)).empty());
    EXPECT_EQ(anew->table->setIntegerValue(anew->me, u"new", 1), RC_OK);
    keyWriter(writer, u"/d/below/further");
    root->table->deleteKey(root->me, u"D");

    const auto other = newWriter();
    setText(keyWriter(other, u"/k"), u"meanwhile", u"x");
    commit(other);
    commit(writer);
    const auto key = keyAt(nullptr);
    EXPECT_EQ(valueNames(*key), Names{u"a"});
    EXPECT_EQ(keyNames(*key), Names{u"k"});
    EXPECT_EQ(valueNames(*keyAt(u"/k")), Names{u"new"});
}

TEST_F(RegistryWriter, DoesNotBringBackAKeyThatItOnlyReached) {
    setScope(Scope::user,
             R"(<key name="a"><key name="b"><value name="v" type="empty"/></key></key>)");
    const auto writer = newWriter();
    EXPECT_EQ(writer->table->deleteValue(writer->me, u"/a/b", u"v"), RC_OK);
    EXPECT_EQ(writer->table->deleteKey(writer->me, u"/a/b/none"), RC_OK);
    const auto other = newWriter();
    EXPECT_EQ(other->table->deleteKey(other->me, u"/a"), RC_OK);
    commit(other);
    commit(writer);
    EXPECT_TRUE(keyNames(*keyAt(nullptr)).empty());

    // What the commit left out can be used again.
    EXPECT_EQ(writer->table->deleteValue(writer->me, u"/a/b", u"w"), RC_OK);
    EXPECT_EQ(writer->table->deleteKey(writer->me, u"/a/b"), RC_OK);
    const auto key = keyWriter(writer, u"/a/b");
    setText(key, u"later", u"1");
    EXPECT_EQ(textOf(asKey(key), u"later"), u"1");
    commit(writer);
    EXPECT_EQ(textOf(*keyAt(u"/a/b"), u"later"), u"1");
    setText(key, u"later", u"2");
    EXPECT_EQ(textOf(asKey(key), u"later"), u"2");
    commit(writer);
    EXPECT_EQ(textOf(*keyAt(u"/a/b"), u"later"), u"2");
}

TEST_F(RegistryWriter, ShowsItsChangesThroughItselfAndToNobodyElse) {
    setScope(Scope::user, R"(<value name="v" type="string">old</value>
        <key name="a"><value name="v" type="string">old</value><key name="b"/></key>)");
    const auto readBefore = keyAt(nullptr);
    const auto writer = newWriter();
    const auto b = keyWriter(writer, u"/a/b");
    const auto a = keyWriter(writer, u"/a");
    setText(a, u"v", u"new");
    setText(b, u"v", u"new");
    EXPECT_EQ(textOf(asKey(a), u"v"), u"new");
    EXPECT_EQ(textOf(asKey(a), u"v", u"b"), u"new");
    EXPECT_EQ(textOf(asKey(keyWriter(writer, u"/")), u"v", u"a/b"), u"new");
    EXPECT_EQ(textOf(*readBefore, u"v", u"a"), u"old");
    EXPECT_EQ(textOf(*readBefore, u"v", u"a/b"), u"<500>");
    EXPECT_EQ(textOf(*keyAt(nullptr), u"v", u"a"), u"old");

    // A key that the writer gave stays as it was when it was given, however it was asked for.
    const auto shown = keyOf(writer, u"/A/");
    Key below;
    EXPECT_EQ(a->table->getKey(a->me, u"b", below.out()), RC_OK);
    setText(b, u"v", u"newer");
    setText(a, u"v", u"newer");
    keyWriter(writer, u"/a/c");
    EXPECT_EQ(textOf(*shown, u"v"), u"new");
    EXPECT_EQ(textOf(*shown, u"v", u"b"), u"new");
    EXPECT_EQ(keyNames(*shown), Names{u"b"});
    EXPECT_EQ(textOf(*below, u"v"), u"new");
    EXPECT_EQ(textOf(*keyOf(writer, u"/a"), u"v", u"b"), u"newer");
    std::uint32_t allUsers = 5;
    EXPECT_EQ(a->table->isAllUsersValue(a->me, u"v", &allUsers), RC_OK);
    EXPECT_EQ(allUsers, 0u);
    EXPECT_EQ(keyNames(*keyAt(u"/a")), Names{u"b"});
}

TEST_F(RegistryWriter, GoesOnAfterACommit) {
    const auto writer = newWriter();
    const auto key = keyWriter(writer, u"/k");
    setText(key, u"v", u"1");
    commit(writer);
    const auto other = newWriter();
    setText(keyWriter(other, u"/k"), u"o", u"other's");
    commit(other);
    setText(key, u"w", u"2");
    EXPECT_EQ(valueNames(asKey(key)), (Names{u"v", u"w"}));
    EXPECT_EQ(valueNames(*keyOf(writer, u"/k")), Names{u"v"}); // as it was before the commit
    commit(writer);
    EXPECT_EQ(valueNames(asKey(key)), (Names{u"o", u"v", u"w"}));
    EXPECT_EQ(valueNames(*keyAt(u"/k")), (Names{u"o", u"v", u"w"}));
}

TEST_F(RegistryWriter, RevertsDeepChanges) {
    setScope(Scope::user, R"(<key name="a"><key name="b"><value name="v" type="string">old</value>
        </key></key>)");
    const auto writer = newWriter();
    const auto cutOff = keyWriter(writer, u"/a/b");
    setText(cutOff, u"v", u"new");
    EXPECT_EQ(writer->table->revert(writer->me), RC_OK);
    EXPECT_EQ(textOf(*keyOf(writer, u"/a/b"), u"v"), u"old");
    setText(cutOff, u"v", u"newer");
    EXPECT_EQ(textOf(asKey(cutOff), u"v"), u"newer");
    commit(writer);
    EXPECT_EQ(textOf(*keyAt(u"/a/b"), u"v"), u"old");
    setText(keyWriter(writer, u"/a/b"), u"v", u"again");
    commit(writer);
    EXPECT_EQ(textOf(*keyAt(u"/a/b"), u"v"), u"again");
}

TEST_F(RegistryWriter, OutlivesItsKeysAndTheOtherWayRound) {
    KeyWriter key;
    {
        const auto writer = newWriter();
        key = keyWriter(writer, u"/a/b");
    }
    setText(key, u"v", u"1");
    EXPECT_EQ(textOf(asKey(key), u"v"), u"1");
    KeyWriter below;
    EXPECT_EQ(key->table->createKey(key->me, u"c", below.out()), RC_OK);
    EXPECT_EQ(key->table->deleteKey(key->me, u"c"), RC_OK);
    setText(below, u"v", u"2"); // a deleted key's writer is of no effect
    EXPECT_TRUE(keyNames(asKey(key)).empty());
}

TEST_F(RegistryWriter, TakesPathsAsDeepAsTheyCome) {
    std::u16string path;
    for (int i = 0; i < 20000; ++i)
        path += u"/k";
    const auto writer = newWriter();
    setText(keyWriter(writer, path.c_str()), u"v", u"deep");
    EXPECT_EQ(textOf(*keyOf(writer, path.c_str()), u"v"), u"deep");
    setText(keyWriter(writer, path.c_str()), u"v", u"deeper");
    commit(writer);
    EXPECT_EQ(textOf(*keyAt(path.c_str()), u"v"), u"deeper");
    EXPECT_EQ(writer->table->deleteKey(writer->me, u"/k"), RC_OK);
    commit(writer);
    EXPECT_TRUE(keyNames(*keyAt(nullptr)).empty());
}

TEST_F(RegistryWriter, KeepsTheStateBeforeInABackup) {
    const auto backup = backupOf(registryFile(Scope::user));
    std::filesystem::remove(backup);
    const auto writer = newWriter();
    commit(writer);
    EXPECT_FALSE(std::filesystem::exists(backup)); // there was nothing to copy
    const std::string first = fileText(registryFile(Scope::user));
    setText(keyWriter(writer, u"/"), u"v", u"1");
    commit(writer);
    EXPECT_EQ(fileText(backup), first);
    EXPECT_NE(fileText(registryFile(Scope::user)), first);
}

TEST_F(RegistryWriter, GoesOnFromDamagedFilesAndKeepsTheLastWholeState) {
    const auto file = registryFile(Scope::user);
    const std::string lastWhole = registryText("");
    writeFile(backupOf(file), lastWhole);
    const auto writer = newWriter();
    setText(keyWriter(writer, u"/k"), u"v", u"1");
    const std::string malformed = registryText(R"(<key name="A"/>)");
    writeFile(file, malformed);
    EXPECT_EQ(commitOf(writer), RC_BAD_REGISTRY_FILE);
    EXPECT_EQ(fileText(file), malformed);
    EXPECT_EQ(fileText(backupOf(file)), malformed);
    EXPECT_EQ(fileText(wholeBackupOf(file)), lastWhole);
    // Readers make do with what there is of a file that was cut off, and so does a commit.
    const std::string cutOff = R"(<registry id="cut off"><key name="front">)";
    writeFile(file, cutOff);
    EXPECT_EQ(keyNames(*keyAt(nullptr)), Names{u"front"});
    commit(writer);
    EXPECT_EQ(keyNames(*keyAt(nullptr)), (Names{u"front", u"k"}));
    EXPECT_EQ(fileText(backupOf(file)), cutOff);
    EXPECT_EQ(fileText(wholeBackupOf(file)), lastWhole);
    // An empty id is no id that anybody knows.
    writeFile(registryFile(Scope::user), R"(<registry id=""><key name="kept"/></registry>)");
    commit(writer);
    EXPECT_EQ(keyNames(*keyAt(nullptr)), (Names{u"k", u"kept"}));
}

TEST_F(RegistryWriter, ReportsAFileThatCantBeOpened) {
    removeScope(Scope::user);
    std::filesystem::create_directory(registryFile(Scope::user));
    Writer other;
    EXPECT_EQ(TARVO_CALL(vaskGetRegistryWriter)(0, other.out()), RC_ACCESS_DENIED);
    EXPECT_EQ(TARVO_CALL(vaskGetRegistryWriter)(1, other.out()), RC_OK); // made by the test open
    EXPECT_EQ(fileText(registryFile(Scope::machine)), "");
}

TEST_F(RegistryWriter, NeverShowsUnfinishedWorkToReadersOnOtherThreads) {
    setScope(Scope::user, R"(<key name="k"><value name="a" type="integer">0</value>
        <value name="b" type="integer">0</value></key>)");
    const auto writer = newWriter();
    const auto key = keyWriter(writer, u"/k");
    std::atomic<IVaskRegistryKey*> shown = nullptr;
    std::atomic<bool> stop = false;
    std::atomic<int> torn = 0;
    std::thread reader([&] {
        while (!stop)
            if (IVaskRegistryKey* given = shown.exchange(nullptr)) {
                std::int32_t a = 0;
                std::int32_t b = 0;
                given->table->getIntegerValue(given->me, u"a", nullptr, &a);
                given->table->getIntegerValue(given->me, u"b", nullptr, &b);
                torn += a != b;
                given->table->release(given->me);
            }
    });
    for (std::int32_t i = 0; i < 2000; ++i) {
        IVaskRegistryKey* given = nullptr;
        EXPECT_EQ(writer->table->getKey(writer->me, u"/k", &given), RC_OK);
        if (IVaskRegistryKey* unread = shown.exchange(given))
            unread->table->release(unread->me);
        key->table->setIntegerValue(key->me, u"a", i);
        key->table->setIntegerValue(key->me, u"b", i);
        if (i % 500 == 0)
            commit(writer);
    }
    stop = true;
    reader.join();
    if (IVaskRegistryKey* unread = shown.exchange(nullptr))
        unread->table->release(unread->me);
    EXPECT_EQ(torn, 0);
}

} // namespace
