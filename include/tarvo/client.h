/* Finding and binding the library, for programs that use it.
 *
 * Nobody links to TARVO.dll. A program links the small static library tarvo_client instead, which
 * finds the newest installation on the machine, loads it, checks its version and binds every
 * function by name:
 *
 *     if (!loadTarvoLibrary(message)) ...           once, before other threads are started
 *     tarvoEntryPoints()->vaskGetRegistryKey(path, &key)
 */
#ifndef TARVO_CLIENT_H
#define TARVO_CLIENT_H

#include "catalogue.h"
#include "data.h"
#include "environment.h"
#include "error.h"
#include "instantiation.h"
#include "library.h"
#include "persistence.h"
#include "registry.h"
#include "registry_writer.h"
#include "uuid.h"

#ifndef __cplusplus
#include <stdbool.h>
#endif

TARVO_BEGIN_DECLARATIONS

/* The functions of the bound library; null where it hasn't been bound. */
typedef struct TarvoEntryPoints {
    vaskGenUUIDFunction* vaskGenUUID;
    vaskStringFromUUIDFunction* vaskStringFromUUID;
    vaskUUIDFromStringFunction* vaskUUIDFromString;
    getTarvoDataFolderFunction* getTarvoDataFolder;
    getTarvoUserDataFolderFunction* getTarvoUserDataFolder;
    getTarvoFolderFunction* getTarvoFolder;
    getTarvoLanguageFunction* getTarvoLanguage;
    getTarvoVersionFunction* getTarvoVersion;
    getErrorDescriptionFunction* getErrorDescription;
    vaskGetRegistryKeyFunction* vaskGetRegistryKey;
    vaskGetPMCEnumeratorFunction* vaskGetPMCEnumerator;
    vaskGetLibraryEnumeratorFunction* vaskGetLibraryEnumerator;
    vaskGetRegistryWriterFunction* vaskGetRegistryWriter;
    tarvoCreatePMCInstanceFunction* tarvoCreatePMCInstance;
    const VaskDataClassFactory* dataClassFactory;
    tarvoDepersistFromTransitionFormatFunction* tarvoDepersistFromTransitionFormat;
    tarvoDepersistPMCFromTransitionFormatFunction* tarvoDepersistPMCFromTransitionFormat;
} TarvoEntryPoints;

/* [any thread, after loadTarvoLibrary] The table of this program. */
const TarvoEntryPoints* tarvoEntryPoints(void);

/* [one thread, before others are started] Binds the newest installed library, and keeps it loaded
 * to the end of the process. An installation is a key "Software\Ostrandia\TARVO\x64" of the system's
 * registry, with the folder as its default value and the version as "version". The user's and the
 * machine's are looked at; a process with the full rights of an administrator looks at the
 * machine's alone, since any program of the user's could have written the other. The user's counts
 * if both have the same version. A later call binds anew without looking again.
 *   message  receives why it failed; may be null
 * True if all functions are bound and the version is new enough. In C++ it raises
 * tarvo::Error (error.hpp) with the code of the message's `set` if that fails. */
bool loadTarvoLibrary(IVaskString* message);

/* [one thread, before others are started] Tells whether the bound library is at least of the version
 * that this program was compiled for; a part of loadTarvoLibrary. True also if there is no library,
 * or if it can't give its version.
 *   message  receives why not; may be null
 * Raises as loadTarvoLibrary. */
bool checkTarvoVersion(IVaskString* message);

TARVO_END_DECLARATIONS

#endif
