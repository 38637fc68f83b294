#include "tool/component.h"
#include "tool/failure.h"
#include "tool/manifest.h"
#include "tool/output.h"
#include "tool/pmc.h"
#include "tool/scope_writer.h"
#include "tool/text.h"
#include "tool/uuid_argument.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

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

} // namespace

// A registration is taken up whole. By itself the library adds it to an earlier one, whose ProgIDs,
// locations and published class would stay.
void registerComponent(const std::string& manifestPath, bool allUsers) {
    const Manifest manifest = readManifest(manifestPath);
    const Library library;
    const ScopeWriter writer(library, allUsers);
    const auto registrar = writer.createRegistrar();
    if (writer.hasComponent(manifest.uuid))
        writer.removeComponent(manifest.uuid);
    fillIn(*registrar, manifest);
    require(registrar->table->commit(registrar->me), "cannot register the component");
    writer.commit();
    printOut("Registered {} {} in the {} scope.\n", printable(manifest.texts.at("name")),
             toUtf8(manifest.uuid.string()), scopeName(allUsers));
}

void unregisterComponent(const std::string& uuidText, const std::string& location, bool allUsers) {
    const tarvo::UUID uuid = uuidArgument(uuidText);
    const Library library;
    const ScopeWriter writer(library, allUsers);
    if (!writer.hasComponent(uuid))
        throw Failure(
            fmt::format("{} is not registered in the {} scope", uuidText, scopeName(allUsers)),
            RC_NOT_FOUND);
    if (location.empty()) {
        writer.removeComponent(uuid);
    } else {
        if (!writer.hasLocation(uuid, location))
            throw Failure(fmt::format("{} has no location {} in the {} scope", uuidText, location,
                                      scopeName(allUsers)),
                          RC_NOT_FOUND);
        const auto known = std::ranges::find(kLocationNames, location);
        writer.removeLocation(uuid, static_cast<std::int32_t>(known - kLocationNames.begin()));
    }
    writer.commit();
}

} // namespace tool
