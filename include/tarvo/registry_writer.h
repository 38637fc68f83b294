/* Changing the registry, and registering components and type libraries, in one scope.
 *
 * A writer records what it is told to change. Nothing reaches the file before `commit`, which
 * applies the record to what the file holds at that moment: writers in several threads and
 * processes keep each other's work, and where two change the same value the later commit wins. A
 * writer that is released without a commit leaves no trace.
 *
 * A writer and the key writers and registrars that come from it belong to one thread at a time, all
 * together.
 */
#ifndef TARVO_REGISTRY_WRITER_H
#define TARVO_REGISTRY_WRITER_H

#include "base.h"
#include "registry.h"

/* The scope flag: any number but 0 chooses all users. */
enum { TARVO_SCOPE_CURRENT_USER = 0, TARVO_SCOPE_ALL_USERS = 1 };

TARVO_BEGIN_DECLARATIONS

typedef struct IVaskPMCRegistrar IVaskPMCRegistrar; /* registrar.h */

/* ---- IVaskRegistryKeyWriter: a key to change ------------------------------------------------- */

typedef struct IVaskRegistryKeyWriter IVaskRegistryKeyWriter;

/* Reading shows the scope as it was when the writer was made, with the writer's own changes. For
 * changes, a path leads from this key and must not be empty, have a separator in front, an empty
 * component or a character below 32; the name of a value must not be empty nor hold `/`, `\` or a
 * character below 32. An unpaired surrogate is refused in both, since it could not be read back. A
 * call that fails changes nothing. */
typedef struct IVaskRegistryKeyWriterTable {
    /* [any thread] As in ITarvoBase. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [one thread at a time] As in IVaskRegistryKey, for the one scope. */
    TarvoResult (*getValueNames)(void* me, IVaskArray* names);
    TarvoResult (*getValueType)(void* me, const char16_t* name, const char16_t* path,
                                uint32_t* type);
    TarvoResult (*getStringValue)(void* me, const char16_t* name, const char16_t* path,
                                  IVaskString* value);
    TarvoResult (*getIntegerValue)(void* me, const char16_t* name, const char16_t* path,
                                   int32_t* value);
    TarvoResult (*getUUIDValue)(void* me, const char16_t* name, const char16_t* path,
                                TarvoUUID* value);
    TarvoResult (*getKeyNames)(void* me, IVaskArray* names);
    TarvoResult (*getKey)(void* me, const char16_t* path, IVaskRegistryKey** key);
    TarvoResult (*isAllUsersValue)(void* me, const char16_t* name, uint32_t* result);

    /* [one thread at a time] Opens a key below this one to change it, and creates what is missing
     * on the way. A key that is there stays as it is.
     *   path  from this key
     *   key   out: the key writer, with one reference for the caller; written on success only
     * RC_OK, RC_NULL_POINTER (path or key), RC_INVALID_KEY_NAME. */
    TarvoResult (*createKey)(void* me, const char16_t* path, IVaskRegistryKeyWriter** key);

    /* [one thread at a time] Deletes a key with all below it.
     *   path  from this key
     * RC_OK (also if there is no such key), RC_NULL_POINTER, RC_INVALID_KEY_NAME. */
    TarvoResult (*deleteKey)(void* me, const char16_t* path);

    /* [one thread at a time] Deletes a value.
     *   path  from this key to the value's key; null or empty for this key itself
     *   name  of the value
     * RC_OK (also if there is no such key or value), RC_NULL_POINTER (name), RC_INVALID_KEY_NAME
     * (name or path). */
    TarvoResult (*deleteValue)(void* me, const char16_t* path, const char16_t* name);

    /* [one thread at a time] Sets a value of type string in place of whatever has the name.
     *   name   of the value
     *   value  the text; null counts as empty
     * RC_OK, RC_NULL_POINTER (name), RC_INVALID_KEY_NAME. */
    TarvoResult (*setStringValue)(void* me, const char16_t* name, const char16_t* value);

    /* [one thread at a time] Sets a value of type integer; otherwise as setStringValue. */
    TarvoResult (*setIntegerValue)(void* me, const char16_t* name, int32_t value);

    /* [one thread at a time] Sets a value of type uuid.
     *   name   of the value
     *   value  the identifier
     * RC_OK, RC_NULL_POINTER (name or value), RC_INVALID_KEY_NAME. */
    TarvoResult (*setUUIDValue)(void* me, const char16_t* name, const TarvoUUID* value);

    /* [one thread at a time] Sets a value of type empty; otherwise as setStringValue. */
    TarvoResult (*setEmptyValue)(void* me, const char16_t* name);
} IVaskRegistryKeyWriterTable;

