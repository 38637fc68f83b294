// The data objects that callers get from the factory.
#include "tests/support/scarce_memory.h"
#include "tests/support/tarvo_library.h"

#include <tarvo/text.hpp>

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using namespace tests;

struct Destroy {
    template <class Object>
    void operator()(Object* object) const {
        object->table->destroy(object->me);
    }
};
template <class Object>
using Owned = std::unique_ptr<Object, Destroy>;

const VaskDataClassFactory& factory() {
    return *TARVO_CALL(vaskGetDataClassFactory)();
}

template <class StringPair>
std::u16string textOf(StringPair& string) {
    const char16_t* text = nullptr;
    std::uint32_t length = 7;
    string.table->get(string.me, &text, &length);
    EXPECT_EQ(text[length], u'\0');
    return {text, length};
}

// Everything that a value answers, in one line.
std::string answersOf(VaskValueObject& value) {
    const VaskValueObjectTable& table = *value.table;
    const char16_t* text = nullptr;
    std::uint32_t length = 0;
    std::int32_t integer = 0;
    std::uint32_t boolean = 0;
    double real = 0;
    std::string answers = std::to_string(table.getValueType(value.me));
    const auto add = [&](TarvoResult result, const std::string& answer) {
        answers += "; " + (result == RC_OK ? answer : std::to_string(result));
    };
    const TarvoResult textResult = table.getStringValue(value.me, &text, &length);
    add(textResult, narrow({text, length}));
    EXPECT_TRUE(text == nullptr ? length == 0 : text[length] == u'\0');
    const TarvoResult integerResult = table.getIntegerValue(value.me, &integer);
    add(integerResult, std::to_string(integer));
    const TarvoResult booleanResult = table.getBooleanValue(value.me, &boolean);
    add(booleanResult, std::to_string(boolean));
    const TarvoResult realResult = table.getRealValue(value.me, &real);
    std::uint64_t bits = 0;
    std::memcpy(&bits, &real, sizeof bits);
    add(realResult, bits == 0x7FF8000000000000 ? "NaN" : std::to_string(real));
    return answers;
}

TEST(ValueObject, IsReadAsWhatItWasSetTo) {
    const Owned<VaskValueObject> value(factory().createValue());
    void* const me = value->me;
    EXPECT_EQ(me, value.get());
    EXPECT_EQ(answersOf(*value), "4; ; -2147483648; 107; NaN");
    using Table = VaskValueObjectTable;
    const struct {
        TarvoResult (*set)(const Table&, void*);
        const char* answers;
    } cases[] = {
        {[](const Table& table, void* of) { return table.setStringValue(of, u"text", 3); },
         "0; tex; 107; 107; 107"},
        {[](const Table& table, void* of) { return table.setIntegerValue(of, -5); },
         "1; 107; -5; 107; 107"},
        {[](const Table& table, void* of) { return table.setBooleanValue(of, 7); },
         "2; 107; 107; 7; 107"},
        {[](const Table& table, void* of) { return table.setRealValue(of, 1.5); },
         "3; 107; 107; 107; 1.500000"},
        {[](const Table& table, void* of) { return table.setEmpty(of); },
         "4; ; -2147483648; 107; NaN"},
        {[](const Table& table, void* of) { return table.setStringValue(of, nullptr, 0); },
         "0; ; 107; 107; 107"},
    };
    for (const auto& [set, answers] : cases) {
        EXPECT_EQ(set(*value->table, me), RC_OK) << answers;
        EXPECT_EQ(answersOf(*value), answers);
    }
    value->table->setIntegerValue(me, 1);
    const char16_t* text = u"before";
    std::uint32_t length = 6;
    EXPECT_EQ(value->table->getStringValue(me, &text, &length), RC_NOT_AVAILABLE);
    EXPECT_TRUE(text == nullptr && length == 0);
}

TEST(StringObject, HoldsACopy) {
    const Owned<VaskStringObject> string(factory().createString());
    EXPECT_EQ(string->me, string.get());
    EXPECT_EQ(textOf(*string), u"");
    const auto set = [&](const char16_t* text, std::uint32_t length) {
        EXPECT_EQ(string->table->set(string->me, text, length), RC_OK);
        return textOf(*string);
    };
    EXPECT_EQ(set(u"longer than any text held inline", 32), u"longer than any text held inline");
    const char16_t* own = nullptr;
    std::uint32_t length = 0;
    string->table->get(string->me, &own, &length);
    EXPECT_EQ(set(own + 7, 8), u"than any"); // of its own storage
    EXPECT_EQ(set(nullptr, 0), u"");
}

