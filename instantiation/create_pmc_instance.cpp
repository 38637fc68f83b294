// Creation by identifier: the catalogue finds the component.
#include "core/slot.h"
#include "instantiation/creation.h"
#include "tarvo/catalogue.h"
#include "tarvo/instantiation.h"
#include "tarvo/reference.hpp"

TarvoResult tarvoCreatePMCInstance(const TarvoUUID* uuid, uint32_t flags,
                                   IVaskInterface** instance) {
    return TARVO::guardedCall([&]() -> TarvoResult {
        if (instance == nullptr)
            return RC_NULL_POINTER;
        *instance = nullptr;
        tarvo::Reference<IVaskPMCEnumerator> enumerator;
        if (const TarvoResult result = vaskGetPMCEnumerator(enumerator.out()); result != RC_OK)
            return result;
        tarvo::Reference<IVaskPMCRegistrationDetails> details;
        if (const TarvoResult result =
                enumerator->table->getPMCByUUID(enumerator->me, uuid, details.out());
            result != RC_OK)
            return result;
        return TARVO::createInstance(*details, flags, instance);
    });
}