struct IVaskRegistryKeyWriter {
    void* me;
    const IVaskRegistryKeyWriterTable* table;
};

/* ---- IVaskRegistryWriter: one set of changes ------------------------------------------------- */

typedef struct IVaskRegistryWriter IVaskRegistryWriter;

/* A path here leads from the root and starts with `/` or `\`; that separator alone, and an empty
 * path, is the root. A nil identifier is one of 16 zero bytes. */
typedef struct IVaskRegistryWriterTable {
    /* [any thread] As in ITarvoBase. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [one thread at a time] Opens a key to change it, and creates what is missing on the way.
     *   path  from the root; null is the root
     *   key   out: the key writer, with one reference for the caller; null on failure
     * RC_OK, RC_NULL_POINTER (key), RC_INVALID_KEY_NAME (no separator in front, an empty
     * component, or a character below 32). */
    TarvoResult (*getKeyWriter)(void* me, const char16_t* path, IVaskRegistryKeyWriter** key);

    /* [one thread at a time] Opens a key to read it, with this writer's changes and without the
     * other scope. The key doesn't show what the writer changes later.
     *   path  from the root; null is the root
     *   key   out: the key, with one reference for the caller; null on failure
     * RC_OK, RC_NULL_POINTER (key), RC_INVALID_KEY_NAME (no separator in front), RC_NOT_FOUND. */
    TarvoResult (*getKey)(void* me, const char16_t* path, IVaskRegistryKey** key);

    /* [one thread at a time] Deletes a key with all below it.
     *   path  from the root
     * RC_OK (also if there is no such key), RC_NULL_POINTER, RC_ACCESS_DENIED (the root can't be
     * deleted), RC_INVALID_KEY_NAME (as in getKeyWriter). */
    TarvoResult (*deleteKey)(void* me, const char16_t* path);

    /* [one thread at a time] Deletes a value.
     *   path  from the root to the value's key; not null
     *   name  of the value
     * RC_OK (also if there is no such key or value), RC_NULL_POINTER (path or name),
     * RC_INVALID_KEY_NAME (path as in getKeyWriter, or name). */
    TarvoResult (*deleteValue)(void* me, const char16_t* path, const char16_t* name);

    /* [one thread at a time] Starts the registration of a native component (registrar.h).
     *   registrar  out: an empty registration, with one reference for the caller
     * RC_OK, RC_NULL_POINTER. */
    TarvoResult (*createPMCRegistrar)(void* me, IVaskPMCRegistrar** registrar);

    /* [one thread at a time] Removes a native component at the next commit. A registration of it
     * that is waiting in this writer is dropped; one that is added later is carried out after the
     * removal.
     *   uuid  of the component
     * RC_OK (also if there is no such component), RC_NULL_POINTER, RC_INVALID_ARGUMENT (nil). */
    TarvoResult (*unregisterPMC)(void* me, const TarvoUUID* uuid);

    /* [one thread at a time] Removes one location of a native component at the next commit, and the
     * component as a whole if it has no other.
     *   uuid      of the component
     *   location  a location number (catalogue.h) other than COM32 and COM64
     * RC_OK (also if there is no such component), RC_NULL_POINTER (uuid), RC_INVALID_ARGUMENT (nil,
     * or a location that isn't allowed). COM32 and COM64 are refused before uuid is looked at.
     * Looks at what this writer's keys hold: a registration that is waiting in it isn't seen. */
    TarvoResult (*unregisterPMCLocation)(void* me, const TarvoUUID* uuid, int32_t location);

    /* [one thread at a time] Drops all recorded changes to keys and all waiting registrations and
     * removals of components; what a commit has brought into the file stays there. Definition files
     * that registerLibrary and unregisterLibrary have queued stay queued. Key writers that a caller
     * still holds are cut off: commit doesn't see what they change.
     * RC_OK. */
    TarvoResult (*revert)(void* me);

    /* [one thread at a time; waits] Brings everything recorded into the file: keys, components,
     * type libraries. Native components that run in process are also published to the system
     * registry (the Windows Registry), for hosts that know only COM; one that can't be published is
     * left out there without a failure. Waits for other commits of the process, for other processes
     * that have the file open, without a limit, and up to 10 seconds for each file to copy.
     * The writer can be used on afterwards. Changes to keys stay recorded, and a further commit
     * applies them once more; the rest is done with. After a failure everything stays recorded, and
     * the call can be repeated. The file is as it was then, unless writing it failed: its `.backup`
     * holds the state before. What has been published is not taken back.
     * RC_OK, RC_NO_DATA_FOLDER (the scope has no data folder, or the backup or a definition file
     * can't be copied), RC_ACCESS_DENIED (no right to the file), RC_BAD_REGISTRY_FILE (the file is
     * malformed), RC_INVALID_ARGUMENT (a component has a location that isn't allowed),
     * RC_UNSPECIFIED (the file can't be opened, read or fully written for another reason). */
    TarvoResult (*commit)(void* me);

    /* [one thread at a time; waits] Registers the type libraries of a definition file, and queues
     * the file to be kept beside the registry file at the next commit. A library that the file
     * has with a version is passed over, without a failure, if the definition gives it none or a
     * greater one: to bring a library to a later version, unregister it first. Waits as
     * vaskGetRegistryKey does.
     *   definition  path of the file; passed on to the definition parser as it is
     * RC_OK, RC_PARSER_FAILED (the parser is missing or refused the definition), RC_ACCESS_DENIED
     * and RC_UNSPECIFIED (as from vaskGetRegistryKey), otherwise the code of an object of the
     * parser that failed, with the changes up to there recorded. */
    TarvoResult (*registerLibrary)(void* me, const char16_t* definition);

    /* [one thread at a time; waits] Removes a type library, all that it defines and its definition
     * file at the next commit. What it defines is looked up in the registry file: of a library that
     * this writer has registered and not yet committed, the items stay. Waits as vaskGetRegistryKey
     * does.
     *   library  its identifier
     * RC_OK (also if there is no such library), RC_NULL_POINTER, RC_ACCESS_DENIED and
     * RC_UNSPECIFIED (as from vaskGetRegistryKey). */
    TarvoResult (*unregisterLibrary)(void* me, const TarvoUUID* library);

    /* [one thread at a time] Sets where a type library's code lies. The library need not be
     * registered yet.
     *   library   its identifier
     *   location  Inproc32, Inproc64, COM32 or COM64 (catalogue.h)
     *   text      the location; may be empty
     * RC_OK, RC_INVALID_ARGUMENT (location), RC_NULL_POINTER (text or library), RC_INVALID_ARGUMENT
     * (nil). */
    TarvoResult (*setLibraryLocation)(void* me, const TarvoUUID* library, uint32_t location,
                                      const char16_t* text);

    /* [one thread at a time] Removes a location of a type library.
     *   library, location  as in setLibraryLocation
     * RC_OK (also if it isn't set), RC_INVALID_ARGUMENT (location), RC_NULL_POINTER (library),
     * RC_INVALID_ARGUMENT (nil). */
    TarvoResult (*removeLibraryLocation)(void* me, const TarvoUUID* library, uint32_t location);
} IVaskRegistryWriterTable;

