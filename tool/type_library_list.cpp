#include "platform/file.h"
#include "tarvo/array.hpp"
#include "tarvo/component.hpp"
#include "tarvo/library.h"
#include "tool/component.h"
#include "tool/definition.h"
#include "tool/failure.h"
#include "tool/key_source.h"
#include "tool/text.h"
#include "tool/type_library.h"

#include <algorithm>
#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tool {

namespace {

using nlohmann::ordered_json;

struct TypeLibrary {
    tarvo::UUID uuid;
    std::string name;
    std::string version;
    std::u16string definitionPath;
    std::vector<std::pair<std::string, std::string>> locations; // name and text
};

TypeLibrary describe(IVaskLibraryDetails& details) {
    const IVaskLibraryDetailsTable& table = *details.table;
    TypeLibrary library;
    tarvo::String text;
    require(table.getUUID(details.me, &library.uuid), "cannot read a library");
    require(table.getName(details.me, text.pair()), "cannot read a library");
    library.name = toUtf8(text.text());
    require(table.getVersion(details.me, text.pair()), "cannot read a library");
    library.version = toUtf8(text.text());
    require(table.getDefinitionPath(details.me, text.pair()), "cannot read a library");
    library.definitionPath = text.text();
    for (std::size_t i = 0; i < kLocationNames.size(); ++i)
        if (table.getLocation(details.me, static_cast<std::int32_t>(i), text.pair()) == RC_OK)
            library.locations.emplace_back(kLocationNames[i], toUtf8(text.text()));
    return library;
}

tarvo::Reference<IVaskLibraryEnumerator> enumeratorOf(const Library& library) {
    tarvo::Reference<IVaskLibraryEnumerator> enumerator;
    require(library.openLibraryEnumerator(enumerator.out()), "cannot list the type libraries");
    return enumerator;
}

std::vector<TypeLibrary> allLibraries(const Library& library) {
    const auto enumerator = enumeratorOf(library);
    tarvo::Reference<ITarvoCollection> collection;
    require(enumerator->table->getAllLibraries(enumerator->me, collection.out()),
            "cannot list the type libraries");
    std::uint32_t count = 0;
    require(collection->table->getCount(collection->me, &count), "cannot list the type libraries");
    std::vector<TypeLibrary> libraries;
    for (std::uint32_t i = 0; i < count; ++i) {
        tarvo::Reference<IVaskInterface> item;
        require(
            collection->table->getItem(collection->me, static_cast<std::int32_t>(i), item.out()),
            "cannot list the type libraries");
        const auto details = tarvo::query<IVaskLibraryDetails>(item.get(), kIVaskLibraryDetailsId);
        if (!details)
            throw Failure("cannot describe a type library", RC_NO_INTERFACE);
        libraries.push_back(describe(*details));
    }
    return libraries;
}

TypeLibrary find(const Library& library, const std::string& name) {
    const auto enumerator = enumeratorOf(library);
    const std::u16string text = toUtf16(name);
    const auto uuid = tarvo::UUID::parse(text);
    tarvo::Reference<IVaskLibraryDetails> details;
    require(uuid ? enumerator->table->getLibraryByUUID(enumerator->me, &*uuid, details.out())
                 : enumerator->table->getLibraryByName(enumerator->me, text.c_str(), details.out()),
            "cannot find the type library " + name);
    return describe(*details);
}

// The items of one kind that a library defines, as lines of identifier and name.
void printItems(const Library& library, const char* title, const char* table,
                const tarvo::UUID& owner) {
    std::unique_ptr<KeySource> items;
    try {
        items = openMergedKey(library, toUtf16(std::string("/types/") + table));
    } catch (const Failure& failure) {
        if (failure.code() != RC_NOT_FOUND)
            throw;
        return;
    }
    const std::string ownerText = toUtf8(owner.string());
    for (const std::u16string& id : items->subKeyNames()) {
        std::string name;
        bool isOwned = false;
        for (const ShownValue& value : items->open(id)->values()) {
            if (value.name == "name")
                name = value.text;
            isOwned = isOwned || (value.name == "library" && value.text == ownerText);
        }
        if (isOwned)
            fmt::print("  {:<11} {}  {}\n", title, toUtf8(id), printable(name));
    }
}

// The columns together fit a terminal of 80.
void printTable(const std::vector<TypeLibrary>& libraries) {
    constexpr std::size_t kName = 27;
    constexpr std::size_t kVersion = 10;
    fmt::print("{:<{}}  {:<{}}  {}\n", "NAME", kName, "VERSION", kVersion, "UUID");
    for (const TypeLibrary& library : libraries)
        fmt::print("{:<{}}  {:<{}}  {}\n", fitted(printable(library.name), kName), kName,
                   fitted(printable(library.version), kVersion), kVersion,
                   toUtf8(library.uuid.string()));
}

} // namespace

void checkDefinition(const std::string& path) {
    const Library library;
    const Definition definition(library, path);
    fmt::print("{}: no mistakes\n", path);
    for (const Definition::DefinedLibrary& defined : definition.libraries())
        fmt::print("  {} {} {}, categories: {}, enumerations: {}, interfaces: {}\n",
                   printable(defined.name), toUtf8(defined.uuid.string()),
                   defined.version.empty() ? "without version" : "version " + defined.version,
                   defined.categories, defined.enumerations, defined.interfaces);
}

void listTypeLibraries(bool asJson) {
    const Library library;
    const std::vector<TypeLibrary> libraries = allLibraries(library);
    if (asJson) {
        ordered_json list = ordered_json::array();
        for (const TypeLibrary& one : libraries)
            list.push_back({{"uuid", toUtf8(one.uuid.string())},
                            {"name", one.name},
                            {"version", one.version},
                            {"definition", toUtf8(one.definitionPath)}});
        fmt::print("{}\n", list.dump(2));
        return;
    }
    if (libraries.empty())
        return fmt::print("(no type libraries)\n");
    printTable(libraries);
}

void showTypeLibrary(const std::string& name) {
    const Library library;
    const TypeLibrary shown = find(library, name);
    fmt::print("{}\n", printable(shown.name));
    fmt::print("  {:<11} {}\n", "identifier", toUtf8(shown.uuid.string()));
    if (!shown.version.empty())
        fmt::print("  {:<11} {}\n", "version", printable(shown.version));
    fmt::print("  {:<11} {}{}\n", "definition", toUtf8(shown.definitionPath),
               platform::fileExists(shown.definitionPath) ? "" : " (missing)");
    for (const auto& [location, text] : shown.locations)
        fmt::print("  {:<11} {}\n", location, printable(text));
    printItems(library, "category", "categories", shown.uuid);
    printItems(library, "enumeration", "enumerations", shown.uuid);
    printItems(library, "interface", "interfaces", shown.uuid);
}

} // namespace tool
