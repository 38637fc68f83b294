// Exports whose work is still to come. Their names stand from the first day, so that a client that
// binds every name finds them; until their turn they answer RC_UNSPECIFIED and give no object.
#include "tarvo/tarvo.h"

namespace {

template <class T>
TarvoResult notYet(T** out) {
    if (out == nullptr)
        return RC_NULL_POINTER;
    *out = nullptr;
    return RC_UNSPECIFIED;
}

} // namespace

TarvoResult tarvoDepersistFromTransitionFormat(IVaskInterface*, IVaskInterface** transition,
                                               uint32_t, uint32_t) {
    return notYet(transition);
}

TarvoResult tarvoDepersistPMCFromTransitionFormat(IVaskInterface*, IVaskInterface*, uint32_t,
                                                  uint32_t) {
    return RC_UNSPECIFIED;
}