struct IVaskRegistryWriter {
    void* me;
    const IVaskRegistryWriterTable* table;
};

/* ---- Making a writer ------------------------------------------------------------------------- */

/* [any thread; waits] Makes a writer for one scope. For all users the process must be elevated (on
 * Linux: run as root) and the file be writable; it is created if it is missing. Waits while another
 * process has the file open, without a limit.
 *   allUsers  the scope flag
 *   writer    out: the writer, with one reference for the caller; null on failure
 * RC_OK, RC_NULL_POINTER, RC_ACCESS_DENIED (the process isn't elevated, or has no right to the
 * file), RC_UNSPECIFIED (the file can't be opened or read for another reason). */
typedef TarvoResult vaskGetRegistryWriterFunction(uint8_t allUsers, IVaskRegistryWriter** writer);
TARVO_EXPORT vaskGetRegistryWriterFunction vaskGetRegistryWriter;

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
namespace TARVO_INTERNAL {
using ::IVaskRegistryKeyWriter;
using ::IVaskRegistryKeyWriterTable;
using ::IVaskRegistryWriter;
using ::IVaskRegistryWriterTable;
} // namespace TARVO_INTERNAL
using TARVO_INTERNAL::IVaskRegistryKeyWriter;
using TARVO_INTERNAL::IVaskRegistryKeyWriterTable;
using TARVO_INTERNAL::IVaskRegistryWriter;
using TARVO_INTERNAL::IVaskRegistryWriterTable;
} // namespace TARVO
#endif

#endif
