/* Type libraries: which are registered, and which of them defines an interface.
 *
 * An enumerator reads both scopes once, when it is made. Of a library that stands in both, the one
 * with the higher version counts, and the current user's if neither is higher. To see a later
 * change, make a new enumerator.
 */
#ifndef TARVO_LIBRARY_H
#define TARVO_LIBRARY_H

#include "base.h"
#include "collection.h"

TARVO_BEGIN_DECLARATIONS

/* ---- IVaskLibraryDetails: one type library --------------------------------------------------- */

typedef struct IVaskLibraryDetails IVaskLibraryDetails;

/* Asked for ITarvoIdentification, it gives its name, and the name with " type library" behind it as
 * description. */
typedef struct IVaskLibraryDetailsTable {
    /* [any thread] As in IVaskInterface. No error is ever recorded. */
    void (*addReference)(void* me);
    void (*release)(void* me);
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId,
                                  IVaskInterface** interfaceReference);
    TarvoResult (*getLastError)(void* me, IVaskError** error);

    /* [any thread] Gives the library's name.
     *   name  to fill
     * RC_OK (whatever `set` of the text gave), RC_NULL_POINTER. */
    TarvoResult (*getName)(void* me, IVaskString* name);

    /* [any thread] Gives the library's identifier.
     *   uuid  out: the identifier
     * RC_OK, RC_NULL_POINTER. */
    TarvoResult (*getUUID)(void* me, TarvoUUID* uuid);

    /* [any thread] Gives the library's version, numbers with points between them; empty if it has
     * none.
     *   version  to fill
     * As getName. */
    TarvoResult (*getVersion)(void* me, IVaskString* version);

    /* [any thread] Gives the full path of the library's definition, as it was kept at its
     * registration. Nobody has looked whether the file is still there.
     *   path  to fill
     * As getName. */
    TarvoResult (*getDefinitionPath)(void* me, IVaskString* path);

    /* [any thread] Gives the text of one of the library's locations.
     *   location  a location number (catalogue.h)
     *   text      to fill; untouched on failure
     * RC_OK (whatever `set` of the text gave), RC_NULL_POINTER, RC_NOT_AVAILABLE (the library
     * hasn't got that location, or there is no such location). */
    TarvoResult (*getLocation)(void* me, int32_t location, IVaskString* text);
} IVaskLibraryDetailsTable;

struct IVaskLibraryDetails {
    void* me;
    const IVaskLibraryDetailsTable* table;
};

/* ---- IVaskLibraryEnumerator: finding type libraries ------------------------------------------ */

typedef struct IVaskLibraryEnumerator IVaskLibraryEnumerator;

/* A details object lives on without its enumerator. */
typedef struct IVaskLibraryEnumeratorTable {
    /* [any thread] As in ITarvoBase. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [any thread] Finds the library with an identifier.
     *   uuid     the identifier
     *   details  out: the library, with one reference for the caller; written on success only
     * RC_OK, RC_NULL_POINTER (uuid or details), RC_NOT_AVAILABLE. */
    TarvoResult (*getLibraryByUUID)(void* me, const TarvoUUID* uuid, IVaskLibraryDetails** details);

    /* [any thread] Finds the library with a name, spelled exactly; one of them if several have it.
     *   name     the name
     *   details  out: the library, with one reference for the caller; written on success only
     * RC_OK, RC_NULL_POINTER (name or details), RC_NOT_AVAILABLE. */
    TarvoResult (*getLibraryByName)(void* me, const char16_t* name, IVaskLibraryDetails** details);

    /* [any thread] Gives all libraries, in ascending order of their identifiers; of several with
     * the same name, only the one that getLibraryByName finds. The collection is named "Libraries",
     * its items are to be asked for IVaskLibraryDetails.
     *   libraries  out: the libraries, with one reference for the caller; may be empty
     * RC_OK, RC_NULL_POINTER. */
    TarvoResult (*getAllLibraries)(void* me, ITarvoCollection** libraries);

    /* [any thread] Finds the library that defines an interface.
     *   interfaceId  the interface's identifier
     *   details      out: the library, with one reference for the caller; written on success only
     * RC_OK, RC_NULL_POINTER (either address), RC_NOT_AVAILABLE. */
    TarvoResult (*getLibraryOfInterface)(void* me, const TarvoUUID* interfaceId,
                                         IVaskLibraryDetails** details);
} IVaskLibraryEnumeratorTable;

struct IVaskLibraryEnumerator {
    void* me;
    const IVaskLibraryEnumeratorTable* table;
};

/* ---- Making an enumerator -------------------------------------------------------------------- */

/* [any thread; waits] Makes an enumerator of the registry as the files hold it now. A scope whose
 * file can't be read counts as empty. Waits as vaskGetRegistryKey does (registry.h).
 *   enumerator  out: the enumerator, with one reference for the caller
 * RC_OK, RC_NULL_POINTER. */
typedef TarvoResult vaskGetLibraryEnumeratorFunction(IVaskLibraryEnumerator** enumerator);
TARVO_EXPORT vaskGetLibraryEnumeratorFunction vaskGetLibraryEnumerator;

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
using ::IVaskLibraryDetails;
using ::IVaskLibraryDetailsTable;
namespace TARVO_INTERNAL {
using ::IVaskLibraryEnumerator;
using ::IVaskLibraryEnumeratorTable;
} // namespace TARVO_INTERNAL
using TARVO_INTERNAL::IVaskLibraryEnumerator;
using TARVO_INTERNAL::IVaskLibraryEnumeratorTable;
} // namespace TARVO
#endif

#endif
