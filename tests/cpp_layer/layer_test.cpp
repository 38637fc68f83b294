// The C++ layer over a library that is really installed: what its classes give, what they raise and
// that an error tells all that there is to know.
#include "tests/cpp_layer/installation.h"

#include <algorithm>
#include <functional>

namespace {

using namespace tests;
using tarvo::Location;

TarvoResult resultOf(const std::function<void()>& attempt) {
    try {
        attempt();
        return RC_OK;
    } catch (const tarvo::Error& error) {
        return error.result();
    }
}

// An error that tells its texts or none, and of whose chain it is the last or that leads to itself.
struct ChainedError {
    IVaskError pair{this, &kTable};
    IVaskError* cause = nullptr;
    bool isMute = false;
    TarvoResult causeResult = RC_OK;
    int references = 1;

    static TarvoResult tell(void* me, IVaskString* text, const char16_t* told) {
        return static_cast<ChainedError*>(me)->isMute ? TarvoResult{RC_SEE_LAST_ERROR}
                                                      : tarvo::setText(text, told);
    }
    static TarvoResult getText(void* me, IVaskString* text) { return tell(me, text, u"too\nloud"); }
    static TarvoResult getSource(void* me, IVaskString* text) { return tell(me, text, u"horn"); }
    static TarvoResult getScope(void* me, IVaskString* text) { return tell(me, text, u"play"); }
    static TarvoResult getCause(void* me, IVaskError** cause) {
        const auto& self = *static_cast<ChainedError*>(me);
        *cause = self.cause;
        if (*cause != nullptr && self.causeResult == RC_OK)
            (*cause)->table->addReference((*cause)->me);
        return self.causeResult;
    }
    static void addReference(void* me) { ++static_cast<ChainedError*>(me)->references; }
    static void release(void* me) { --static_cast<ChainedError*>(me)->references; }

    static const IVaskErrorTable kTable;
};
constinit const IVaskErrorTable ChainedError::kTable = {
    .addReference = &ChainedError::addReference,
    .release = &ChainedError::release,
    .getErrorText = &ChainedError::getText,
    .getCause = &ChainedError::getCause,
    .getSource = &ChainedError::getSource,
    .getScope = &ChainedError::getScope,
};

// An object whose last error is the one given.
struct Failing {
    struct Table {
        TarvoResult (*getLastError)(void*, IVaskError**);
    };
    ChainedError* me;
    const Table* table = &kTable;

