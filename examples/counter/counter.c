/* A component library in C: one component with three interfaces. The object holds a pair for each,
 * and every pair's `me` is the object itself. */
#include "icounter.h"

#include <tarvo/identification.h>
#include <tarvo/identifiers.h>
#include <tarvo/instantiation.h>
#include <tarvo/result.h>

#include <stdatomic.h>
#include <stddef.h>
#include <stdlib.h>
#include <string.h>

typedef struct Counter {
    IVaskInterface object;
    ICounter counter;
    ITarvoIdentification identification;
    atomic_uint references;
    int64_t total;
} Counter;

/* ---- References and interfaces: the same for every component ----------------------------------
 */

static void addReference(void* me) {
    Counter* self = me;
    atomic_fetch_add_explicit(&self->references, 1, memory_order_relaxed);
}

static void release(void* me) {
    Counter* self = me;
    if (atomic_fetch_sub_explicit(&self->references, 1, memory_order_acq_rel) == 1)
        free(self);
}

static int isSame(const TarvoUUID* left, const TarvoUUID* right) {
    return memcmp(left->bytes, right->bytes, sizeof left->bytes) == 0;
}

static TarvoResult queryInterface(void* me, const TarvoUUID* interfaceId, IVaskInterface** found) {
    Counter* self = me;
    if (found == NULL)
        return RC_NULL_POINTER;
    *found = NULL;
    if (interfaceId == NULL)
        return RC_NULL_POINTER;
    if (isSame(interfaceId, &kIVaskInterfaceId))
        *found = &self->object;
    else if (isSame(interfaceId, &kICounterId))
        *found = (IVaskInterface*)&self->counter;
    else if (isSame(interfaceId, &kITarvoIdentificationId))
        *found = (IVaskInterface*)&self->identification;
    else
        return RC_NO_INTERFACE;
    addReference(me);
    return RC_OK;
}

static TarvoResult getLastError(void* me, IVaskError** error) {
    (void)me;
    return error == NULL ? RC_NULL_POINTER : RC_NOT_AVAILABLE;
}

/* ---- ICounter ----------------------------------------------------------------------------------
 */

static TarvoResult add(void* me, int32_t amount, int64_t* total) {
    Counter* self = me;
    if (total == NULL)
        return RC_NULL_POINTER;
    self->total += amount;
    *total = self->total;
    return RC_OK;
}

/* ---- ITarvoIdentification ----------------------------------------------------------------------
 */

static TarvoResult getName(void* me, IVaskString* name) {
    (void)me;
    return name == NULL ? RC_NULL_POINTER : name->table->set(name->me, u"Counter", 7);
}

static TarvoResult getDescription(void* me, IVaskString* description) {
    (void)me;
    return description == NULL ? RC_NULL_POINTER
                               : description->table->set(description->me, u"Keeps a total", 13);
}

static TarvoResult refuseText(void* me, IVaskString* text) {
    (void)me;
    (void)text;
    return RC_READ_ONLY;
}

/* ---- Tables and creation -----------------------------------------------------------------------
 */

static const IVaskInterfaceTable kObjectTable = {addReference, release, queryInterface,
                                                 getLastError};
static const ICounterTable kCounterTable = {addReference, release, queryInterface, getLastError,
                                            add};
static const ITarvoIdentificationTable kIdentificationTable = {
    addReference, release,    queryInterface, getLastError,
    getName,      refuseText, getDescription, refuseText};

TARVO_ENTRY_POINT TarvoResult vaskCreateObject(const TarvoUUID* uuid, IVaskInterface** instance) {
    Counter* self;
    if (uuid == NULL || instance == NULL)
        return RC_NULL_POINTER;
    *instance = NULL;
    if (!isSame(uuid, &kCounterComponentId))
        return RC_CANNOT_CREATE;
    self = malloc(sizeof *self);
    if (self == NULL)
        return RC_OUT_OF_MEMORY;
    self->object = (IVaskInterface){self, &kObjectTable};
    self->counter = (ICounter){self, &kCounterTable};
    self->identification = (ITarvoIdentification){self, &kIdentificationTable};
    atomic_init(&self->references, 1);
    self->total = 0;
    *instance = &self->object;
    return RC_OK;
}
