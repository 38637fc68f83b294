/* The catalogue: which components (PMCs) exist, and what is known of each.
 *
 * There are native components, from the private registry, and COM classes, from the system's own
 * (the Windows Registry). Both answer through one interface; only their locations tell them apart.
 * A native component hides a COM class of the same identifier.
 */
#ifndef TARVO_CATALOGUE_H
#define TARVO_CATALOGUE_H

#include "base.h"
#include "collection.h"

/* Where a component is to be found: the location numbers. */
enum {
    TARVO_LOCATION_INPROC32 = 0, /* path of a 32-bit component library */
    TARVO_LOCATION_INPROC64 = 1, /* path of a 64-bit component library */
    TARVO_LOCATION_COM32 = 2,    /* the identifier of a COM class, in the 32-bit view */
    TARVO_LOCATION_COM64 = 3,    /* the identifier of a COM class, in the 64-bit view */
    TARVO_LOCATION_REMOTE = 4,   /* URL of a service on another machine: tarvo://host:port */
    TARVO_LOCATION_LOCAL = 5 /* name of a local service, which the marshal library understands */
};

/* The flags of a component. */
enum {
    TARVO_PMC_APARTMENT_THREADED = 1 /* bound to one single-threaded apartment */
};

TARVO_BEGIN_DECLARATIONS

/* ---- IVaskPMCRegistrationDetails: one component ---------------------------------------------- */

typedef struct IVaskPMCRegistrationDetails IVaskPMCRegistrationDetails;

/* Answers from the state of the registry that its enumerator had. Asked for ITarvoIdentification,
 * it gives the text of its identifier as component name.
 *
 * A text that the registration lacks comes as an empty one from a COM class, while a native
 * component leaves the caller's string untouched. So pass an empty string, and take an empty one
 * for absent. */
typedef struct IVaskPMCRegistrationDetailsTable {
    /* [any thread] As in IVaskInterface. No error is ever recorded. */
    void (*addReference)(void* me);
    void (*release)(void* me);
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId,
                                  IVaskInterface** interfaceReference);
    TarvoResult (*getLastError)(void* me, IVaskError** error);

    /* [any thread] Gives the name to show to people.
     *   name  to fill
     * RC_OK, RC_NULL_POINTER, otherwise what `set` of the text gave; from a native component also
     * RC_NOT_FOUND (it has none) and RC_WRONG_VALUE_TYPE. */
    TarvoResult (*getName)(void* me, IVaskString* name);

    /* [any thread] Gives the description, which may be absent.
     *   description  to fill
     * RC_OK, RC_NULL_POINTER. A COM class gives what `set` of the text gave. */
    TarvoResult (*getDescription)(void* me, IVaskString* description);

    /* [any thread] Gives the version of the interface standard that the component implements.
     *   version  to fill
     * As getName. */
    TarvoResult (*getVaskVersion)(void* me, IVaskString* version);

    /* [any thread] Gives the component's own version. As getDescription. */
    TarvoResult (*getComponentVersion)(void* me, IVaskString* version);

    /* [any thread] Gives the vendor's address. As getDescription. */
    TarvoResult (*getVendorURL)(void* me, IVaskString* url);

    /* [any thread] Gives the address of the help. As getDescription. */
    TarvoResult (*getHelpURL)(void* me, IVaskString* url);

    /* [any thread] Gives the text about the component. As getDescription. */
    TarvoResult (*getAbout)(void* me, IVaskString* about);

    /* [any thread] Gives the component's identifier.
     *   uuid  out: the identifier
     * RC_OK, RC_NULL_POINTER. */
    TarvoResult (*getUUID)(void* me, TarvoUUID* uuid);

    /* [any thread] Gives the ProgID. A native component without one gives the version-independent
     * one. As getDescription. */
    TarvoResult (*getProgId)(void* me, IVaskString* progId);

    /* [any thread] Gives the categories that the component is filed under, as texts of identifiers.
     *   categories  array of strings, to fill
     * RC_OK, RC_NULL_POINTER, otherwise what `resize` of the array gave; from a COM class also what
     * `set` of an item gave. */
    TarvoResult (*getCategories)(void* me, IVaskArray* categories);

    /* [any thread] Tells whether the component is filed under a category.
     *   category  its identifier
     *   result    out: 1 if it is, else 0; untouched on failure
     * RC_OK, RC_NULL_POINTER (either address). */
    TarvoResult (*isInCategory)(void* me, const TarvoUUID* category, uint32_t* result);

    /* [any thread] Gives the locations that the component has, ascending.
     *   locations  array of int32_t, to fill with location numbers
     * RC_OK (also if `resize` of the array fails), RC_NULL_POINTER. */
    TarvoResult (*getLocations)(void* me, IVaskArray* locations);

    /* [any thread] Gives the text of a location: a path, an identifier, a URL or a name.
     *   location  a location number
     *   text      to fill; untouched on failure
     * RC_OK, RC_NULL_POINTER, RC_NOT_FOUND (the component hasn't got that location, or there is no
     * such location), otherwise what `set` of the text gave; from a native component also
     * RC_WRONG_VALUE_TYPE. */
    TarvoResult (*getLocation)(void* me, uint32_t location, IVaskString* text);

    /* [any thread] Tells whether a location is registered in the all-users scope alone.
     *   location  a location number
     *   result    out: 1 if it is, else 0; not to be read on failure. A COM class takes any number
     *             as location and gives 0 if it is registered for the current user, else 1
     * RC_OK, RC_NULL_POINTER; from a native component also RC_NOT_FOUND (as in getLocation). */
    TarvoResult (*isLocationAllUsers)(void* me, uint32_t location, uint32_t* result);

    /* [any thread] Gives the flags of the component.
     *   flags  out: the flags, 0 if none are registered; not to be read on failure
     * RC_OK, RC_NULL_POINTER; from a native component also RC_WRONG_VALUE_TYPE. */
    TarvoResult (*getFlags)(void* me, uint32_t* flags);

    /* [any thread; waits] Creates an instance of the component, as tarvoCreatePMCInstance does
     * (instantiation.h), without its look-up.
     *   flags     creation flags
     *   instance  out: as in tarvoCreatePMCInstance, but untouched with RC_ELEVATION_REFUSED and
     *             with RC_INVALID_ARGUMENT
     * RC_OK, RC_NULL_POINTER, and those of tarvoCreatePMCInstance from RC_ELEVATION_REFUSED on. */
    TarvoResult (*createInstance)(void* me, uint32_t flags, IVaskInterface** instance);

    /* [any thread] Gives the version-independent ProgID. As getDescription. */
    TarvoResult (*getVersionIndependentProgId)(void* me, IVaskString* progId);
} IVaskPMCRegistrationDetailsTable;

