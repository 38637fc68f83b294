/* ITarvoCollection: a list of objects that can only be read, by place and by name.
 *
 * Enumerators hand out components and type libraries in it. What it holds is fixed when it is
 * handed out. Asked for ITarvoIdentification, it gives the list's own name.
 */
#ifndef TARVO_COLLECTION_H
#define TARVO_COLLECTION_H

#include "base.h"

TARVO_BEGIN_DECLARATIONS

typedef struct ITarvoCollection ITarvoCollection;

typedef struct ITarvoCollectionTable {
    /* [any thread] As in IVaskInterface. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [one thread at a time] As in IVaskInterface. No error is ever recorded. */
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId,
                                  IVaskInterface** interfaceReference);
    TarvoResult (*getLastError)(void* me, IVaskError** error);

    /* [one thread at a time] Gives the item at a place.
     *   index  from 0 on
     *   item   out: the item, with one reference for the caller; untouched on failure
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (the index is negative or not below the count). */
    TarvoResult (*getItem)(void* me, int32_t index, IVaskInterface** item);

    /* [one thread at a time] Gives the item whose component name (ITarvoIdentification) is the one
     * given, without regard to the case of A to Z; the last one if several have it.
     *   name  may be null, which stands for the empty name
     *   item  out: the item, with one reference for the caller; null on failure
     * RC_OK, RC_NULL_POINTER (item), RC_NOT_AVAILABLE (no item of that name). If any item's name
     * can't be read: what the item gave, such as RC_NO_INTERFACE. */
    TarvoResult (*getItemByName)(void* me, IVaskString* name, IVaskInterface** item);

    /* [one thread at a time] Gives the number of items.
     *   count  out: the number
     * RC_OK, RC_NULL_POINTER. */
    TarvoResult (*getCount)(void* me, uint32_t* count);
} ITarvoCollectionTable;

struct ITarvoCollection {
    void* me;
    const ITarvoCollectionTable* table;
};

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
using ::ITarvoCollection;
using ::ITarvoCollectionTable;
} // namespace TARVO
#endif

#endif
