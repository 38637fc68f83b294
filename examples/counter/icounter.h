/* The interface of the counter, for its hosts. */
#ifndef EXAMPLE_ICOUNTER_H
#define EXAMPLE_ICOUNTER_H

#include <tarvo/base.h>

/* The component: {d1b4a0c6-7e0f-4d53-9b26-5c5d8e7a2290} */
static const TarvoUUID kCounterComponentId = {{0xd1, 0xb4, 0xa0, 0xc6, 0x7e, 0x0f, 0x4d, 0x53, 0x9b,
                                               0x26, 0x5c, 0x5d, 0x8e, 0x7a, 0x22, 0x90}};

/* Its interface: {40a7e3d8-92c4-4e6e-8f10-0b7c96d2a5e3} */
static const TarvoUUID kICounterId = {{0x40, 0xa7, 0xe3, 0xd8, 0x92, 0xc4, 0x4e, 0x6e, 0x8f, 0x10,
                                       0x0b, 0x7c, 0x96, 0xd2, 0xa5, 0xe3}};

typedef struct ICounterTable {
    void (*addReference)(void* me);
    void (*release)(void* me);
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId, IVaskInterface** found);
    TarvoResult (*getLastError)(void* me, IVaskError** error);

    /* [one thread at a time] Adds to the total.
     *   amount  what to add
     *   total   out: the new total
     * RC_OK, RC_NULL_POINTER. */
    TarvoResult (*add)(void* me, int32_t amount, int64_t* total);
} ICounterTable;

typedef struct ICounter {
    void* me;
    const ICounterTable* table;
} ICounter;

#endif
