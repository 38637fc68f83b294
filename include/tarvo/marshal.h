/* What the marshal library (TARVOMarshal.dll) offers: services that create components in another
 * process or on another machine. It lies beside the library, which loads it when a creation first
 * needs it and never unloads it.
 */
#ifndef TARVO_MARSHAL_H
#define TARVO_MARSHAL_H

#include "base.h"

/* The names of all entry points, for the braces of an array. Each must be there, or the marshal
 * library isn't used at all; only the three declared below are called. */
#define TARVO_MARSHAL_ENTRY_POINTS                                                                 \
    "StartLocalPMEMarshaler", "StartAsTCPIPPMCService", "ConnectTCPIPService",                     \
        "StartLocalTCPIPTransport", "StartLocalSharedMemoryTransport", "SpawnTCPIPTransport",      \
        "StartLocalMarshaler", "LocalService", "StartLocalServicePMEMarshaler"

TARVO_BEGIN_DECLARATIONS

/* ---- IMarshalService: a running service ------------------------------------------------------ */

typedef struct IMarshalService IMarshalService;

typedef struct IMarshalServiceTable {
    /* [any thread] As in IVaskInterface. */
    void (*addReference)(void* me);
    void (*release)(void* me);
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId,
                                  IVaskInterface** interfaceReference);
    TarvoResult (*getLastError)(void* me, IVaskError** error);

    /* [any thread; waits] Creates a component at the service.
     *   uuid      which component to create
     *   flags     the creation flags of the host (instantiation.h)
     *   instance  out: the instance, with two references: one that the library releases at once,
     *             and one for the host
     * RC_OK or any other code; RC_SEE_LAST_ERROR reaches the host as RC_BAD_LOCATION. */
    TarvoResult (*createInstance)(void* me, const TarvoUUID* uuid, uint32_t flags,
                                  IVaskInterface** instance);

    void (*reserved5To6[2])(void);

    /* [any thread; waits] Stops the service.
     * RC_OK or the code of the failure, upon which the library leaves the other services alone. */
    TarvoResult (*stopService)(void* me);
} IMarshalServiceTable;

struct IMarshalService {
    void* me;
    const IMarshalServiceTable* table;
};

/* ---- The entry points that are called -------------------------------------------------------- */

/* The library makes one of these calls at a time. `service` is null before the call and receives
 * the service, with one reference for the caller.
 * RC_OK or the code of the failure; RC_SEE_LAST_ERROR reaches the host as RC_BAD_LOCATION. */

/* [any thread; waits] Starts the service for components of one bitness on this machine.
 *   first, second  both 1 for 64-bit components, both 0 for 32-bit ones */
typedef TarvoResult StartLocalPMEMarshalerFunction(uint32_t first, uint32_t second,
                                                   IMarshalService** service);
TARVO_ENTRY_POINT StartLocalPMEMarshalerFunction StartLocalPMEMarshaler;

/* [any thread; waits] Connects to a service on another machine.
 *   host  name of the machine, not empty; borrowed for the call
 *   port  as the location's URL has it, without a check of its range */
typedef TarvoResult ConnectTCPIPServiceFunction(IVaskString* host, int32_t port,
                                                IMarshalService** service);
TARVO_ENTRY_POINT ConnectTCPIPServiceFunction ConnectTCPIPService;

/* [any thread; waits] Starts a named service on this machine.
 *   name  the text of the component's Local location; borrowed for the call */
typedef TarvoResult StartLocalServicePMEMarshalerFunction(IVaskString* name,
                                                          IMarshalService** service);
TARVO_ENTRY_POINT StartLocalServicePMEMarshalerFunction StartLocalServicePMEMarshaler;

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
using ::IMarshalService;
using ::IMarshalServiceTable;
} // namespace TARVO
#endif

#endif
