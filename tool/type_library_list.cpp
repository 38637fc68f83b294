#include "platform/file.h"
#include "tarvo/array.hpp"
#include "tarvo/component.hpp"
#include "tarvo/library.h"
#include "tool/component.h"
#include "tool/definition.h"
#include "tool/failure.h"
#include "tool/key_source.h"
#include "tool/output.h"
#include "tool/text.h"
#include "tool/type_library.h"

#include <algorithm>
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
    Progress::say("Looking for type libraries");
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

struct Item {
    std::string uuid;
    std::string name;
};

// The items of one kind that a library defines; the kind is the name of their table.
std::vector<Item> itemsOf(const Library& library, const std::string& kind,
                          const tarvo::UUID& owner) {
    std::unique_ptr<KeySource> table;
    try {
        table = openMergedKey(library, toUtf16("/types/" + kind));
    } catch (const Failure& failure) {
        if (failure.code() != RC_NOT_FOUND)
            throw;
        return {};
    }
    const std::string ownerText = toUtf8(owner.string());
    std::vector<Item> items;
    for (const std::u16string& id : table->subKeyNames()) {
        std::string name;
        bool isOwned = false;
        for (const ShownValue& value : table->open(id)->values()) {
            if (value.name == "name")
                name = value.text;
            isOwned = isOwned || (value.name == "library" && value.text == ownerText);
        }
        if (isOwned)
            items.push_back({toUtf8(id), name});
    }
    return items;
}

constexpr std::pair<const char*, const char*> kKinds[] = {
    {"categories", "category"}, {"enumerations", "enumeration"}, {"interfaces", "interface"}};

ordered_json asJson(const TypeLibrary& library) {
    return {{"uuid", toUtf8(library.uuid.string())},
            {"name", library.name},
            {"version", library.version},
            {"definition", toUtf8(library.definitionPath)}};
}

ordered_json asJson(const Library& tarvo, const TypeLibrary& library) {
    ordered_json whole = asJson(library);
    whole["locations"] = ordered_json::object();
    for (const auto& [location, text] : library.locations)
        whole["locations"][location] = text;
    for (const auto& [kind, title] : kKinds) {
        whole[kind] = ordered_json::array();
        for (const Item& item : itemsOf(tarvo, kind, library.uuid))
            whole[kind].push_back({{"uuid", item.uuid}, {"name", item.name}});
    }
    return whole;
}

void printLibrary(const Library& tarvo, const TypeLibrary& library) {
    const auto print = [](const char* title, const std::string& text) {
        printOut("  {:<11} {}\n", title, text);
    };
    printOut("{}\n", printable(library.name));
    print("identifier", toUtf8(library.uuid.string()));
    if (!library.version.empty())
        print("version", printable(library.version));
    print("definition",
          toUtf8(library.definitionPath) +
              (TARVO::platform::fileExists(library.definitionPath) ? "" : " (missing)"));
    for (const auto& [location, text] : library.locations)
        print(location.c_str(), printable(text));
    for (const auto& [kind, title] : kKinds)
        for (const Item& item : itemsOf(tarvo, kind, library.uuid))
            print(title, item.uuid + "  " + printable(item.name));
}

// The columns together fit a terminal of 80.
void printTable(const std::vector<TypeLibrary>& libraries) {
    constexpr std::size_t kName = 27;
    constexpr std::size_t kVersion = 10;
    printOut("{:<{}}  {:<{}}  {}\n", "NAME", kName, "VERSION", kVersion, "UUID");
    for (const TypeLibrary& library : libraries)
        printOut("{:<{}}  {:<{}}  {}\n", fitted(printable(library.name), kName), kName,
                 fitted(printable(library.version), kVersion), kVersion,
                 toUtf8(library.uuid.string()));
}

} // namespace

void checkDefinition(const std::string& path) {
    const Library library;
    const Definition definition(library, path);
    printOut("{}: no mistakes\n", path);
    for (const Definition::DefinedLibrary& defined : definition.libraries())
        printOut("  {} {} {}, categories: {}, enumerations: {}, interfaces: {}\n",
                 printable(defined.name), toUtf8(defined.uuid.string()),
                 defined.version.empty() ? "without version" : "version " + defined.version,
                 defined.categories, defined.enumerations, defined.interfaces);
}

void listTypeLibraries(bool json) {
    const Library library;
    const std::vector<TypeLibrary> libraries = allLibraries(library);
    if (json) {
        ordered_json list = ordered_json::array();
        for (const TypeLibrary& one : libraries)
            list.push_back(asJson(one));
        printOut("{}\n", list.dump(2));
        return;
    }
    if (libraries.empty())
        return printOut("(no type libraries)\n");
    printTable(libraries);
}

void showTypeLibrary(const std::string& name, bool json) {
    const Library library;
    const TypeLibrary shown = find(library, name);
    if (json)
        printOut("{}\n", asJson(library, shown).dump(2));
    else
        printLibrary(library, shown);
}

} // namespace tool
