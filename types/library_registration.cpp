#include "types/library_registration.h"

#include "catalogue/names.h"
#include "core/link_error.h"
#include "core/uuid.h"
#include "registry/registry_key.h"
#include "registry/scope.h"
#include "tarvo/text.hpp"
#include "types/definition_file.h"
#include "types/library_details.h"
#include "types/parser_bridge.h"
#include "types/version_numbers.h"

#include <cstring>
#include <string>
#include <vector>

namespace TARVO {

namespace {

using KeyWriter = Reference<IVaskRegistryKeyWriter>;

KeyWriter createKey(IVaskRegistryKeyWriter& parent, const char16_t* path) {
    KeyWriter key;
    require(parent.table->createKey(parent.me, path, key.out()));
    return key;
}

void setText(IVaskRegistryKeyWriter& key, const char16_t* name, const std::u16string& text) {
    require(key.table->setStringValue(key.me, name, text.c_str()));
}

// The keys of all types in a writer's scope.
struct TypeKeys {
    explicit TypeKeys(IVaskRegistryKeyWriter& root)
        : categories(createKey(root, u"Types/Categories")),
          enumerations(createKey(root, u"Types/Enumerations")),
          interfaces(createKey(root, u"Types/Interfaces")),
          libraries(createKey(root, u"Types/Libraries")) {}

    KeyWriter categories;
    KeyWriter enumerations;
    KeyWriter interfaces;
    KeyWriter libraries;
};

// The parser's objects are foreign: one that isn't there ends the registration. A name, version or
// path that one can't give is an empty one.
template <class Object>
Object& given(Object* object) {
    if (object == nullptr)
        throw vask_link_error(RC_NULL_POINTER);
    return *object;
}

template <class Object>
std::u16string nameOf(Object& object) {
    tarvo::String name;
    object.table->getName(object.me, name.pair());
    return std::move(name.text());
}

std::u16string versionOf(IVaskIDLLibrary& library) {
    tarvo::ConstantString attribute(u"version");
    tarvo::String version;
    if (library.table->getAttribute(library.me, attribute.pair(), version.pair()) != RC_OK)
        return {};
    return std::move(version.text());
}

// Writes one library of a definition into the scope.
class LibraryWriter {
  public:
    LibraryWriter(const TypeKeys& keys, IVaskIDLLibrary& library)
        : keys_(keys), library_(library), uuid_(given(library.table->getUUID(library.me))) {}

    const UUID& uuid() const noexcept { return uuid_; }

    void write(const std::u16string& version) {
        const KeyWriter key = createKey(*keys_.libraries, UUIDText(uuid_).terminated());
        setText(*key, u"name", nameOf(library_));
        if (!version.empty())
            setText(*key, u"version", version);
        const IVaskIDLLibraryTable& table = *library_.table;
        forEach(table.getCategoryCount, table.getCategory,
                [this](IVaskIDLItem& item) { writeItem(*keys_.categories, item); });
        forEach(table.getEnumerationCount, table.getEnumeration,
                [this](IVaskIDLItem& item) { writeItem(*keys_.enumerations, item); });
        forEach(table.getInterfaceCount, table.getInterface,
                [this](IVaskIDLItem& item) { writeInterface(item); });
    }

  private:
    template <class Use>
    void forEach(std::int32_t (*count)(void*), Result (*get)(void*, std::uint32_t, IVaskIDLItem**),
                 Use&& use) {
        const std::int32_t size = count(library_.me);
        for (std::int32_t i = 0; i < size; ++i) {
            IVaskIDLItem* item = nullptr;
            require(get(library_.me, static_cast<std::uint32_t>(i), &item));
            use(given(item));
        }
    }

    KeyWriter writeItem(IVaskRegistryKeyWriter& parent, IVaskIDLItem& item) {
        const UUID& itemId = given(item.table->getUUID(item.me));
        KeyWriter key = createKey(parent, UUIDText(itemId).terminated());
        setText(*key, u"name", nameOf(item));
        require(key->table->setUUIDValue(key->me, u"library", &uuid_));
        return key;
    }

    void writeInterface(IVaskIDLItem& item) {
        const KeyWriter key = writeItem(*keys_.interfaces, item);
        const std::int32_t arguments = item.table->getNumberOfTemplateArguments(item.me);
        if (arguments > 0)
            require(key->table->setIntegerValue(key->me, u"numberOfTemplateArguments", arguments));
    }

