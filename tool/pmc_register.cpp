#include "tarvo/registrar.h"
#include "tarvo/registry_writer.h"
#include "tool/component.h"
#include "tool/failure.h"
#include "tool/manifest.h"
#include "tool/output.h"
#include "tool/pmc.h"
#include "tool/text.h"
#include "tool/uuid_argument.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

using Writer = tarvo::Reference<IVaskRegistryWriter>;

Writer openWriter(const Library& library, bool allUsers) {
    Writer writer;
    require(library.openWriter(allUsers, writer.out()),
            fmt::format("cannot change the {} scope", allUsers ? "machine" : "user"));
    return writer;
}

void commit(const Writer& writer, bool allUsers) {
    require(writer->table->commit(writer->me),
            fmt::format("cannot write the {} scope", allUsers ? "machine" : "user"));
}

void fillIn(IVaskPMCRegistrar& registrar, const Manifest& manifest) {
    const IVaskPMCRegistrarTable& table = *registrar.table;
    const struct {
        const char* name;
        TarvoResult (*set)(void*, const char16_t*);
    } setters[] = {
        {"name", table.setName},
        {"description", table.setDescription},
        {"vaskVersion", table.setVaskVersion},
        {"componentVersion", table.setComponentVersion},
        {"vendorURL", table.setVendorURL},
        {"helpURL", table.setHelpURL},
        {"about", table.setAbout},
        {"progId", table.setProgId},
        {"versionIndependentProgId", table.setVersionIndependentProgId},
    };
    for (const auto& [name, set] : setters)
        if (const auto text = manifest.texts.find(name); text != manifest.texts.end())
            require(set(registrar.me, toUtf16(text->second).c_str()),
                    fmt::format("the library refuses \"{}\"", name));
    require(table.setUUID(registrar.me, &manifest.uuid), "the library refuses \"uuid\"");
    require(table.setFlags(registrar.me, manifest.flags), "the library refuses \"flags\"");
    for (const tarvo::UUID& category : manifest.categories)
        require(table.addCategory(registrar.me, &category), "the library refuses a category");
    for (const auto& [location, text] : manifest.locations)
        require(table.setLocation(registrar.me, location, toUtf16(text).c_str()),
                "the library refuses a location");
}

// A component's key in the writer's own scope; null if it isn't registered there.
tarvo::Reference<IVaskRegistryKey> registrationOf(const Writer& writer, const tarvo::UUID& uuid) {
    tarvo::Reference<IVaskRegistryKey> key;
    const TarvoResult result = writer->table->getKey(
        writer->me, (u"/components/pmcs/" + uuid.string()).c_str(), key.out());
    if (result != RC_NOT_FOUND)
        require(result, "cannot read the scope");
    return key;
}

// A registration is taken up whole. By itself the library adds it to an earlier one, whose ProgIDs,
// locations and published class would stay.
void removeEarlier(const Writer& writer, const tarvo::UUID& uuid) {
    if (registrationOf(writer, uuid))
        require(writer->table->unregisterPMC(writer->me, &uuid),
                "cannot remove the earlier registration");
}

} // namespace

void registerComponent(const std::string& manifestPath, bool allUsers) {
    const Manifest manifest = readManifest(manifestPath);
    const Library library;
    const Writer writer = openWriter(library, allUsers);
    tarvo::Reference<IVaskPMCRegistrar> registrar;
    require(writer->table->createPMCRegistrar(writer->me, registrar.out()),
            "cannot register a component");
    removeEarlier(writer, manifest.uuid);
    fillIn(*registrar, manifest);
    require(registrar->table->commit(registrar->me), "cannot register the component");
    commit(writer, allUsers);
    printOut("Registered {} {} in the {} scope.\n", manifest.texts.at("name"),
             toUtf8(manifest.uuid.string()), allUsers ? "machine" : "user");
}

void unregisterComponent(const std::string& uuidText, const std::string& location, bool allUsers) {
    const tarvo::UUID uuid = uuidArgument(uuidText);
    const Library library;
    const Writer writer = openWriter(library, allUsers);
    if (!registrationOf(writer, uuid))
        throw Failure(fmt::format("{} is not registered in the {} scope", uuidText,
                                  allUsers ? "machine" : "user"),
                      RC_NOT_FOUND);
    if (location.empty()) {
        require(writer->table->unregisterPMC(writer->me, &uuid), "cannot remove the component");
    } else {
        const auto known = std::ranges::find(kLocationNames, location);
        const auto number = static_cast<std::int32_t>(known - kLocationNames.begin());
        require(writer->table->unregisterPMCLocation(writer->me, &uuid, number),
                "cannot remove the location");
    }
    commit(writer, allUsers);
}

} // namespace tool
