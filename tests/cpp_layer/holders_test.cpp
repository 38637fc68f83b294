// The C++ layer for callers: who owns what, and where texts and elements lie.
#include "tests/support/rich_values.h"

#include <tarvo/tarvo.hpp>

#include <concepts>
#include <cstdint>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <system_error>
#include <type_traits>
#include <unordered_set>
#include <utility>
#include <variant>
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

// A reader of state on a tree of one's own: what one offers, the other gets.
TEST(TarvoState, IsReadAsItIsOffered) {
    auto tree = std::make_shared<tarvo::StateTree>();
    tree->values = tests::richValues();
    tree->addNode(u"a").values[u"n"] = 1;
    tree->addNode(u"b").values[u"n"] = 2;
    const tarvo::StateReader state(tarvo::offerState(tree));
    EXPECT_EQ(state.real(u"real"), -1.5);
    EXPECT_EQ(state.integer(u"int"), -5);
    EXPECT_TRUE(state.boolean(u"bool"));
    EXPECT_EQ(state.string(u"string"), u"text");
    EXPECT_EQ(state.enumeration(u"enum"), tarvo::Enumeration{9});
    EXPECT_EQ(state.value(u"value").text(), u"inner");
    EXPECT_EQ(state.values(std::u16string(u"values")).at(2).type(), TARVO_VALUE_EMPTY);
    std::size_t count = 0;
    for (const auto& [name, value] : state.eachValue()) {
        const tarvo::StateValue& offered = tree->values.at(name);
        EXPECT_EQ(value.index(), offered.index());
        EXPECT_EQ(state.kind(name), tarvo::kindOf(offered));
        std::visit(
            [&other = offered](const auto& held) {
                using Held = std::decay_t<decltype(held)>;
                if constexpr (std::equality_comparable<Held> &&
                              !std::is_same_v<Held, std::vector<tarvo::Value>>) {
                    EXPECT_EQ(held, std::get<Held>(other));
                }
            },
            value);
        ++count;
    }
    EXPECT_EQ(count, 13u);
    int sum = 0;
    for (const auto& [name, node] : state.eachNode())
        sum += node.integer(u"n") * (name == u"b" ? 10 : 1);
    EXPECT_EQ(sum, 21);

    EXPECT_EQ(state.kind(u"missing"), std::nullopt);
    const auto codeOf = [](const auto& call) {
        try {
            call();
        } catch (const std::system_error& error) {
            return error.code();
        }
        return std::error_code();
    };
    EXPECT_EQ(codeOf([&] { state.real(u"missing"); }), tarvo::errorOf(RC_NOT_AVAILABLE));
    EXPECT_EQ(codeOf([&] { state.real(u"int"); }), tarvo::errorOf(RC_BAD_DATA));
    EXPECT_EQ(codeOf([&] { state.node(u"real"); }), tarvo::errorOf(RC_NOT_AVAILABLE));
    EXPECT_EQ(codeOf([&] { state.any(u"missing"); }), tarvo::errorOf(RC_NOT_AVAILABLE));
}

// What a source raises becomes a code.
TEST(TarvoState, SourcesRaiseCodes) {
    class Failing final : public tarvo::StateSource {
        std::vector<std::u16string> valueNames() override { throw 1; }
        std::vector<std::u16string> nodeNames() override {
            throw std::system_error(tarvo::errorOf(55), "");
        }
        const tarvo::StateValue* findValue(std::u16string_view) override { throw std::bad_alloc(); }
        tarvo::Reference<IVaskPersistReader> openNode(std::u16string_view) override {
            return nullptr;
        }
    };
    const auto source = tarvo::Reference<tarvo::StateSource>::share(new Failing);
    IVaskPersistReader& reader = *source->pair();
    tarvo::StringArray names;
    double real = 0;
    IVaskPersistReader* node = nullptr;
    EXPECT_EQ(reader.table->ValueNames(reader.me, names.pair()), RC_UNSPECIFIED);
    EXPECT_EQ(reader.table->NodeNames(reader.me, names.pair()), 55u);
    EXPECT_EQ(reader.table->GetReal(reader.me, nullptr, &real), RC_OUT_OF_MEMORY);
    EXPECT_EQ(reader.table->GetReal(reader.me, nullptr, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(reader.table->GetNode(reader.me, nullptr, &node), RC_NOT_AVAILABLE);
}

} // namespace