template <class Element>
void checkScalars(VaskArrayObject* (*create)(void)) {
    const Owned<VaskArrayObject> array(create());
    EXPECT_EQ(array->me, array.get());
    void* elements = &elements;
    std::uint32_t count = 7;
    array->table->get(array->me, &elements, &count);
    EXPECT_EQ(elements, nullptr);
    EXPECT_EQ(count, 0u);
    for (const std::uint32_t size : {2u, 1000u, 1u, 3u}) {
        ASSERT_EQ(array->table->resize(array->me, size, &elements), RC_OK);
        auto* const numbers = static_cast<Element*>(elements);
        EXPECT_EQ(numbers[0], size == 2 ? Element{} : Element{42});
        for (std::uint32_t i = 1; i < size; ++i)
            ASSERT_EQ(numbers[i], Element{}) << i; // whatever stood there before the array shrank
        numbers[0] = Element{42};
        if (size == 1000)
            numbers[1] = Element{1};
        void* again = nullptr;
        array->table->get(array->me, &again, &count);
        EXPECT_EQ(again, elements);
        EXPECT_EQ(count, size);
        if (size == 1000)
            numbers[1] = Element{};
    }
}

TEST(ScalarArrayObjects, GrowByZerosAndKeepTheirFront) {
    checkScalars<double>(factory().createRealArray);
    checkScalars<std::int32_t>(factory().createIntegerArray);
    checkScalars<std::uint8_t>(factory().createByteArray);
    checkScalars<std::uint32_t>(factory().createBooleanArray);
    checkScalars<std::uint32_t>(factory().createEnumerationArray);
}

// The items of a string or value array after a resize; each must be an object in its own right.
template <class Item>
Item** resized(VaskArrayObject& array, std::uint32_t count) {
    void* elements = nullptr;
    EXPECT_EQ(array.table->resize(array.me, count, &elements), RC_OK);
    void* same = nullptr;
    std::uint32_t sameCount = 0;
    array.table->get(array.me, &same, &sameCount);
    EXPECT_EQ(same, elements);
    EXPECT_EQ(sameCount, count);
    auto** items = static_cast<Item**>(elements);
    for (std::uint32_t i = 0; i < count; ++i)
        EXPECT_EQ(items[i]->me, items[i]) << i;
    return items;
}

TEST(StringArrayObject, MovesItsStringsWhole) {
    const Owned<VaskArrayObject> array(factory().createStringArray());
    const Owned<VaskStringObject> alone(factory().createString());
    auto** items = resized<VaskStringObject>(*array, 1);
    EXPECT_EQ(items[0]->table, alone->table);
    items[0]->table->set(items[0]->me, u"front", 5);
    items = resized<VaskStringObject>(*array, 100);
    EXPECT_EQ(textOf(*items[0]), u"front");
    EXPECT_EQ(textOf(*items[99]), u"");
    EXPECT_EQ(items[99]->table, alone->table);
    VaskStringObject* const last = items[99];
    EXPECT_EQ(resized<VaskStringObject>(*array, 100)[99], last);
    last->table->set(last->me, u"back", 4);
    resized<VaskStringObject>(*array, 99);
    EXPECT_EQ(textOf(*resized<VaskStringObject>(*array, 100)[99]), u"");
    resized<VaskStringObject>(*array, 0);
}

TEST(ValueArrayObject, MovesItsValuesWhole) {
    const Owned<VaskArrayObject> array(factory().createValueArray());
    const Owned<VaskValueObject> alone(factory().createValue());
    auto** items = resized<VaskValueObject>(*array, 2);
    items[0]->table->setStringValue(items[0]->me, u"front", 5);
    items[1]->table->setIntegerValue(items[1]->me, 7);
    items = resized<VaskValueObject>(*array, 100);
    EXPECT_EQ(answersOf(*items[0]), "0; front; 107; 107; 107");
    EXPECT_EQ(answersOf(*items[1]), "1; 107; 7; 107; 107");
    EXPECT_EQ(answersOf(*items[99]), answersOf(*alone));
    EXPECT_EQ(items[99]->table, alone->table);
    resized<VaskValueObject>(*array, 0);
}

