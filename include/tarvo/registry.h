/* Reading the registry: keys that hold named values and further keys.
 *
 * The registry exists twice, for all users of the machine and for the current user. A reader sees
 * the two as one; a value in the user's scope hides one of the same name and place in the other,
 * whatever its type. A key object is a view of the registry as it was when the object was made: to
 * see a later change, open the key again.
 *
 * Names are kept in lower case and compared without regard to the case of A to Z; names that come
 * back are in lower case. A path is a row of key names with `/` or `\` between them, and one more
 * may stand at its end.
 */
#ifndef TARVO_REGISTRY_H
#define TARVO_REGISTRY_H

#include "base.h"

/* What a value can hold: the RegistryValueType. */
enum {
    TARVO_REGISTRY_STRING = 0,  /* text */
    TARVO_REGISTRY_INTEGER = 1, /* 32-bit signed number */
    TARVO_REGISTRY_UUID = 2,    /* identifier */
    TARVO_REGISTRY_EMPTY = 3    /* nothing: the value is there, and that is all */
};

TARVO_BEGIN_DECLARATIONS

/* ---- IVaskRegistryKey: a key to read --------------------------------------------------------- */

typedef struct IVaskRegistryKey IVaskRegistryKey;

/* The `path` of a value operation leads from this key to the one that holds the value. It may be
 * null for this key itself; an empty path leads nowhere. No slot waits or looks at a file. */
typedef struct IVaskRegistryKeyTable {
    /* [any thread] As in ITarvoBase. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [any thread] Gives the names of this key's values, each once, in no particular order.
     *   names  array of strings, to fill
     * RC_OK, RC_NULL_POINTER (names, or an item that the array gave), otherwise what `resize` of the
     * array or `set` of an item gave. */
    TarvoResult (*getValueNames)(void* me, IVaskArray* names);

    /* [any thread] Gives the type of a value.
     *   name  of the value
     *   path  from this key to the value's key; may be null
     *   type  out: one of the numbers above; untouched on failure
     * RC_OK, RC_NULL_POINTER (name or type), RC_NOT_FOUND (no such key or value). */
    TarvoResult (*getValueType)(void* me, const char16_t* name, const char16_t* path,
                                uint32_t* type);

    /* [any thread] Gives the text of a value of type string.
     *   name, path  as in getValueType
     *   value       to fill; untouched on failure
     * RC_OK, RC_NULL_POINTER (name or value), RC_NOT_FOUND, RC_WRONG_VALUE_TYPE, otherwise what
     * `set` of the text gave. */
    TarvoResult (*getStringValue)(void* me, const char16_t* name, const char16_t* path,
                                  IVaskString* value);

    /* [any thread] Gives the number of a value of type integer.
     *   name, path  as in getValueType
     *   value       out: the number; untouched on failure
     * RC_OK, RC_NULL_POINTER (name or value), RC_NOT_FOUND, RC_WRONG_VALUE_TYPE. */
    TarvoResult (*getIntegerValue)(void* me, const char16_t* name, const char16_t* path,
                                   int32_t* value);

    /* [any thread] Gives the identifier of a value of type uuid.
     *   name, path  as in getValueType
     *   value       out: the identifier; all zero on failure
     * RC_OK, RC_NULL_POINTER (name or value), RC_NOT_FOUND, RC_WRONG_VALUE_TYPE. */
    TarvoResult (*getUUIDValue)(void* me, const char16_t* name, const char16_t* path,
                                TarvoUUID* value);

    /* [any thread] Gives the names of this key's sub-keys; otherwise as getValueNames. */
    TarvoResult (*getKeyNames)(void* me, IVaskArray* names);

    /* [any thread] Opens a key below this one. The new object shows the same state of the registry
     * as this one.
     *   path  from this key to the other; required, and an empty one leads nowhere
     *   key   out: the key, with one reference for the caller; written on success only
     * RC_OK, RC_NULL_POINTER (path or key), RC_NOT_FOUND (no such key). */
    TarvoResult (*getKey)(void* me, const char16_t* path, IVaskRegistryKey** key);

    /* [any thread] Tells which scope one of this key's values comes from.
     *   name    of the value
     *   result  out: 1 if it stands in the all-users scope alone, 0 if the user's scope has it;
     *           0 if there is no such value, untouched if name is null
     * RC_OK, RC_NULL_POINTER (name or result), RC_NOT_FOUND (no such value). */
    TarvoResult (*isAllUsersValue)(void* me, const char16_t* name, uint32_t* result);
} IVaskRegistryKeyTable;

struct IVaskRegistryKey {
    void* me;
    const IVaskRegistryKeyTable* table;
};

/* ---- Opening a key --------------------------------------------------------------------------- */

/* [any thread; waits] Opens a key of both scopes, as the files hold it now. Waits while another
 * process writes a file, without a limit. A file that is missing counts as empty, and for one that
 * is malformed the last good state that this process has read stays in force.
 *   path  from the root, with `/` or `\` in front; null, empty or a single separator is the root
 *   key   out: the key, with one reference for the caller; null on failure
 * RC_OK, RC_NULL_POINTER (key), RC_NOT_FOUND (no separator in front of the path, or no such key in
 * either scope), RC_ACCESS_DENIED (no right to read a file), RC_UNSPECIFIED (a file can't be read
 * for another reason). */
typedef TarvoResult vaskGetRegistryKeyFunction(const char16_t* path, IVaskRegistryKey** key);
TARVO_EXPORT vaskGetRegistryKeyFunction vaskGetRegistryKey;

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
namespace TARVO_INTERNAL {
using ::IVaskRegistryKey;
using ::IVaskRegistryKeyTable;
} // namespace TARVO_INTERNAL
using TARVO_INTERNAL::IVaskRegistryKey;
using TARVO_INTERNAL::IVaskRegistryKeyTable;
} // namespace TARVO
#endif

#endif
