/* IVaskPMCRegistrar: the registration of one native component, filled in field by field.
 *
 * It comes from a registry writer's createPMCRegistrar. Its `commit` only hands what was filled in
 * to the writer; the writer's own `commit` then brings it into the registry.
 */
#ifndef TARVO_REGISTRAR_H
#define TARVO_REGISTRAR_H

#include "base.h"

TARVO_BEGIN_DECLARATIONS

typedef struct IVaskPMCRegistrar IVaskPMCRegistrar;

/* The registrar keeps a reference to its writer. Name, version of the interface standard,
 * identifier and one location are required. A setter that fails leaves its field as it was. */
typedef struct IVaskPMCRegistrarTable {
    /* [any thread] As in ITarvoBase. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [one thread at a time] These seven set a text. Null empties it, and nothing is checked.
     * RC_OK. */
    TarvoResult (*setName)(void* me, const char16_t* text);
    TarvoResult (*setDescription)(void* me, const char16_t* text);
    TarvoResult (*setVaskVersion)(void* me, const char16_t* text); /* of the interface standard */
    TarvoResult (*setComponentVersion)(void* me, const char16_t* text);
    TarvoResult (*setVendorURL)(void* me, const char16_t* text);
    TarvoResult (*setHelpURL)(void* me, const char16_t* text);
    TarvoResult (*setAbout)(void* me, const char16_t* text);

    /* [one thread at a time] Sets the component's identifier.
     *   uuid  not all zero
     * RC_OK, RC_NULL_POINTER, RC_INVALID_ARGUMENT (all zero). */
    TarvoResult (*setUUID)(void* me, const TarvoUUID* uuid);

    /* [one thread at a time] Sets the ProgID, spelled as given.
     *   progId  not empty, without `/`, `\`, characters below 32 and unpaired surrogates
     * RC_OK, RC_NULL_POINTER, RC_INVALID_ARGUMENT. */
    TarvoResult (*setProgId)(void* me, const char16_t* progId);

    /* [one thread at a time] Adds a category; one that is there already stays.
     *   category  its identifier
     * RC_OK, RC_NULL_POINTER. */
    TarvoResult (*addCategory)(void* me, const TarvoUUID* category);

    /* [one thread at a time] Sets the component's flags (catalogue.h), unchecked; 0 at the start. A
     * component with other flags than the known ones can't be created in process.
     * RC_OK. */
    TarvoResult (*setFlags)(void* me, uint32_t flags);

    /* [one thread at a time] Sets where the component is to be found, in place of an earlier text
     * for the same location.
     *   location  a location number (catalogue.h) other than COM32 and COM64; one that doesn't
     *             exist is refused by the writer's commit only
     *   text      not empty: the path of the component library (Inproc32, Inproc64), the URL of a
     *             service (Remote) or the name of one (Local)
     * RC_OK, RC_INVALID_ARGUMENT (COM32 or COM64), RC_NULL_POINTER (text), RC_INVALID_ARGUMENT
     * (empty). */
    TarvoResult (*setLocation)(void* me, int32_t location, const char16_t* text);

    /* [one thread at a time] Hands a copy of the registration to the writer, in place of an earlier
     * one with the same identifier. The registrar can be changed and committed again.
     * RC_OK, RC_INCOMPLETE_REGISTRATION (something required is missing). */
    TarvoResult (*commit)(void* me);

    /* [one thread at a time] Sets the version-independent ProgID; otherwise as setProgId. */
    TarvoResult (*setVersionIndependentProgId)(void* me, const char16_t* progId);
} IVaskPMCRegistrarTable;

struct IVaskPMCRegistrar {
    void* me;
    const IVaskPMCRegistrarTable* table;
};

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
namespace TARVO_INTERNAL {
using ::IVaskPMCRegistrar;
using ::IVaskPMCRegistrarTable;
} // namespace TARVO_INTERNAL
using TARVO_INTERNAL::IVaskPMCRegistrar;
using TARVO_INTERNAL::IVaskPMCRegistrarTable;
} // namespace TARVO
#endif

#endif