TEST(DataObjects, TakeANullMeInDestroy) {
    const VaskDataClassFactory& make = factory();
    Owned<VaskStringObject>(make.createString())->table->destroy(nullptr);
    Owned<VaskValueObject>(make.createValue())->table->destroy(nullptr);
    for (auto* create : {make.createRealArray, make.createIntegerArray, make.createByteArray,
                         make.createBooleanArray, make.createEnumerationArray,
                         make.createStringArray, make.createValueArray})
        Owned<VaskArrayObject>(create())->table->destroy(nullptr);
}

std::pair<void*, std::uint32_t> contentsOf(VaskArrayObject& array) {
    std::pair<void*, std::uint32_t> contents;
    array.table->get(array.me, &contents.first, &contents.second);
    return contents;
}

void expectFailingResize(VaskArrayObject& array, std::size_t largestAllocation) {
    void* elements = &elements;
    const ScarceMemory scarce(largestAllocation);
    EXPECT_EQ(array.table->resize(array.me, 100'000, &elements), RC_OUT_OF_MEMORY);
}

// With the test program's own copy of the library, whose memory is the program's.
TEST(DataObjects, AreAsTheyWereWhenMemoryRunsOut) {
    const VaskDataClassFactory& make = *vaskGetDataClassFactory();
    const std::u16string longText(1000, u'x');
    const Owned<VaskStringObject> string(make.createString());
    const Owned<VaskValueObject> value(make.createValue());
    string->table->set(string->me, u"before", 6);
    value->table->setIntegerValue(value->me, 5);
    {
        const ScarceMemory scarce(100);
        EXPECT_EQ(string->table->set(string->me, longText.data(), 1000), RC_OUT_OF_MEMORY);
        EXPECT_EQ(value->table->setStringValue(value->me, longText.data(), 1000), RC_OUT_OF_MEMORY);
    }
    EXPECT_EQ(textOf(*string), u"before");
    EXPECT_EQ(answersOf(*value), "1; 107; 5; 107; 107");

    for (auto* create : {make.createRealArray, make.createIntegerArray, make.createByteArray,
                         make.createBooleanArray, make.createEnumerationArray}) {
        const Owned<VaskArrayObject> array(create());
        void* before = nullptr;
        ASSERT_EQ(array->table->resize(array->me, 3, &before), RC_OK);
        *static_cast<std::uint8_t*>(before) = 42;
        expectFailingResize(*array, 10'000);
        const auto [elements, count] = contentsOf(*array);
        EXPECT_TRUE(elements == before && count == 3 && *static_cast<std::uint8_t*>(before) == 42);
    }
    // An array of objects fails at its references, or only behind them at the objects.
    for (const std::size_t most : {10'000u, 900'000u}) {
        const Owned<VaskArrayObject> strings(make.createStringArray());
        const Owned<VaskArrayObject> values(make.createValueArray());
        VaskStringObject* const text = resized<VaskStringObject>(*strings, 3)[0];
        VaskValueObject* const number = resized<VaskValueObject>(*values, 3)[0];
        text->table->set(text->me, u"before", 6);
        number->table->setIntegerValue(number->me, 5);
        expectFailingResize(*strings, most);
        expectFailingResize(*values, most);
        EXPECT_EQ(contentsOf(*strings).second, 3u);
        EXPECT_EQ(contentsOf(*values).second, 3u);
        EXPECT_EQ(*static_cast<VaskStringObject**>(contentsOf(*strings).first), text);
        EXPECT_EQ(*static_cast<VaskValueObject**>(contentsOf(*values).first), number);
        EXPECT_EQ(textOf(*text), u"before");
        EXPECT_EQ(answersOf(*number), "1; 107; 5; 107; 107");
    }
    const ScarceMemory scarce(0);
    EXPECT_EQ(make.createString(), nullptr);
    EXPECT_EQ(make.createValue(), nullptr);
    EXPECT_EQ(make.createValueArray(), nullptr);
}

} // namespace
