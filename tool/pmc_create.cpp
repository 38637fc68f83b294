#include "platform/module.h"
#include "tarvo/component.hpp"
#include "tarvo/identification.h"
#include "tarvo/identifiers.h"
#include "tarvo/text.hpp"
#include "tool/component.h"
#include "tool/failure.h"
#include "tool/output.h"
#include "tool/pmc.h"
#include "tool/text.h"

#include <fmt/format.h>

namespace tool {

namespace {

constexpr struct {
    const char* name;
    const TarvoUUID& id;
} kKnownInterfaces[] = {
    {"IVaskInterface", kIVaskInterfaceId},
    {"ITarvoIdentification", kITarvoIdentificationId},
    {"IVaskIdentification", kIVaskIdentificationId},
    {"IVaskPersist", kIVaskPersistId},
    {"ITarvoCollection", kITarvoCollectionId},
};

// The name by which the instance knows itself, if it has one.
std::string nameOf(IVaskInterface* instance) {
    const auto named = tarvo::query<ITarvoIdentification>(instance, kITarvoIdentificationId);
    tarvo::String name;
    if (!named || named->table->getComponentName(named->me, name.pair()) != RC_OK)
        return {};
    return toUtf8(name.text());
}

// The first location decides. A component of the calling process has its code in a module of it.
const char* wayOf(const Component& component, const std::u16string& module,
                  const std::u16string& marshalLibrary) {
    if (component.locations.empty())
        return "an unknown way";
    return module == marshalLibrary ? "through a service of the marshal library"
                                    : "in this process";
}

} // namespace

void createComponent(const std::string& name, std::uint32_t flags) {
    const Library library;
    const Details details = Catalogue(library).find(name);
    const Component component = describeComponent(*details);
    tarvo::Reference<IVaskInterface> instance;
    require(details->table->createInstance(details->me, flags, instance.out()),
            fmt::format("cannot create {}; `tarvo pmc why {}` tells more", component.name, name));
    if (!instance)
        throw Failure("the component library reported success and gave no instance");

    const std::u16string module =
        TARVO::platform::modulePathOf(reinterpret_cast<const void*>(instance->table->addReference));
    printOut("Created {}\n", printable(component.name));
    printOut("  {:<11} {}\n", "way",
             wayOf(component, module, toUtf16(library.folder() + "TARVOMarshal.dll")));
    printOut("  {:<11} {}\n", "module", module.empty() ? "unknown" : toUtf8(module));
    if (const std::string own = nameOf(instance.get()); !own.empty())
        printOut("  {:<11} {}\n", "own name", printable(own));
    for (const auto& [interfaceName, id] : kKnownInterfaces)
        if (tarvo::query<IVaskInterface>(instance.get(), id))
            printOut("  {:<11} {}\n", "interface", interfaceName);
}

} // namespace tool
