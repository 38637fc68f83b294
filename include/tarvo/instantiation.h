/* From a component's identifier to a live object, and what a component library has to offer for it.
 */
#ifndef TARVO_INSTANTIATION_H
#define TARVO_INSTANTIATION_H

#include "base.h"

/* Creation flags. */
enum {
    /* A component that is bound to an apartment, and a COM class asked for on a thread of a
     * single-threaded apartment, are created in this process on the calling thread. Without it a
     * service process creates them. */
    TARVO_CREATE_ALLOW_APARTMENT_IN_CALLER = 1
};

TARVO_BEGIN_DECLARATIONS

/* ---- For hosts ------------------------------------------------------------------------------ */

/* [any thread; waits] Creates an instance of a component. The first location that the component
 * has, of Inproc64, COM64, Inproc32, COM32, Local and Remote in this order, decides how; if that
 * fails, no other is tried. An elevated process, unless it runs under Wine, is refused what a
 * process without rights could have registered: a native component without an Inproc64 location in
 * the all-users scope alone, and a COM class registered for the current user.
 * Waits for the registry files as vaskGetRegistryKey does, for another creation that a component
 * library or the COM bridge is busy with in this process, and for the start of a service.
 *   uuid      of the component
 *   flags     creation flags
 *   instance  out: the instance, with one reference for the caller; null on failure, unless the
 *             component left something else there
 * RC_OK, RC_NULL_POINTER (instance or uuid), RC_ACCESS_DENIED and RC_UNSPECIFIED (as from
 * vaskGetRegistryKey), RC_NOT_FOUND (no such component), RC_ELEVATION_REFUSED, RC_INVALID_ARGUMENT
 * (a flag that isn't known), RC_CANNOT_CREATE (no location; a component library or the COM bridge
 * can't be loaded or lacks its entry point; in process, component flags that aren't known or can't
 * be read), RC_UNSPECIFIED (the marshal library is missing or incomplete), RC_BAD_LOCATION (a
 * Remote URL that isn't tarvo://host:port, or a service failed with RC_SEE_LAST_ERROR),
 * RC_NULL_POINTER (the marshal library gave no service), otherwise what the component library or
 * the service gave. */
typedef TarvoResult tarvoCreatePMCInstanceFunction(const TarvoUUID* uuid, uint32_t flags,
                                                   IVaskInterface** instance);
TARVO_EXPORT tarvoCreatePMCInstanceFunction tarvoCreatePMCInstance;

/* ---- For component libraries ---------------------------------------------------------------- */

/* [any thread, one creation at a time] The entry point that every native component library exports
 * under this name, and the COM bridge too. The library calls it with a lock held, so it must not
 * itself create a native component (the COM bridge: a COM class in process) before it returns. A
 * component library that has been loaded stays loaded until the process ends.
 *   uuid      which component to create
 *   instance  out: the instance, with one reference for the caller; null when the call is made
 * RC_OK or any other code, which reaches the host as it is. */
typedef TarvoResult vaskCreateObjectFunction(const TarvoUUID* uuid, IVaskInterface** instance);
TARVO_ENTRY_POINT vaskCreateObjectFunction vaskCreateObject;

TARVO_END_DECLARATIONS

#endif
