#include "catalogue/pmc_registrar.h"

#include "catalogue/names.h"
#include "registry/writer_names.h"

namespace TARVO {

using Record = PMCRegistrationRecord;
using Registrar = TarvoPMCRegistrar;

constinit const IVaskPMCRegistrarTable TarvoPMCRegistrar::kTable = {
    .addReference = slot<Registrar, &Registrar::addReference>,
    .release = slot<Registrar, &Registrar::release>,
    .setName = slot<Registrar, &Registrar::setText<&Record::name>>,
    .setDescription = slot<Registrar, &Registrar::setText<&Record::description>>,
    .setVaskVersion = slot<Registrar, &Registrar::setText<&Record::vaskVersion>>,
    .setComponentVersion = slot<Registrar, &Registrar::setText<&Record::componentVersion>>,
    .setVendorURL = slot<Registrar, &Registrar::setText<&Record::vendorURL>>,
    .setHelpURL = slot<Registrar, &Registrar::setText<&Record::helpURL>>,
    .setAbout = slot<Registrar, &Registrar::setText<&Record::about>>,
    .setUUID = slot<Registrar, &Registrar::setUUID>,
    .setProgId = slot<Registrar, &Registrar::setProgId<&Record::progId>>,
    .addCategory = slot<Registrar, &Registrar::addCategory>,
    .setFlags = slot<Registrar, &Registrar::setFlags>,
    .setLocation = slot<Registrar, &Registrar::setLocation>,
    .commit = slot<Registrar, &Registrar::commit>,
    .setVersionIndependentProgId =
        slot<Registrar, &Registrar::setProgId<&Record::versionIndependentProgId>>,
};

TarvoPMCRegistrar::TarvoPMCRegistrar(Reference<IVaskRegistryWriter> writer,
                                     PMCRegistrations& registrations)
    : TarvoBaseImpl(&kTable), writer_(std::move(writer)), registrations_(registrations) {}

template <std::u16string PMCRegistrationRecord::*Field>
Result TarvoPMCRegistrar::setText(const char16_t* text) {
    record_.*Field = text == nullptr ? u"" : text;
    return RC_OK;
}

// The text is to be the name of a value.
template <std::u16string PMCRegistrationRecord::*Field>
Result TarvoPMCRegistrar::setProgId(const char16_t* progId) {
    std::u16string folded;
    if (const Result result = takeValueName(progId, folded); result != RC_OK)
        return result == RC_NULL_POINTER ? result : RC_INVALID_ARGUMENT;
    record_.*Field = progId;
    return RC_OK;
}

Result TarvoPMCRegistrar::setUUID(const UUID* uuid) {
    if (uuid == nullptr)
        return RC_NULL_POINTER;
    if (tarvo::UUID(*uuid).isNil())
        return RC_INVALID_ARGUMENT;
    record_.uuid = *uuid;
    return RC_OK;
}

Result TarvoPMCRegistrar::addCategory(const UUID* category) {
    if (category == nullptr)
        return RC_NULL_POINTER;
    record_.categories.insert(*category);
    return RC_OK;
}

Result TarvoPMCRegistrar::setFlags(std::uint32_t flags) {
    record_.flags = flags;
    return RC_OK;
}

// A location that doesn't exist is left to the writer's commit.
Result TarvoPMCRegistrar::setLocation(std::int32_t location, const char16_t* text) {
    if (isCOMLocation(location))
        return RC_INVALID_ARGUMENT;
    if (text == nullptr)
        return RC_NULL_POINTER;
    if (*text == u'\0')
        return RC_INVALID_ARGUMENT;
    record_.locations.insert_or_assign(location, text);
    return RC_OK;
}

Result TarvoPMCRegistrar::commit() {
    if (!record_.isComplete())
        return RC_INCOMPLETE_REGISTRATION;
    registrations_.add(record_);
    return RC_OK;
}

} // namespace TARVO
