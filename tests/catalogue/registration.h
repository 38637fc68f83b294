// The short way to register components, and to see what came of it in the private registry.
#pragma once

#include "tests/support/components.h"

#include <map>

namespace tests {

using Registrar = tarvo::Reference<IVaskPMCRegistrar>;

inline Registrar newRegistrar(const Writer& writer) {
    Registrar registrar;
    EXPECT_EQ(writer->table->createPMCRegistrar(writer->me, registrar.out()), RC_OK);
    return registrar;
}

// What is to be registered; what is empty isn't set.
struct Component {
    std::uint8_t number = 1;
    std::u16string name = u"N";
    std::u16string vaskVersion = u"1.3";
    std::u16string description = {};
    std::u16string componentVersion = {};
    std::u16string vendorURL = {};
    std::u16string helpURL = {};
    std::u16string about = {};
    std::u16string progId = {};
    std::u16string versionIndependentProgId = {};
    std::vector<tarvo::UUID> categories = {};
    std::map<std::int32_t, std::u16string> locations = {};
    std::uint32_t flags = 0;
};

// Hands a component to a writer, which must take it.
inline void add(const Writer& writer, const Component& component) {
    const Registrar registrar = newRegistrar(writer);
    const auto& table = *registrar->table;
    void* const me = registrar->me;
    const std::pair<TarvoResult (*)(void*, const char16_t*), const std::u16string*> texts[] = {
        {table.setName, &component.name},
        {table.setDescription, &component.description},
        {table.setVaskVersion, &component.vaskVersion},
        {table.setComponentVersion, &component.componentVersion},
        {table.setVendorURL, &component.vendorURL},
        {table.setHelpURL, &component.helpURL},
        {table.setAbout, &component.about},
        {table.setProgId, &component.progId},
        {table.setVersionIndependentProgId, &component.versionIndependentProgId}};
    for (const auto& [set, text] : texts)
        if (!text->empty()) {
            EXPECT_EQ(set(me, text->c_str()), RC_OK);
        }
    const tarvo::UUID uuid = id(component.number);
    EXPECT_EQ(table.setUUID(me, &uuid), RC_OK);
    for (const tarvo::UUID& category : component.categories)
        EXPECT_EQ(table.addCategory(me, &category), RC_OK);
    for (const auto& [location, text] : component.locations)
        EXPECT_EQ(table.setLocation(me, location, text.c_str()), RC_OK);
    EXPECT_EQ(table.setFlags(me, component.flags), RC_OK);
    EXPECT_EQ(table.commit(me), RC_OK);
}

inline void registerComponent(const Component& component, Scope scope = Scope::user) {
    const Writer writer = newWriter(scope);
    add(writer, component);
    commit(writer);
}

using Lines = std::multiset<std::string>;

// All values of a key and those below it, "path:name=text", and the paths of keys without any;
// identifiers are shortened to their first and last two digits.
inline std::string shortened(std::string text) {
    for (std::size_t at = 0; (at = text.find('{', at)) != text.npos; ++at)
        if (text.find('}', at) == at + 37)
            text.replace(at + 3, 32, "-");
    return text;
}

inline void addLines(IVaskRegistryKey& key, const std::string& path, Lines& lines) {
    const Names values = valueNames(key);
    const Names keys = keyNames(key);
    if (values.empty() && keys.empty())
        lines.insert(shortened(path));
    for (const std::u16string& name : values) {
        std::uint32_t type = 9;
        key.table->getValueType(key.me, name.c_str(), nullptr, &type);
        std::string shown = ":" + narrow(name);
        std::int32_t number = 0;
        tarvo::UUID uuid;
        if (type == 0)
            shown += "=" + narrow(textOf(key, name.c_str()));
        else if (key.table->getIntegerValue(key.me, name.c_str(), nullptr, &number) == RC_OK)
            shown += "=" + std::to_string(number);
        else if (key.table->getUUIDValue(key.me, name.c_str(), nullptr, &uuid) == RC_OK)
            shown += "=" + narrow(uuid.string());
        lines.insert(shortened(path + shown));
    }
    for (const std::u16string& name : keys) {
        tarvo::Reference<IVaskRegistryKey> below;
        EXPECT_EQ(key.table->getKey(key.me, name.c_str(), below.out()), RC_OK);
        addLines(*below, path.empty() ? narrow(name) : path + "/" + narrow(name), lines);
    }
}

inline Lines privateRegistry() {
    Lines lines;
    addLines(*keyAt(u"/"), "", lines);
    return lines;
}

} // namespace tests
