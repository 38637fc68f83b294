// Reading keys of both scopes through the library's interface, on real files.
#include "tests/support/registry_files.h"

#include <atomic>
#include <thread>
#include <vector>

namespace {

using namespace tests;
using tarvo::Reference;

using RegistryKey = EmptyScopes;

TEST_F(RegistryKey, OpensTheRootWhereThereIsNoFile) {
    for (const char16_t* path : {static_cast<const char16_t*>(nullptr), u"", u"/", u"\\"}) {
        const auto root = keyAt(path);
        ASSERT_TRUE(root);
        EXPECT_TRUE(valueNames(*root).empty());
        EXPECT_TRUE(keyNames(*root).empty());
    }
}

TEST_F(RegistryKey, FindsKeysByPath) {
    setScope(Scope::machine,
             R"(<key name="components"><key name="pmcs"><key name="É"/></key></key>)");
    const struct {
        const char16_t* path;
        TarvoResult result;
    } cases[] = {
        {u"/Components/PMCs", RC_OK},          {u"\\components\\pmcs", RC_OK},
        {u"/COMPONENTS\\PMCS/", RC_OK},        {u"/components/pmcs/É", RC_OK},
        {u"/components/pmcs/é", RC_NOT_FOUND}, {u"Components/PMCs", RC_NOT_FOUND},
        {u"//components", RC_NOT_FOUND},       {u"/components//pmcs", RC_NOT_FOUND},
        {u"/components/pmcs//", RC_NOT_FOUND}, {u"/component", RC_NOT_FOUND},
        {u"/componentsx", RC_NOT_FOUND},       {u"//", RC_NOT_FOUND},
    };
    for (const auto& [path, result] : cases) {
        IVaskRegistryKey* key = reinterpret_cast<IVaskRegistryKey*>(1);
        EXPECT_EQ(TARVO_CALL(vaskGetRegistryKey)(path, &key), result) << narrow(path);
        EXPECT_EQ(key == nullptr, result != RC_OK) << narrow(path);
        if (key != nullptr)
            key->table->release(key->me);
    }

    const auto root = keyAt(nullptr);
    Reference<IVaskRegistryKey> below;
    EXPECT_EQ(root->table->getKey(root->me, u"Components\\pmcs/", below.out()), RC_OK);
    EXPECT_EQ(keyNames(*below), Names{u"É"});
    EXPECT_EQ(root->table->getKey(root->me, u"", below.out()), RC_NOT_FOUND);
    EXPECT_EQ(root->table->getKey(root->me, u"/components", below.out()), RC_NOT_FOUND);
}

TEST_F(RegistryKey, ReadsEachTypeAndRefusesTheOthers) {
    setScope(Scope::user, R"(<value name="s" type="string">text &lt;&#x42;&gt;</value>
        <value name="i" type="integer">-42</value>
        <value name="u" type="uuid">{00010203-0405-0607-0809-0a0b0c0d0e0f}</value>
        <value name="e" type="empty"/>)");
    const auto key = keyAt(u"/");
    const char16_t* const names[] = {u"S", u"i", u"U", u"e", u"missing"};
    for (std::uint32_t i = 0; i < 5; ++i) {
        const TarvoResult otherwise = i < 4 ? RC_WRONG_VALUE_TYPE : RC_NOT_FOUND;
        std::uint32_t type = 77;
        EXPECT_EQ(key->table->getValueType(key->me, names[i], nullptr, &type),
                  i < 4 ? TarvoResult{RC_OK} : TarvoResult{RC_NOT_FOUND});
        EXPECT_EQ(type, i < 4 ? i : 77);

        tarvo::String text(u"before");
        EXPECT_EQ(key->table->getStringValue(key->me, names[i], nullptr, text.pair()),
                  i == 0 ? TarvoResult{RC_OK} : otherwise);
        EXPECT_EQ(text.text(), i == 0 ? u"text <B>" : u"before");

        std::int32_t number = 7;
        EXPECT_EQ(key->table->getIntegerValue(key->me, names[i], nullptr, &number),
                  i == 1 ? TarvoResult{RC_OK} : otherwise);
        EXPECT_EQ(number, i == 1 ? -42 : 7);

        TarvoUUID uuid;
        std::fill(std::begin(uuid.bytes), std::end(uuid.bytes), std::uint8_t{0xEE});
        EXPECT_EQ(key->table->getUUIDValue(key->me, names[i], nullptr, &uuid),
                  i == 2 ? TarvoResult{RC_OK} : otherwise);
        for (std::uint8_t byte = 0; byte < 16; ++byte)
            EXPECT_EQ(uuid.bytes[byte], i == 2 ? byte : 0);
    }
}

TEST_F(RegistryKey, MergesTheScopesWithTheUserFirst) {
    setScope(Scope::machine, R"(<value name="both" type="integer">1</value>
        <value name="machine" type="string">of all</value>
        <key name="a"><value name="x" type="string">machine</value>
                      <value name="deep" type="string">only machine</value></key>
        <key name="b"/>)");
    setScope(Scope::user, R"(<value name="both" type="string">of the user</value>
        <key name="a"><value name="x" type="string">user</value></key><key name="c"/>)");
    const auto root = keyAt(u"/");
    EXPECT_EQ(valueNames(*root), (Names{u"both", u"machine"}));
    EXPECT_EQ(keyNames(*root), (Names{u"a", u"b", u"c"}));
    EXPECT_EQ(textOf(*root, u"BOTH"), u"of the user");
    EXPECT_EQ(textOf(*root, u"machine"), u"of all");
    EXPECT_EQ(textOf(*root, u"x", u"A"), u"user");
    EXPECT_EQ(textOf(*root, u"deep", u"a/"), u"only machine");
    EXPECT_EQ(textOf(*root, u"deep", u"b"), u"<500>");
    EXPECT_EQ(textOf(*root, u"deep", u""), u"<500>");
    std::int32_t number = 0;
    EXPECT_EQ(root->table->getIntegerValue(root->me, u"both", nullptr, &number),
              RC_WRONG_VALUE_TYPE);

    const struct {
        const char16_t* name;
        TarvoResult result;
        std::uint32_t allUsers;
    } cases[] = {{u"both", RC_OK, 0}, {u"Machine", RC_OK, 1}, {u"none", RC_NOT_FOUND, 0}};
    for (const auto& [name, result, allUsers] : cases) {
        std::uint32_t answer = 9;
        EXPECT_EQ(root->table->isAllUsersValue(root->me, name, &answer), result);
        EXPECT_EQ(answer, allUsers);
    }
}

TEST_F(RegistryKey, ChecksItsPointers) {
    const auto key = keyAt(nullptr);
    void* me = key->me;
    const auto* table = key->table;
    std::uint32_t number = 5;
    std::int32_t integer = 5;
    TarvoUUID uuid = {{1}};
    tarvo::String text(u"kept");
    IVaskRegistryKey* out = nullptr;
    EXPECT_EQ(TARVO_CALL(vaskGetRegistryKey)(u"/", nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->getValueNames(me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->getKeyNames(me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->getValueType(me, nullptr, nullptr, &number), RC_NULL_POINTER);
    EXPECT_EQ(table->getValueType(me, u"a", nullptr, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->getStringValue(me, nullptr, nullptr, text.pair()), RC_NULL_POINTER);
    EXPECT_EQ(table->getStringValue(me, u"a", nullptr, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->getIntegerValue(me, nullptr, nullptr, &integer), RC_NULL_POINTER);
    EXPECT_EQ(table->getIntegerValue(me, u"a", nullptr, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->getUUIDValue(me, u"a", nullptr, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->getUUIDValue(me, nullptr, nullptr, &uuid), RC_NULL_POINTER);
    EXPECT_EQ(uuid.bytes[0], 0);
    EXPECT_EQ(table->getKey(me, nullptr, &out), RC_NULL_POINTER);
    EXPECT_EQ(table->getKey(me, u"a", nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->isAllUsersValue(me, u"a", nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table->isAllUsersValue(me, nullptr, &number), RC_NULL_POINTER);
    EXPECT_EQ(number, 5u);
    EXPECT_EQ(text.text(), u"kept");
}

TEST_F(RegistryKey, GivesBackWhatTheCallersStringsAndArraysGive) {
    setScope(Scope::user, R"(<value name="a" type="string">text</value>)");
    const auto key = keyAt(nullptr);
    tarvo::ConstantString constant(u"fixed");
    EXPECT_EQ(key->table->getStringValue(key->me, u"a", nullptr, constant.pair()), RC_READ_ONLY);

    const IVaskArrayTable refusing = {.get = [](void*, void**, std::uint32_t*) {},
                                      .resize = [](void*, std::uint32_t, void**) -> TarvoResult {
                                          return 4711;
                                      }};
    IVaskArray array = {nullptr, &refusing};
    EXPECT_EQ(key->table->getValueNames(key->me, &array), 4711u);
}

TEST_F(RegistryKey, IsAViewOfTheMomentWhenItWasMade) {
    setScope(Scope::user, R"(<key name="k"><value name="a" type="string">old</value></key>)");
    const auto before = keyAt(u"/k");
    setScope(Scope::user, R"(<key name="k"><value name="a" type="string">new</value></key>)");
    EXPECT_EQ(textOf(*before, u"a"), u"old");
    EXPECT_EQ(textOf(*keyAt(u"/k"), u"a"), u"new");
    EXPECT_EQ(textOf(*before, u"a"), u"old");
    removeScope(Scope::user);
    Reference<IVaskRegistryKey> gone;
    EXPECT_EQ(openKey(u"/k", gone), RC_NOT_FOUND);
    EXPECT_EQ(textOf(*before, u"a"), u"old");
}

TEST_F(RegistryKey, ServesManyThreadsWhileTheFileChanges) {
    setScope(Scope::user, R"(<value name="a" type="integer">0</value><key name="k"/>)");
    const auto shared = keyAt(nullptr);
    std::atomic<bool> stop = false;
    std::vector<std::thread> readers;
    std::atomic<int> faults = 0;
    for (int i = 0; i < 4; ++i)
        readers.emplace_back([&] {
            while (!stop) {
                Reference<IVaskRegistryKey> key;
                std::int32_t number = -1;
                if (openKey(nullptr, key) != RC_OK || keyNames(*key) != Names{u"k"} ||
                    shared->table->getIntegerValue(shared->me, u"a", nullptr, &number) != RC_OK ||
                    number != 0)
                    ++faults;
            }
        });
    for (int i = 1; i <= 50; ++i)
        setScope(Scope::user, R"(<value name="a" type="integer">1</value><key name="k"/>)");
    stop = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(faults, 0);
}

} // namespace
