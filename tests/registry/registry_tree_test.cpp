// The tree's own rules, where the library's interface can't show a fault.
#include "registry/tree.h"

#include <gtest/gtest.h>
#include <map>
#include <random>
#include <string>

namespace {

using namespace TARVO;

tarvo::Reference<NamedValue> makeValue(TreeMemory& memory, std::u16string_view name,
                                       std::int32_t number) {
    return NamedValue::make(memory, name, RegistryValueType::integer, number, u"text");
}

TEST(FoldedName, FoldsTheLettersAToZAlone) {
    // Every unit once, at each place within the words that are folded together.
    for (unsigned unit = 0; unit < 0x10000; ++unit) {
        const auto folded =
            static_cast<char16_t>(unit >= u'A' && unit <= u'Z' ? unit + (u'a' - u'A') : unit);
        const std::size_t place = unit % 11;
        std::u16string name = u"abc\uFFFFefg\u8000ijk";
        std::u16string stored = name;
        name[place] = static_cast<char16_t>(unit);
        stored[place] = folded;
        EXPECT_TRUE(isSameName(name, stored)) << unit;
        EXPECT_EQ(hashOfName(name), hashOfFoldedName(stored)) << unit;
        stored[place] = static_cast<char16_t>(folded ^ 1);
        EXPECT_FALSE(isSameName(name, stored)) << unit;
    }
    for (std::size_t length = 0; length < 40; ++length) {
        const std::u16string name(length, u'A');
        const std::u16string stored(length, u'a');
        EXPECT_TRUE(isSameName(name, stored)) << length;
        EXPECT_EQ(hashOfName(name), hashOfFoldedName(stored)) << length;
    }
    EXPECT_FALSE(isSameName(u"abc", u"abcd"));
    EXPECT_FALSE(isSameName(u"abcd", u"abc"));
}

TEST(NameTable, HoldsWhatWasPutInLast) {
    std::mt19937 random(20261122);
    TreeMemory memory;
    NameTable<NamedValue> table;
    std::map<std::u16string, std::int32_t> expected;
    for (std::int32_t i = 0; i < 5000; ++i) {
        std::u16string name(random() % 12, u'a');
        for (char16_t& unit : name)
            unit = static_cast<char16_t>(u'a' + random() % 3);
        table.insert(memory, makeValue(memory, name, i));
        expected[name] = i;
        ASSERT_EQ(table.size(), expected.size());
    }
    NameTable<NamedValue> copy;
    copy.copyFrom(memory, table);
    table.handOverEach([](NamedValue* value) { value->release(); });
    EXPECT_EQ(table.find(u"a"), nullptr);
    EXPECT_EQ(copy.size(), expected.size());
    for (const auto& [name, number] : expected) {
        const NamedValue* value = copy.find(name);
        ASSERT_NE(value, nullptr);
        EXPECT_EQ(value->integer(), number);
        EXPECT_EQ(value->name(), name);
        EXPECT_EQ(*value->name().end(), u'\0');
        EXPECT_EQ(value->text(), u"text");
        EXPECT_EQ(*value->text().end(), u'\0');
    }
    std::size_t visited = 0;
    copy.forEach(
        [&](const NamedValue& value) { visited += expected.count(std::u16string(value.name())); });
    EXPECT_EQ(visited, expected.size());
}

TEST(TarvoRegistry, ACopyHasTablesOfItsOwnAndSharesWhatTheyHold) {
    TreeMemory memory;
    const auto root = TarvoRegistry::makeRoot();
    root->subKeys.insert(memory, TarvoRegistry::make(memory, u"child", kNoEdition));
    root->values.insert(memory, makeValue(memory, u"value", 1));
    const auto copy = root->copy(memory, kNoEdition);
    EXPECT_EQ(copy->subKeys.find(u"CHILD"), root->subKeys.find(u"child"));
    EXPECT_EQ(copy->values.find(u"value"), root->values.find(u"Value"));
    root->values.insert(memory, makeValue(memory, u"value", 2));
    root->subKeys.insert(memory, TarvoRegistry::make(memory, u"other", kNoEdition));
    EXPECT_EQ(copy->values.find(u"value")->integer(), 1);
    EXPECT_EQ(copy->subKeys.find(u"other"), nullptr);
}

TEST(TarvoRegistry, FindsNothingBelowAnEmptyComponent) {
    TreeMemory memory;
    const auto root = TarvoRegistry::makeRoot();
    root->subKeys.insert(memory, TarvoRegistry::make(memory, u"a", kNoEdition));
    EXPECT_EQ(findKey(root.get(), nullptr), root.get());
    EXPECT_EQ(findKey(root.get(), u""), nullptr);
    EXPECT_EQ(findKey(root.get(), u"a/"), root->subKeys.find(u"a"));
    EXPECT_EQ(findKey(root.get(), u"a//"), nullptr);
}

} // namespace
