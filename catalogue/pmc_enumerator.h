// The one place where callers ask which components exist. It joins the native components of the
// private registry, as it was when the enumerator was made, and the COM classes of the system
// registry, as it is when they are asked for; for a category, as it was when that was first asked
// for.
#pragma once

#include "catalogue/com_classes.h"
#include "catalogue/native_details.h"
#include "core/object.h"
#include "core/uuid.h"
#include "registry/registry_key.h"

#include <map>

namespace TARVO {

class TarvoPMCEnumerator final : public TarvoBaseImpl<TarvoPMCEnumerator, IVaskPMCEnumerator> {
  public:
    explicit TarvoPMCEnumerator(Reference<TarvoRegistryKey> rootKey);

    Result getPMCByUUID(const UUID* uuid, IVaskPMCRegistrationDetails** details);
    Result getPMCByProgId(const char16_t* progId, IVaskPMCRegistrationDetails** details);
    Result getPMCsInCategories(const UUID* categories, std::uint32_t count,
                               ITarvoCollection** pmcs);
    Result getAllPMCs(ITarvoCollection** pmcs);

  private:
    static const IVaskPMCEnumeratorTable kTable;

    Reference<TarvoPMCRegistrationDetails> findNativePMC(const UUID& uuid) const;
    std::vector<FoundPMC> findNativePMCs() const;
    std::vector<FoundPMC> findNativePMCsIn(const UUIDText& category) const;
    UUIDSet markingCategories() const;
    const std::vector<FoundPMC>& pmcsInCategory(const UUID& category);

    ClassBuffer classBuffer_;
    std::map<tarvo::UUID, std::vector<FoundPMC>> categoryCache_;
    Reference<TarvoRegistryKey> rootKey_;
};

} // namespace TARVO
