/* ITarvoIdentification: the name and the description of an object, found by queryInterface.
 *
 * The library's own objects are read-only here: details objects and collections bear the name that
 * they were made with.
 */
#ifndef TARVO_IDENTIFICATION_H
#define TARVO_IDENTIFICATION_H

#include "base.h"

TARVO_BEGIN_DECLARATIONS

typedef struct ITarvoIdentification ITarvoIdentification;

typedef struct ITarvoIdentificationTable {
    /* [any thread] As in IVaskInterface. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [one thread at a time] As in IVaskInterface. */
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId,
                                  IVaskInterface** interfaceReference);
    TarvoResult (*getLastError)(void* me, IVaskError** error);

    /* [one thread at a time] Gives the object's name.
     *   name  to fill
     * RC_OK, RC_NULL_POINTER, otherwise what `set` of the text gave. */
    TarvoResult (*getComponentName)(void* me, IVaskString* name);

    /* [one thread at a time] Replaces the object's name.
     *   name  the text to take over
     * RC_READ_ONLY, always and without a look at the argument, from the library's own objects. */
    TarvoResult (*setComponentName)(void* me, IVaskString* name);

    /* [one thread at a time] Gives the object's description, which may be empty.
     *   description  to fill
     * As getComponentName. */
    TarvoResult (*getComponentDescription)(void* me, IVaskString* description);

    /* [one thread at a time] Replaces the object's description.
     *   description  the text to take over
     * As setComponentName. */
    TarvoResult (*setComponentDescription)(void* me, IVaskString* description);
} ITarvoIdentificationTable;

struct ITarvoIdentification {
    void* me;
    const ITarvoIdentificationTable* table;
};

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
using ::ITarvoIdentification;
using ::ITarvoIdentificationTable;
} // namespace TARVO
#endif

#endif
