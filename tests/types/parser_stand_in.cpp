// A definition parser that gives what the test tells it to.
#include "tests/types/parser_scenario.h"

#include <tarvo/idl_parser.h>
#include <tarvo/text.hpp>

namespace {

TarvoResult give(IVaskString* target, const std::u16string& text) {
    tarvo::setText(target, text);
    return RC_NOT_AVAILABLE; // nobody is to look at the result of a text
}

struct Item {
    static TarvoResult getName(void* me, IVaskString* name) {
        return give(name, static_cast<Item*>(me)->item->name);
    }
    static const TarvoUUID* getUUID(void* me) { return &static_cast<Item*>(me)->item->id; }
    static std::int32_t getNumberOfTemplateArguments(void* me) {
        return static_cast<Item*>(me)->item->templateArguments;
    }
    static constexpr IVaskIDLItemTable kTable = [] {
        IVaskIDLItemTable table{};
        table.getName = getName;
        table.getUUID = getUUID;
        table.getNumberOfTemplateArguments = getNumberOfTemplateArguments;
        return table;
    }();

    const ScenarioItem* item = nullptr;
    IVaskIDLItem pair{this, &kTable};
};

// Counts its references; the scenario knows how many objects are alive.
template <class Object>
struct Counted {
    explicit Counted(Scenario& given) : scenario(given) { ++scenario.objectsAlive; }
    ~Counted() { --scenario.objectsAlive; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    static void addReference(void* me) { ++static_cast<Object*>(me)->references; }
    static void release(void* me) {
        auto* object = static_cast<Object*>(me);
        if (--object->references == 0)
            delete object;
    }

    Scenario& scenario;
    int references = 1;
};

struct Library : Counted<Library> {
    Library(Scenario& given, const ScenarioLibrary& which) : Counted(given), library(which) {}

    static const ScenarioLibrary& of(void* me) { return static_cast<Library*>(me)->library; }

    static TarvoResult getAttribute(void* me, IVaskString* name, IVaskString* value) {
        if (tarvo::viewOf(name) != u"version" || of(me).version.empty())
            return RC_NOT_AVAILABLE;
        return tarvo::setText(value, of(me).version);
    }
    template <std::vector<ScenarioItem> ScenarioLibrary::*Items>
    static std::int32_t count(void* me) {
        return static_cast<std::int32_t>((of(me).*Items).size());
    }
    template <std::vector<ScenarioItem> ScenarioLibrary::*Items>
    static TarvoResult get(void* me, std::uint32_t index, IVaskIDLItem** item) {
        auto* self = static_cast<Library*>(me);
        if (Items == &ScenarioLibrary::interfaces) {
            if (self->scenario.interfaceResult != RC_OK || !self->scenario.givesInterfaces)
                return self->scenario.interfaceResult;
        }
        self->current.item = &(of(me).*Items)[index];
        *item = &self->current.pair;
        return RC_OK;
    }
    static TarvoResult getName(void* me, IVaskString* name) { return give(name, of(me).name); }
    static const TarvoUUID* getUUID(void* me) { return &of(me).id; }
    static TarvoResult getSourcePath(void* me, IVaskString* path) {
        return give(path, of(me).path);
    }

    static constexpr IVaskIDLLibraryTable kTable = [] {
        IVaskIDLLibraryTable table{};
        table.addReference = addReference;
        table.release = release;
        table.getAttribute = getAttribute;
        table.getCategoryCount = count<&ScenarioLibrary::categories>;
        table.getCategory = get<&ScenarioLibrary::categories>;
        table.getEnumerationCount = count<&ScenarioLibrary::enumerations>;
        table.getEnumeration = get<&ScenarioLibrary::enumerations>;
        table.getInterfaceCount = count<&ScenarioLibrary::interfaces>;
        table.getInterface = get<&ScenarioLibrary::interfaces>;
        table.getName = getName;
        table.getUUID = getUUID;
        table.getSourcePath = getSourcePath;
        return table;
    }();

    const ScenarioLibrary& library;
    Item current;
    IVaskIDLLibrary pair{this, &kTable};
};

struct ParseResult : Counted<ParseResult> {
    using Counted::Counted;

    static Scenario& of(void* me) { return static_cast<ParseResult*>(me)->scenario; }

    static std::int32_t getLibraryCount(void* me) {
        return static_cast<std::int32_t>(of(me).libraries.size());
    }
    static TarvoResult getLibrary(void* me, std::uint32_t index, IVaskIDLLibrary** library) {
        if (of(me).libraryResult == RC_OK)
            *library = &(new Library(of(me), of(me).libraries[index]))->pair;
        return of(me).libraryResult;
    }
    static TarvoResult getErrorMessage(void* me, IVaskString* message) {
        return give(message, of(me).message);
    }

    static constexpr IVaskIDLParseResultTable kTable = [] {
        IVaskIDLParseResultTable table{};
        table.addReference = addReference;
        table.release = release;
        table.getLibraryCount = getLibraryCount;
        table.getLibrary = getLibrary;
        table.getErrorMessage = getErrorMessage;
        return table;
    }();

    IVaskIDLParseResult pair{this, &kTable};
};

} // namespace

TARVO_ENTRY_POINT IVaskIDLParseResult* VaskIDLParse(const char16_t* definition) {
    auto* scenario = reinterpret_cast<Scenario*>(const_cast<char16_t*>(definition));
    return scenario == nullptr ? nullptr : &(new ParseResult(*scenario))->pair;
}