    const TypeKeys& keys_;
    IVaskIDLLibrary& library_;
    const UUID uuid_;
};

// Whether a library stays as it is registered: it has a version, and the definition has none, or a
// greater one. A library is brought to a greater version by unregistering it first.
bool isPassedOver(const TarvoRegistry* libraries, const UUID& uuid, std::u16string_view version) {
    const TarvoRegistry* key =
        libraries == nullptr ? nullptr : libraries->subKeys.find(UUIDText(uuid).view());
    const NamedValue* registered = key == nullptr ? nullptr : findStringValue(*key, u"version");
    return registered != nullptr &&
           (version.empty() ||
            isGreaterVersion(versionNumbers(version), versionNumbers(registered->text())));
}

void writeLibraries(IVaskIDLParseResult& definition, const TypeKeys& keys,
                    const TarvoRegistry* registered, LibraryFiles& files) {
    const std::int32_t count = definition.table->getLibraryCount(definition.me);
    for (std::int32_t i = 0; i < count; ++i) {
        IVaskIDLLibrary* handedOut = nullptr;
        require(
            definition.table->getLibrary(definition.me, static_cast<std::uint32_t>(i), &handedOut));
        const auto library = Reference<IVaskIDLLibrary>::adopt(handedOut);
        LibraryWriter writer(keys, given(library.get()));
        const std::u16string version = versionOf(*library);
        if (isPassedOver(registered, writer.uuid(), version))
            continue;
        writer.write(version);
        tarvo::String path;
        library->table->getSourcePath(library->me, path.pair());
        files.stage(std::move(path.text()), definitionFileName(writer.uuid()));
    }
}

// Deletes the items below a key that a library defines, as the file has them.
void deleteItems(const TarvoRegistry& types, const char16_t* name, IVaskRegistryKeyWriter& target,
                 const UUID& library) {
    const TarvoRegistry* items = types.subKeys.find(name);
    if (items == nullptr)
        return;
    items->subKeys.forEach([&](const TarvoRegistry& item) {
        const NamedValue* owner = item.values.find(u"library");
        UUID uuid;
        if (owner == nullptr || owner->type() != RegistryValueType::uuid ||
            readUUID(*owner, uuid) != RC_OK ||
            std::memcmp(uuid.bytes, library.bytes, sizeof uuid.bytes) != 0)
            return;
        require(target.table->deleteKey(target.me, std::u16string(item.name()).c_str()));
    });
}

ParseResultHolder parseOrNull(const char16_t* definition) {
    try {
        return parseDefinition(definition);
    } catch (...) {
        return nullptr; // whatever it was, the caller learns that the parser failed
    }
}

// The locations that a library can have are the first of those of components.
constexpr std::uint32_t kLocationCount = 4;

std::u16string keyPathOf(const UUID& library) {
    return u"Types/Libraries/" + std::u16string(UUIDText(library).view());
}

} // namespace

Result LibraryRegistrations::registerLibrary(IVaskRegistryKeyWriter& root,
                                             const char16_t* definition) {
    const ParseResultHolder parsed = parseOrNull(definition);
    if (!parsed)
        return RC_PARSER_FAILED;
    const TypeKeys keys(root);
    Reference<TarvoRegistry> registered;
    require(loadScope(allUsers_, u"Types/Libraries", registered));
    writeLibraries(*parsed, keys, registered.get(), files_);
    return RC_OK;
}

Result LibraryRegistrations::unregisterLibrary(IVaskRegistryKeyWriter& root, const UUID* library) {
    if (library == nullptr)
        return RC_NULL_POINTER;
    Reference<TarvoRegistry> types;
    require(loadScope(allUsers_, u"Types", types));
    if (types) {
        const TypeKeys keys(root);
        deleteItems(*types, u"categories", *keys.categories, *library);
        deleteItems(*types, u"enumerations", *keys.enumerations, *library);
        deleteItems(*types, u"interfaces", *keys.interfaces, *library);
        require(
            keys.libraries->table->deleteKey(keys.libraries->me, UUIDText(*library).terminated()));
    }
    files_.retire(definitionFileName(*library));
    return RC_OK;
}

Result setLibraryLocation(IVaskRegistryKeyWriter& root, const UUID* library, std::uint32_t location,
                          const char16_t* text) {
    if (location >= kLocationCount)
        return RC_INVALID_ARGUMENT;
    if (text == nullptr || library == nullptr)
        return RC_NULL_POINTER;
    if (tarvo::UUID(*library).isNil())
        return RC_INVALID_ARGUMENT;
    const KeyWriter key = createKey(root, keyPathOf(*library).c_str());
    return key->table->setStringValue(key->me, kLocationNames[location], text);
}

Result removeLibraryLocation(IVaskRegistryKeyWriter& root, const UUID* library,
                             std::uint32_t location) {
    if (location >= kLocationCount)
        return RC_INVALID_ARGUMENT;
    if (library == nullptr)
        return RC_NULL_POINTER;
    if (tarvo::UUID(*library).isNil())
        return RC_INVALID_ARGUMENT;
    root.table->deleteValue(root.me, keyPathOf(*library).c_str(), kLocationNames[location]);
    return RC_OK;
}

} // namespace TARVO