    static TarvoResult getLastError(void* me, IVaskError** error) {
        auto* const last = static_cast<ChainedError*>(me);
        last->addReference(last);
        *error = &last->pair;
        return RC_OK;
    }
    static constexpr Table kTable{&Failing::getLastError};
};

TEST(CppLayer, AnErrorHoldsTheWholeChainAndNoReference) {
    ChainedError began{.isMute = true};
    ChainedError error{.cause = &began.pair};
    Failing object{&error};
    try {
        tarvo::require(RC_SEE_LAST_ERROR, "play", object);
        FAIL();
    } catch (const tarvo::Error& caught) {
        EXPECT_EQ(caught.code(), tarvo::errorOf(RC_SEE_LAST_ERROR));
        EXPECT_STREQ(caught.what(),
                     "play: too loud (horn, play): not known (not known, not known): "
                     "RC_SEE_LAST_ERROR (1)");
        ASSERT_EQ(caught.causes().size(), 2u);
        EXPECT_EQ(caught.causes()[0].source, u"horn");
    }
    began.cause = &error.pair; // in a circle
    EXPECT_EQ(tarvo::lastErrorOf(object).size(), 100u);
    error.causeResult = RC_UNSPECIFIED; // and what it left isn't ours
    EXPECT_EQ(tarvo::lastErrorOf(object).size(), 1u);
    EXPECT_EQ(error.references, 1);
    EXPECT_EQ(began.references, 1);

    // With any other code the object isn't asked.
    EXPECT_EQ(resultOf([&] { tarvo::require(RC_BAD_DATA, "play", object); }), RC_BAD_DATA);
    EXPECT_NO_THROW(tarvo::require(RC_OK, "play", object));
}

// A creation that fails may have left anything, and one that succeeds nothing.
TEST(CppLayer, ACreationGivesAnObjectOrAnError) {
    IVaskPMCRegistrationDetailsTable table{};
    table.addReference = [](void*) {
    };
    table.release = [](void*) {
    };
    table.createInstance = [](void* me, std::uint32_t flags, IVaskInterface** instance) {
        *instance = flags == 0 ? nullptr : static_cast<IVaskInterface*>(me);
        return flags;
    };
    int noPair = 0;
    IVaskPMCRegistrationDetails pair{&noPair, &table};
    const tarvo::ComponentDetails details(
        tarvo::Reference<IVaskPMCRegistrationDetails>::share(&pair));
    EXPECT_EQ(resultOf([&] { details.create(RC_OK); }), RC_CANNOT_CREATE);
    EXPECT_EQ(resultOf([&] { details.create(RC_BAD_DATA); }), RC_BAD_DATA);
}

TEST(CppLayer, ConvertsTextsBothWays) {
    const struct {
        std::u16string text;
        std::string bytes;
    } same[] = {{u"", ""},
                {u"Ada", "Ada"},
                {u"\x7F\x80\u07FF\u0800\uFFFD", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD"},
                {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"}};
    for (const auto& [text, bytes] : same) {
        EXPECT_EQ(tarvo::toUtf8(text), bytes);
        EXPECT_EQ(tarvo::toUtf16(bytes), text);
    }
    const char16_t halves[] = {u'a', 0xD800, u'b', 0xDC00, 0xD800};
    EXPECT_EQ(tarvo::toUtf8({halves, 5}), "a\xEF\xBF\xBD"
                                          "b\xEF\xBF\xBD\xEF\xBF\xBD");
    for (const char* bad : {"\x80", "\xC1", "\xE0\xA0", "\xED\xA0\x80", "\xF5", "\xC3("})
        EXPECT_EQ(tarvo::toUtf16(bad).front(), u'\uFFFD') << bad;
    EXPECT_EQ(tarvo::toUtf16("\xC3("), u"\uFFFD(");
}

class Installed : public InstalledLibrary {
  protected:
    const tarvo::Scope scope = trustedScope();
};

TEST_F(Installed, ReadsWhatItWrites) {
    const tarvo::UUID id(kIGreeterId);
    const tarvo::RegistryWriter writer(scope);
    const auto key = writer.key(u"/layer/own");
    key.setString(u"Text", u"one");
    key.setInteger(u"number", -7);
    key.setUuid(u"id", id);
    key.setEmpty(u"flag");
    key.create(u"below/deep").setString(u"text", u"two");
    EXPECT_EQ(key.string(u"text"), u"one") << "a writer sees its own changes";
    EXPECT_FALSE(tarvo::RegistryKey::find(u"/layer")) << "others don't see them";
    writer.commit();

    const auto read = tarvo::RegistryKey::open(u"/layer").key(u"own");
    EXPECT_EQ(read.string(u"text"), u"one");
    EXPECT_EQ(read.string(u"text", u"below/deep"), u"two");
    EXPECT_EQ(read.integer(u"number"), -7);
    EXPECT_EQ(read.uuid(u"id"), id);
    EXPECT_EQ(read.type(u"flag"), tarvo::ValueType::empty);
    EXPECT_EQ(read.valueNames().size(), 4u);
    EXPECT_EQ(read.keyNames(), std::vector<std::u16string>{u"below"});
    EXPECT_EQ(read.isAllUsers(u"text"), scope == tarvo::Scope::allUsers);

    EXPECT_FALSE(read.findString(u"missing"));
    EXPECT_FALSE(read.findInteger(u"number", u"missing"));
    EXPECT_FALSE(read.type(u"missing"));
    EXPECT_FALSE(read.findKey(u"missing"));
    EXPECT_EQ(resultOf([&] { read.string(u"missing"); }), RC_NOT_FOUND);
    EXPECT_EQ(resultOf([&] { read.key(u"missing"); }), RC_NOT_FOUND);
    EXPECT_EQ(resultOf([&] { read.findInteger(u"text"); }), RC_WRONG_VALUE_TYPE);
    EXPECT_EQ(resultOf([&] { key.setEmpty(u"a/b"); }), RC_INVALID_KEY_NAME);
    EXPECT_EQ(resultOf([] { tarvo::RegistryKey::open(u"no separator"); }), RC_NOT_FOUND);

    key.deleteValue(u"text", u"below/deep");
    key.deleteValue(u"flag");
    writer.deleteValue(u"/layer/own", u"id");
    writer.commit();
    EXPECT_EQ(tarvo::RegistryKey::open(u"/layer/own").valueNames().size(), 2u);
    EXPECT_FALSE(tarvo::RegistryKey::open(u"/layer/own/below/deep").type(u"text"));
    writer.deleteKey(u"/layer");
    writer.revert();
    writer.commit();
    EXPECT_TRUE(tarvo::RegistryKey::find(u"/layer"));
    writer.deleteKey(u"/layer");
    writer.commit();
    EXPECT_FALSE(tarvo::RegistryKey::find(u"/layer"));
}

TEST_F(Installed, FindsCreatesAndLoadsWhatItRegistered) {
    const tarvo::Catalogue catalogue;
    const auto greeter = catalogue.find(u"example.greeter");
    ASSERT_TRUE(greeter);
    EXPECT_EQ(greeter->uuid(), tarvo::UUID(kGreeterComponentId));
    EXPECT_EQ(greeter->name(), u"Greeter");
    EXPECT_EQ(greeter->description(), u"Greets");
    EXPECT_EQ(greeter->about(), u"");
    EXPECT_EQ(greeter->categories(), std::vector{tarvo::UUID(kIGreeterId).string()});
    EXPECT_TRUE(greeter->isInCategory(kIGreeterId));
    EXPECT_EQ(greeter->locations(), std::vector{Location::inproc64});
    EXPECT_EQ(greeter->location(Location::inproc64), wide(TARVO_TEST_GREETER));
    EXPECT_EQ(greeter->isAllUsers(Location::inproc64), scope == tarvo::Scope::allUsers);
    EXPECT_EQ(resultOf([&] { greeter->location(Location::remote); }), RC_NOT_FOUND);
    EXPECT_EQ(resultOf([&] { greeter->create(2); }), RC_INVALID_ARGUMENT);

    const TarvoUUID categories[] = {kIGreeterId};
    EXPECT_EQ(catalogue.inCategories(categories)[0].name(), u"Greeter");
    EXPECT_EQ(catalogue.inCategories({}).size(), 0u);
    static_assert(std::ranges::input_range<tarvo::Collection<tarvo::ComponentDetails>>);
    EXPECT_EQ(std::ranges::count(catalogue.inCategories(categories), greeter->uuid(),
                                 &tarvo::ComponentDetails::uuid),
              1);
    EXPECT_EQ(resultOf([&] { catalogue.inCategories(categories)[1]; }), RC_NOT_AVAILABLE);
    EXPECT_FALSE(catalogue.find(tarvo::UUID(kIGreeterId)));

    const auto instance = greeter->create();
    const auto greet = [&] {
        const auto greeting = tarvo::requireInterface<IGreeter>(instance.get(), kIGreeterId);
        tarvo::String text;
        tarvo::require(greeting->table->greet(greeting->me, u"Ada", text.pair()), "greet",
                       *greeting);
        return text.text();
    };
    EXPECT_EQ(greet(), u"Hello, Ada!");
    tarvo::loadState(instance.get(), savedState({{u"greeting", u"Good day"}}));
    EXPECT_EQ(greet(), u"Good day, Ada!");
    EXPECT_EQ(resultOf([&] { tarvo::loadState(instance.get(), savedState({})); }),
              RC_NOT_AVAILABLE);
    EXPECT_EQ(greet(), u"Good day, Ada!");
    EXPECT_EQ(resultOf([&] { tarvo::create<IGreeter>(kGreeterComponentId, kGreeterComponentId); }),
              RC_NO_INTERFACE);
    EXPECT_EQ(resultOf([&] { tarvo::createInstance(tarvo::UUID(kIGreeterId)); }), RC_NOT_FOUND);

    tarvo::UUID clock = kGreeterComponentId;
    clock.bytes[0] = 0;
    const auto change = [&](const std::function<void(const tarvo::RegistryWriter&)>& record) {
        const tarvo::RegistryWriter writer(scope);
        record(writer);
        writer.commit();
        const auto found = tarvo::Catalogue().find(clock);
        return found ? found->locations().size() : 0;
    };
    const auto add = [&](const tarvo::RegistryWriter& writer) {
        const auto registrar = registerGreeter(writer, clock, u"Example.Other");
        registrar.setLocation(Location::local, u"clocks");
        registrar.commit();
    };
    EXPECT_EQ(change(add), 2u);
    EXPECT_EQ(
        change([&](const auto& writer) { writer.unregisterLocation(clock, Location::local); }), 1u);
    EXPECT_EQ(change([&](const auto& writer) { writer.unregisterComponent(clock); }), 0u);
    EXPECT_EQ(resultOf([&] { tarvo::RegistryWriter(scope).createRegistrar().commit(); }),
              RC_INCOMPLETE_REGISTRATION);
}

// A registration made by hand, without what is required, doesn't end a listing.
TEST_F(Installed, ReadsTextsThatAreMissingAsEmpty) {
    const std::u16string key = u"/Components/PMCs/" + tarvo::UUID(kIGreeterId).string();
    const tarvo::RegistryWriter writer(scope);
    writer.key(key).setString(u"Inproc64", u"/opt/nameless.dll");
    writer.commit();
    const auto nameless = tarvo::Catalogue().find(tarvo::UUID(kIGreeterId));
    ASSERT_TRUE(nameless);
    EXPECT_EQ(nameless->name(), u"");
    EXPECT_EQ(nameless->vaskVersion(), u"");
    writer.deleteKey(key);
    writer.commit();
}

// State as COM left it, brought into the form that a component gets.
TEST_F(Installed, TurnsMarkedStateIntoTheTransitionForm) {
    const auto marked = std::make_shared<tarvo::StateTree>();
    marked->addNode(u"TARVO").values[u"comType"] = u"Stream";
    marked->values[u"data"] = std::vector<std::uint8_t>{1, 2};
    const tarvo::StateReader state(tarvo::transitionFormatOf(tarvo::offerState(marked).get()));
    EXPECT_EQ(state.string(u"TransitionFormat"), u"Stream");
    EXPECT_EQ(state.bytes(u"data"), (std::vector<std::uint8_t>{1, 2}));
    EXPECT_FALSE(
        tarvo::transitionFormatOf(tarvo::offerState(std::make_shared<tarvo::StateTree>()).get()));
}

TEST_F(Installed, KnowsTheTypeLibrariesThatItRegistered) {
    const tarvo::RegistryWriter writer(scope);
    writer.registerLibrary(wide(TARVO_TEST_DEFINITIONS));
    writer.commit();
    const auto library = tarvo::TypeLibraries().find(u"ComponentCategories");
    ASSERT_TRUE(library);
    const tarvo::UUID id = library->uuid();
    EXPECT_EQ(tarvo::TypeLibraries().find(id)->version(), u"1.0");
    EXPECT_TRUE(std::filesystem::exists(library->definitionPath()));
    EXPECT_EQ(tarvo::TypeLibraries().all()[0].name(), u"ComponentCategories");
    EXPECT_FALSE(tarvo::TypeLibraries().ofInterface(id));

    EXPECT_FALSE(library->location(Location::inproc64));
    writer.setLibraryLocation(id, Location::inproc64, u"code.dll");
    writer.commit();
    EXPECT_EQ(tarvo::TypeLibraries().find(id)->location(Location::inproc64), u"code.dll");
    writer.removeLibraryLocation(id, Location::inproc64);
    writer.commit();
    EXPECT_FALSE(tarvo::TypeLibraries().find(id)->location(Location::inproc64));
    writer.unregisterLibrary(id);
    writer.commit();
    EXPECT_EQ(tarvo::TypeLibraries().all().size(), 0u);
    EXPECT_EQ(resultOf([&] { writer.registerLibrary(u"/no/such/file.tidl"); }), RC_PARSER_FAILED);
}

} // namespace
