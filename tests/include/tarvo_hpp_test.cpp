// The C++ layer for callers: who owns what, and where texts and elements lie.
#include <tarvo/tarvo.hpp>

#include <cstdint>
#include <gtest/gtest.h>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <vector>

namespace {

struct Counted {
    IVaskInterface pair{this, &kTable};
    int references = 0;

    static constexpr IVaskInterfaceTable kTable = {
        .addReference = [](void* me) { ++static_cast<Counted*>(me)->references; },
        .release = [](void* me) { --static_cast<Counted*>(me)->references; },
        .queryInterface = nullptr,
        .getLastError = nullptr,
    };
};

TEST(TarvoReference, HoldsOneReferenceForEachHolder) {
    Counted first;
    Counted second;
    {
        auto shared = tarvo::Reference<IVaskInterface>::share(&first.pair);
        auto copy = shared;
        EXPECT_EQ(first.references, 2);
        const auto moved = std::move(copy);
        EXPECT_FALSE(copy);
        EXPECT_EQ(first.references, 2);
        shared = moved;
        shared = std::move(shared); // to itself
        EXPECT_EQ(first.references, 2);
        shared = tarvo::Reference<IVaskInterface>::adopt(&second.pair);
        EXPECT_EQ(first.references, 1);
        EXPECT_EQ(second.references, 0);
        EXPECT_EQ(shared.detach(), &second.pair);
        *shared.out() = &second.pair; // as a callee would
        second.references = 1;
        EXPECT_EQ(*shared.out(), nullptr);
        EXPECT_EQ(second.references, 0);
    }
    EXPECT_EQ(first.references, 0);
}

// A string in a container keeps its pair on itself, wherever it is moved.
TEST(TarvoString, StaysBehindItsPair) {
    tarvo::StringArray array;
    void* elements = nullptr;
    IVaskArray& pair = *array.pair();
    EXPECT_EQ(pair.table->resize(pair.me, 1, &elements), RC_OK);
    tarvo::setText(static_cast<IVaskString**>(elements)[0], u"front");
    EXPECT_EQ(pair.table->resize(pair.me, 1000, &elements), RC_OK);
    auto** items = static_cast<IVaskString**>(elements);
    for (std::size_t i = 0; i < 1000; ++i) {
        EXPECT_EQ(items[i]->me, items[i]);
        EXPECT_EQ(tarvo::viewOf(items[i]), i == 0 ? u"front" : u"");
        const char16_t* text = nullptr;
        std::uint32_t length = 7;
        items[i]->table->get(items[i]->me, &text, &length);
        EXPECT_EQ(text[length], u'\0');
    }
    std::uint32_t count = 0;
    EXPECT_EQ(pair.table->resize(pair.me, 0, &elements), RC_OK);
    pair.table->get(pair.me, &elements, &count);
    EXPECT_EQ(count, 0u);
    EXPECT_TRUE(array.strings().empty());
}

TEST(TarvoString, CopiesWhatItIsGivenAndRefusesWhatItCantStore) {
    std::u16string elsewhere = u"before";
    tarvo::StringWrapper wrapper(elsewhere);
    EXPECT_EQ(tarvo::setText(wrapper.pair(), u"a\0b"), RC_OK);
    EXPECT_EQ(wrapper.pair()->table->set(wrapper.pair()->me, u"a\0b", 3), RC_OK);
    EXPECT_EQ(elsewhere, std::u16string_view(u"a\0b", 3));
    EXPECT_EQ(wrapper.pair()->table->set(wrapper.pair()->me, nullptr, 0), RC_OK);
    EXPECT_EQ(elsewhere, u"");

    tarvo::ConstantString constant(u"fixed");
    EXPECT_EQ(tarvo::setText(constant.pair(), u"other"), RC_READ_ONLY);
    EXPECT_EQ(tarvo::viewOf(constant.pair()), u"fixed");

    tarvo::ScalarArray<double> reals;
    void* elements = nullptr;
    EXPECT_EQ(reals.pair()->table->resize(reals.pair()->me, 2, &elements), RC_OK);
    static_cast<double*>(elements)[1] = 1.5;
    EXPECT_EQ(reals.elements(), (std::vector<double>{0, 1.5}));
}

TEST(TarvoUUID, IsReadPrintedAndOrdered) {
    constexpr auto id = tarvo::UUID::parse(u"{3B78CDEB-7fe8-4542-b58b-26205774d82a}");
    static_assert(id && id->bytes[0] == 0x3b && id->bytes[15] == 0x2a);
    EXPECT_EQ(id->string(), u"{3b78cdeb-7fe8-4542-b58b-26205774d82a}");
    EXPECT_FALSE(tarvo::UUID::parse(u"{3b78cdeb-7fe8-4542-b58b-26205774d82a"));
    EXPECT_FALSE(tarvo::UUID::parse(u"{3b78cdeb-7fe8-4542-b58b-26205774d82g}"));
    EXPECT_FALSE(tarvo::UUID::parse(u"{3b78cdeb07fe8-4542-b58b-26205774d82a}"));
    EXPECT_TRUE(tarvo::UUID().isNil());
    EXPECT_LT(tarvo::UUID(), *id);
    EXPECT_EQ(*id, tarvo::UUID(static_cast<const TarvoUUID&>(*id)));
    EXPECT_EQ(std::unordered_set<tarvo::UUID>({*id, *id, tarvo::UUID()}).size(), 2u);
}

TEST(TarvoResult, IsAnErrorCodeWithANameAndAText) {
    EXPECT_FALSE(tarvo::errorOf(RC_OK));
    EXPECT_EQ(tarvo::errorOf(RC_NOT_FOUND).message(), "RC_NOT_FOUND (500)");
    EXPECT_EQ(tarvo::errorOf(0xFFFFFFFF).message(), "unknown result code (4294967295)");
    EXPECT_EQ(tarvo::textOfResult(
                  RC_NOT_FOUND,
                  *+[](std::uint32_t code, IVaskString* text) -> TarvoResult {
                      return tarvo::setText(text, code == 500 ? u"gone" : u"");
                  }),
              u"gone");
    EXPECT_THROW(tarvo::textOfResult(
                     RC_NOT_FOUND,
                     *+[](std::uint32_t, IVaskString*) -> TarvoResult { return RC_READ_ONLY; }),
                 std::system_error);
}

} // namespace
