/* Where the installation and its data lie, what it calls itself, and stopping it.
 *
 * The folder texts end in the platform's separator, so that a file name can be put behind them as
 * it is: `\` on Windows, `/` on Linux.
 */
#ifndef TARVO_ENVIRONMENT_H
#define TARVO_ENVIRONMENT_H

#include "base.h"

TARVO_BEGIN_DECLARATIONS

/* [any thread] Gives the folder that the library itself lies in.
 *   folder  to fill
 * RC_OK, RC_NULL_POINTER, otherwise what `set` of the text gave. */
typedef TarvoResult getTarvoFolderFunction(IVaskString* folder);
TARVO_EXPORT getTarvoFolderFunction getTarvoFolder;

/* [any thread; waits] Gives the data folder of the all-users scope. The first call of the process
 * makes the folder if it isn't there yet; what came of that holds for the rest of the process.
 * Calls wait for one another to the end of `set` of the text, so `set` must not call this function.
 *   folder  to fill; the text is empty if the folder couldn't be had
 * RC_OK, RC_NULL_POINTER, otherwise what `set` of the text gave. */
typedef TarvoResult getTarvoDataFolderFunction(IVaskString* folder);
TARVO_EXPORT getTarvoDataFolderFunction getTarvoDataFolder;

/* [any thread; waits] Gives the data folder of the current-user scope; otherwise as
 * getTarvoDataFolder, with a wait of its own. */
typedef TarvoResult getTarvoUserDataFolderFunction(IVaskString* folder);
TARVO_EXPORT getTarvoUserDataFolderFunction getTarvoUserDataFolder;

/* [any thread] Gives the tag of the language that the installation's texts are in.
 *   language  to fill; the text is empty where the resource library is missing
 * RC_OK, RC_NULL_POINTER, otherwise what `set` of the text gave. */
typedef TarvoResult getTarvoLanguageFunction(IVaskString* language);
TARVO_EXPORT getTarvoLanguageFunction getTarvoLanguage;

/* [any thread] Gives the version of the library, four numbers with points between them: "1.2.1.2".
 *   version  to fill
 * RC_OK, RC_NULL_POINTER, otherwise what `set` of the text gave. */
typedef TarvoResult getTarvoVersionFunction(IVaskString* version);
TARVO_EXPORT getTarvoVersionFunction getTarvoVersion;

/* [any thread; waits] Stops the marshaler services that creations have started. With none started
 * it returns at once, otherwise it takes half a second or more; it also waits for the start of a
 * service on another thread. Nothing else is stopped: objects stay valid, and a later creation
 * starts a new service. If a service refuses to stop, those behind it keep running, and a
 * further call tries all of them again. */
typedef void tarvoTerminateFunction(void);
TARVO_EXPORT tarvoTerminateFunction tarvoTerminate;

TARVO_END_DECLARATIONS

#endif
