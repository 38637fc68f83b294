// The library's own reader, through its slots.
#include "tests/persistence/state_support.h"
#include "tests/support/scarce_memory.h"

#include <deque>

namespace {

using namespace tests;

class Named {
  public:
    Named(const char16_t* name) : string_(name) {}
    operator IVaskString*() { return string_.pair(); }

  private:
    tarvo::ConstantString string_;
};

// The code of a getter, and of the same with a null target.
template <class Target, class Slot>
std::pair<TarvoResult, TarvoResult> ask(IVaskPersistReader& reader, Slot slot, const char16_t* name,
                                        Target* target) {
    Named named(name);
    return {slot(reader.me, named, target), slot(reader.me, named, nullptr)};
}

TEST(Reader, ConvertsNothing) {
    const auto reader = decodedReader(richTree());
    const IVaskPersistReaderTable& table = *reader->table;
    double real = 0;
    std::int32_t integer = 0;
    std::uint32_t number = 0;
    tarvo::String text;
    tarvo::Value value;
    tarvo::ScalarArray<double> reals;
    tarvo::ScalarArray<std::int32_t> integers;
    tarvo::ScalarArray<std::uint32_t> numbers;
    tarvo::ScalarArray<std::uint8_t> bytes;
    tarvo::StringArray strings;
    tarvo::ValueArray values;
    const std::vector<const char16_t*> names = {
        u"real", u"int",   u"bool",    u"string", u"enum",   u"value", u"reals",
        u"ints", u"bools", u"strings", u"enums",  u"values", u"bytes", u"missing"};
    for (std::size_t i = 0; i < names.size(); ++i) {
        const auto expect = [&](std::size_t kind, std::pair<TarvoResult, TarvoResult> results) {
            const TarvoResult expected = i == 13     ? RC_NOT_AVAILABLE
                                         : i == kind ? RC_OK
                                                     : RC_BAD_DATA;
            EXPECT_EQ(results.first, expected) << narrow(names[i]) << " as " << kind;
            EXPECT_EQ(results.second, RC_NULL_POINTER);
        };
        const char16_t* const name = names[i];
        expect(i, ask(*reader, table.GetValueType, name, &number));
        EXPECT_TRUE(i == 13 || number == i) << number;
        expect(0, ask(*reader, table.GetReal, name, &real));
        expect(1, ask(*reader, table.GetInteger, name, &integer));
        expect(2, ask(*reader, table.GetBoolean, name, &number));
        expect(3, ask(*reader, table.GetString, name, text.pair()));
        expect(4, ask(*reader, table.GetEnumeration, name, &number));
        expect(5, ask(*reader, table.GetValue, name, value.pair()));
        expect(6, ask(*reader, table.GetArrayReal, name, reals.pair()));
        expect(7, ask(*reader, table.GetArrayInteger, name, integers.pair()));
        expect(8, ask(*reader, table.GetArrayBoolean, name, numbers.pair()));
        expect(9, ask(*reader, table.GetArrayString, name, strings.pair()));
        expect(10, ask(*reader, table.GetArrayEnumeration, name, numbers.pair()));
        expect(11, ask(*reader, table.GetArrayValue, name, values.pair()));
        expect(12, ask(*reader, table.GetArrayByte, name, bytes.pair()));
    }
    IVaskPersistReader* const before = reader.get();
    IVaskPersistReader* node = before;
    EXPECT_EQ(ask(*reader, table.GetNode, u"reals", &node),
              std::pair(TarvoResult{RC_NOT_AVAILABLE}, TarvoResult{RC_NULL_POINTER}));
    EXPECT_EQ(node, before);
    EXPECT_EQ(table.ValueNames(reader->me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.NodeNames(reader->me, nullptr), RC_NULL_POINTER);
    // A null name is the empty one.
    tarvo::Reference<IVaskPersistReader> unnamed;
    EXPECT_EQ(table.GetNode(reader->me, nullptr, unnamed.out()), RC_OK);
    EXPECT_EQ(shown(unnamed.get()), "{deep={=real[] []}}");
    EXPECT_EQ(table.GetValueType(reader->me, nullptr, &number), RC_NOT_AVAILABLE);
}

TEST(Reader, IsFoundByItsIdentifiersAndCountsOnce) {
    auto reader = decodedReader(richTree());
    auto* const base = reinterpret_cast<IVaskInterface*>(reader.get());
    for (const TarvoUUID& from : {kIVaskInterfaceId, kIVaskPersistReaderId, kIVaskIdentificationId})
        for (const TarvoUUID& to :
             {kIVaskInterfaceId, kIVaskPersistReaderId, kIVaskIdentificationId}) {
            Reference<IVaskInterface> first;
            Reference<IVaskInterface> second;
            EXPECT_EQ(base->table->queryInterface(base->me, &from, first.out()), RC_OK);
            EXPECT_EQ(first->table->queryInterface(first->me, &to, second.out()), RC_OK);
            EXPECT_EQ(first->me, base->me);
            EXPECT_EQ(second->me, base->me);
        }
    IVaskInterface* found = base;
    EXPECT_EQ(base->table->queryInterface(base->me, &kIVaskPersistId, &found), RC_NO_INTERFACE);
    EXPECT_EQ(found, nullptr);
    found = base;
    EXPECT_EQ(base->table->queryInterface(base->me, nullptr, &found), RC_NULL_POINTER);
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(base->table->queryInterface(base->me, &kIVaskPersistReaderId, nullptr),
              RC_NULL_POINTER);

    // A child lives on without its parent, and bears its own name.
    Named name(u"real");
    Reference<IVaskPersistReader> child;
    Reference<IVaskPersistReader> again;
    ASSERT_EQ(reader->table->GetNode(reader->me, name, child.out()), RC_OK);
    ASSERT_EQ(reader->table->GetNode(reader->me, name, again.out()), RC_OK);
    EXPECT_NE(child->me, again->me);
    reader = nullptr;
    EXPECT_EQ(shown(child.get()), "{x=int 1}");
    Reference<IVaskIdentification> identification;
    ASSERT_EQ(
        child->table->queryInterface(child->me, &kIVaskIdentificationId,
                                     reinterpret_cast<IVaskInterface**>(identification.out())),
        RC_OK);
    const IVaskIdentificationTable& table = *identification->table;
    tarvo::String text;
    EXPECT_EQ(table.getComponentName(child->me, text.pair()), RC_OK);
    EXPECT_EQ(text.text(), u"real");
    EXPECT_EQ(table.getComponentDescription(child->me, text.pair()), RC_OK);
    EXPECT_EQ(text.text(), u"Persistence reader node \"real\"");
    EXPECT_EQ(table.getComponentName(child->me, name), RC_READ_ONLY);
    EXPECT_EQ(table.getComponentDescription(child->me, name), RC_READ_ONLY);
    EXPECT_EQ(table.getComponentName(child->me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.getComponentDescription(child->me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.setComponentName(child->me, nullptr), RC_READ_ONLY);
    EXPECT_EQ(table.setComponentDescription(child->me, nullptr), RC_READ_ONLY);
}

// A target that notes its calls, and gives this code or these items.
struct Target {
    IVaskArray array{this, &kArrayTable};
    IVaskString string{this, &kStringTable};
    std::string calls;
    TarvoResult resizeResult = RC_OK;
    TarvoResult setResult = RC_OK;
    std::vector<IVaskString*> items;

    static const IVaskArrayTable kArrayTable;
    static const IVaskStringTable kStringTable;
};

constinit const IVaskArrayTable Target::kArrayTable = {
    .get =
        [](void* me, void** elements, std::uint32_t* count) {
            static_cast<Target*>(me)->calls += "get ";
            *elements = nullptr;
            *count = 0;
        },
    .resize = [](void* me, std::uint32_t count, void** elements) -> TarvoResult {
        auto& self = *static_cast<Target*>(me);
        self.calls += "resize " + std::to_string(count) + " ";
        *elements = self.items.empty() ? nullptr : self.items.data();
        return self.resizeResult;
    },
};

constinit const IVaskStringTable Target::kStringTable = {
    .get = nullptr,
    .set = [](void* me, const char16_t* text, std::uint32_t length) -> TarvoResult {
        auto& self = *static_cast<Target*>(me);
        self.calls += "set " + narrow({text, length}) + " ";
        return self.setResult;
    },
};

struct ErrorTexts {
    std::string text, source, scope;
};

// The last error of a reader; a second call must find none.
ErrorTexts takeError(IVaskPersistReader& reader) {
    Reference<IVaskError> error;
    EXPECT_EQ(reader.table->getLastError(reader.me, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(reader.table->getLastError(reader.me, error.out()), RC_OK);
    if (!error)
        return {};
    tarvo::String text;
    tarvo::String source;
    tarvo::String scope;
    Reference<IVaskError> cause;
    EXPECT_EQ(error->table->getErrorText(error->me, text.pair()), RC_OK);
    EXPECT_EQ(error->table->getSource(error->me, source.pair()), RC_OK);
    EXPECT_EQ(error->table->getScope(error->me, scope.pair()), RC_OK);
    EXPECT_EQ(error->table->getCause(error->me, cause.out()), RC_OK);
    EXPECT_FALSE(cause);
    IVaskError* none = error.get();
    EXPECT_EQ(reader.table->getLastError(reader.me, &none), RC_NOT_AVAILABLE);
    EXPECT_EQ(none, error.get());
    return {narrow(text.text()), narrow(source.text()), narrow(scope.text())};
}

TEST(Reader, GivesTheCodeOfItsTargetAndKeepsTheDetail) {
    auto tree = std::make_shared<StateTree>();
    tree->values = {{u"strings", std::vector<std::u16string>{u"one", u"two"}},
                    {u"string", u"text"},
                    {u"reals", std::vector<double>{1}},
                    {u"none", std::vector<std::u16string>()}};
    tree->addNode(u"a");
    tree->addNode(u"b");
    const auto reader = decodedReader(tree);
    const IVaskPersistReaderTable& table = *reader->table;
    Named strings(u"strings");
    Named string(u"string");
    Named none(u"none");
    Named reals(u"reals");
    IVaskError* error = nullptr;
    EXPECT_EQ(table.getLastError(reader->me, &error), RC_NOT_AVAILABLE);
    tarvo::StringArray nodes; // in an order of the reader's own
    ASSERT_EQ(table.NodeNames(reader->me, nodes.pair()), RC_OK);
    ASSERT_EQ(nodes.strings().size(), 2u);
    const std::string setFirst = "set " + narrow(nodes.strings()[0].text()) + " ";
    const std::string setSecond = "set " + narrow(nodes.strings()[1].text()) + " ";

    const struct {
        const char* scope;
        std::function<TarvoResult(Target&)> call;
        std::string calls;
        std::string callsOfFailure; // nothing is asked of a target that has refused a text
    } cases[] = {
        {"GetString", [&](Target& to) { return table.GetString(reader->me, string, &to.string); },
         "set text ", "set text "},
        {"GetArrayString",
         [&](Target& to) { return table.GetArrayString(reader->me, strings, &to.array); },
         "resize 2 set one set two ", "resize 2 set one "},
        {"NodeNames", [&](Target& to) { return table.NodeNames(reader->me, &to.array); },
         "get resize 2 " + setFirst + setSecond, "get resize 2 " + setFirst},
    };
    for (const auto& [scope, call, calls, callsOfFailure] : cases)
        for (const TarvoResult code : {0u, 55u, 1u}) {
            Target target;
            target.setResult = code;
            target.items = {&target.string, &target.string};
            EXPECT_EQ(call(target), code) << scope;
            EXPECT_EQ(target.calls, code == 0 ? calls : callsOfFailure) << scope;
            if (code == 1) {
                const ErrorTexts told = takeError(*reader);
                EXPECT_FALSE(told.text.empty());
                EXPECT_EQ(told.source, "Persistence reader node \"\"");
                EXPECT_EQ(told.scope, std::string("IVaskPersistReader::") + scope);
            }
        }

    Target target;
    EXPECT_EQ(table.GetArrayString(reader->me, none, &target.array), RC_OK);
    EXPECT_EQ(target.calls, "resize 0 ");
    EXPECT_EQ(table.GetArrayString(reader->me, strings, &target.array), RC_NULL_POINTER);
    EXPECT_EQ(table.GetArrayReal(reader->me, reals, &target.array), RC_NULL_POINTER);
    target.items = {&target.string, nullptr};
    EXPECT_EQ(table.GetArrayString(reader->me, strings, &target.array), RC_NULL_POINTER);
    target.resizeResult = 1;
    EXPECT_EQ(table.GetArrayReal(reader->me, reals, &target.array), RC_SEE_LAST_ERROR);
    EXPECT_EQ(takeError(*reader).scope, "IVaskPersistReader::GetArrayReal");
    // A failure with a code of its own leaves no error behind.
    EXPECT_EQ(table.GetReal(reader->me, strings, nullptr), RC_NULL_POINTER);
    EXPECT_EQ(table.getLastError(reader->me, &error), RC_NOT_AVAILABLE);
}

TEST(VaskValueImpl, IsEmptyWhenMemoryRunsOut) {
    TARVO::VaskValueImpl value;
    const std::u16string longText(1000, u'x');
    value.setInteger(5);
    EXPECT_EQ(value.requireInteger(), 5);
    {
        const ScarceMemory scarce(100);
        EXPECT_EQ(value.pair()->table->setStringValue(value.pair()->me, longText.data(), 1000),
                  RC_OUT_OF_MEMORY);
    }
    EXPECT_EQ(value.type(), TARVO_VALUE_EMPTY);
    EXPECT_EQ(value.requireInteger(), INT32_MIN);
    value.setReal(1);
    EXPECT_THROW(value.requireInteger(), TARVO::VaskValueImpl::InvalidVaskValueTypeException);
}

} // namespace
