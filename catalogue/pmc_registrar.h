// The registration of one native component, filled in field by field and handed to its writer.
#pragma once

#include "catalogue/pmc_registrations.h"
#include "tarvo/registrar.h"
#include "tarvo/registry_writer.h"

namespace TARVO {

class TarvoPMCRegistrar final : public TarvoBaseImpl<TarvoPMCRegistrar, IVaskPMCRegistrar> {
  public:
    // `registrations` belong to the writer, which is kept for as long as the registrar is there.
    TarvoPMCRegistrar(Reference<IVaskRegistryWriter> writer, PMCRegistrations& registrations);

    template <std::u16string PMCRegistrationRecord::*Field>
    Result setText(const char16_t* text);
    template <std::u16string PMCRegistrationRecord::*Field>
    Result setProgId(const char16_t* progId);
    Result setUUID(const UUID* uuid);
    Result addCategory(const UUID* category);
    Result setFlags(std::uint32_t flags);
    Result setLocation(std::int32_t location, const char16_t* text);
    Result commit();

  private:
    static const IVaskPMCRegistrarTable kTable;

    Reference<IVaskRegistryWriter> writer_;
    PMCRegistrations& registrations_;
    PMCRegistrationRecord record_;
};

} // namespace TARVO