struct IVaskPMCRegistrationDetails {
    void* me;
    const IVaskPMCRegistrationDetailsTable* table;
};

/* ---- IVaskPMCEnumerator: finding components -------------------------------------------------- */

typedef struct IVaskPMCEnumerator IVaskPMCEnumerator;

/* Answers from the private registry as it was when the enumerator was made, and keeps its answer
 * for each category; a new enumerator sees what has changed since. Otherwise COM classes are looked
 * up at each call. Entries that make no sense are passed over without a word.
 *
 * Collections are named "PMCs". Their items, to be asked for IVaskPMCRegistrationDetails, are in
 * ascending order of their identifiers, and each component stands in them once, if it
 * is registered under one spelling of its identifier. */
typedef struct IVaskPMCEnumeratorTable {
    /* [any thread] As in ITarvoBase. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [one thread at a time] Finds the component with an identifier.
     *   uuid     the identifier
     *   details  out: the component, with one reference for the caller; null if it isn't found
     * RC_OK, RC_NULL_POINTER (uuid or details), RC_NOT_FOUND. */
    TarvoResult (*getPMCByUUID)(void* me, const TarvoUUID* uuid,
                                IVaskPMCRegistrationDetails** details);

    /* [one thread at a time] Finds the component with a ProgID, without regard to case.
     *   progId   the ProgID, version-dependent or not
     *   details  out: the component, with one reference for the caller; null if it isn't found
     * RC_OK, RC_NULL_POINTER (progId or details), RC_INVALID_ARGUMENT (progId is empty),
     * RC_NOT_FOUND, RC_WRONG_VALUE_TYPE (not found, and the registry's entry is damaged). */
    TarvoResult (*getPMCByProgId)(void* me, const char16_t* progId,
                                  IVaskPMCRegistrationDetails** details);

    /* [one thread at a time] Finds the components that are filed under at least one of some
     * categories.
     *   categories  `count` identifiers; not null even if the count is 0
     *   count       number of categories
     *   pmcs        out: the components, with one reference for the caller; may be empty
     * RC_OK, RC_NULL_POINTER (categories or pmcs). */
    TarvoResult (*getPMCsInCategories)(void* me, const TarvoUUID* categories, uint32_t count,
                                       ITarvoCollection** pmcs);

    /* [one thread at a time] Finds all components. A COM class is one if it is filed under a
     * category of the type library that marks components, which must be registered for that:
     * {3b78cdeb-7fe8-4542-b58b-26205774d82a}.
     *   pmcs  out: the components, with one reference for the caller; may be empty
     * RC_OK, RC_NULL_POINTER. */
    TarvoResult (*getAllPMCs)(void* me, ITarvoCollection** pmcs);
} IVaskPMCEnumeratorTable;

struct IVaskPMCEnumerator {
    void* me;
    const IVaskPMCEnumeratorTable* table;
};

/* ---- Making an enumerator -------------------------------------------------------------------- */

/* [any thread; waits] Makes an enumerator on both scopes of the registry as the files hold it now.
 * Waits as vaskGetRegistryKey does (registry.h).
 *   enumerator  out: the enumerator, with one reference for the caller; null on failure
 * RC_OK, RC_NULL_POINTER, RC_ACCESS_DENIED and RC_UNSPECIFIED (as from vaskGetRegistryKey). */
typedef TarvoResult vaskGetPMCEnumeratorFunction(IVaskPMCEnumerator** enumerator);
TARVO_EXPORT vaskGetPMCEnumeratorFunction vaskGetPMCEnumerator;

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
using ::IVaskPMCRegistrationDetails;
using ::IVaskPMCRegistrationDetailsTable;
namespace TARVO_INTERNAL {
using ::IVaskPMCEnumerator;
using ::IVaskPMCEnumeratorTable;
} // namespace TARVO_INTERNAL
using TARVO_INTERNAL::IVaskPMCEnumerator;
using TARVO_INTERNAL::IVaskPMCEnumeratorTable;
} // namespace TARVO
#endif

#endif
