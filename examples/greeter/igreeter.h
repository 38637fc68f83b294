/* The interface of the greeter, for its hosts. An interface of one's own is an identifier and a
 * table that begins with the slots of IVaskInterface. */
#ifndef EXAMPLE_IGREETER_H
#define EXAMPLE_IGREETER_H

#include <tarvo/base.h>

/* The component: {2f8cbd30-41b5-4a80-8d5e-6a0a9c1f3c11} */
static const TarvoUUID kGreeterComponentId = {{0x2f, 0x8c, 0xbd, 0x30, 0x41, 0xb5, 0x4a, 0x80, 0x8d,
                                               0x5e, 0x6a, 0x0a, 0x9c, 0x1f, 0x3c, 0x11}};

/* Its interface: {6e07c1a9-3f24-4d0b-9a53-1c1d2be4f70d} */
static const TarvoUUID kIGreeterId = {{0x6e, 0x07, 0xc1, 0xa9, 0x3f, 0x24, 0x4d, 0x0b, 0x9a, 0x53,
                                       0x1c, 0x1d, 0x2b, 0xe4, 0xf7, 0x0d}};

typedef struct IGreeterTable {
    void (*addReference)(void* me);
    void (*release)(void* me);
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId, IVaskInterface** found);
    TarvoResult (*getLastError)(void* me, IVaskError** error);

    /* [any thread] Greets somebody.
     *   name      whom to greet; null-terminated
     *   greeting  to fill
     * RC_OK, RC_NULL_POINTER, otherwise what `set` of the text gave. */
    TarvoResult (*greet)(void* me, const char16_t* name, IVaskString* greeting);
} IGreeterTable;

typedef struct IGreeter {
    void* me;
    const IGreeterTable* table;
} IGreeter;

#endif
