/* Errors with a detail: what stands behind RC_SEE_LAST_ERROR, and the text of a result code.
 *
 * A failure that crosses several objects makes a chain: each object adds an error of its own and
 * points at the one that it caught. The last of the chain is where it began.
 */
#ifndef TARVO_ERROR_H
#define TARVO_ERROR_H

#include "base.h"

TARVO_BEGIN_DECLARATIONS

/* ---- IVaskError: one failure ---------------------------------------------------------------- */

/* A component may implement it for its own getLastError. Where it can't give one of the texts it
 * answers with RC_SEE_LAST_ERROR; whoever prints the error puts a phrase in the text's place. */
typedef struct IVaskErrorTable {
    /* [any thread] As in ITarvoBase. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [one thread at a time] Gives what went wrong.
     *   text  to fill
     * RC_OK, RC_NULL_POINTER, otherwise what `set` of the text gave. */
    TarvoResult (*getErrorText)(void* me, IVaskString* text);

    /* [one thread at a time] Gives the error that led to this one.
     *   cause  out: the error, with one reference for the caller; null if there is none
     * RC_OK, RC_NULL_POINTER. */
    TarvoResult (*getCause)(void* me, IVaskError** cause);

    /* [one thread at a time] Gives the object that failed, as its own name for itself.
     *   source  to fill
     * As getErrorText. */
    TarvoResult (*getSource)(void* me, IVaskString* source);

    /* [one thread at a time] Gives the operation that failed, such as
     * "IVaskPersistReader::GetReal".
     *   scope  to fill
     * As getErrorText. */
    TarvoResult (*getScope)(void* me, IVaskString* scope);
} IVaskErrorTable;

struct IVaskError {
    void* me;
    const IVaskErrorTable* table;
};

/* ---- The text of a result code -------------------------------------------------------------- */

/* [any thread] Gives the text of a result code in the language of the installation. A code that
 * isn't known gets the text of RC_UNSPECIFIED. Where the resource library is missing, the text
 * consists of the code's name and number, and says so if the code isn't known.
 *   code         any result code
 *   description  to fill
 * RC_OK, RC_NULL_POINTER, otherwise what `set` of the text gave. */
typedef TarvoResult getErrorDescriptionFunction(TarvoResult code, IVaskString* description);
TARVO_EXPORT getErrorDescriptionFunction getErrorDescription;

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
using ::IVaskErrorTable;
} // namespace TARVO
#endif

#endif
