/* Making, printing and reading identifiers.
 *
 * The text form has 38 characters: {00112233-4455-6677-8899-aabbccddeeff}, the digits in the order
 * of the bytes.
 */
#ifndef TARVO_UUID_H
#define TARVO_UUID_H

#include "base.h"

TARVO_BEGIN_DECLARATIONS

/* [any thread] Makes a new identifier, by value; all zero if the system has no random numbers. */
typedef TarvoUUID vaskGenUUIDFunction(void);
TARVO_EXPORT vaskGenUUIDFunction vaskGenUUID;

/* [any thread] Prints an identifier: braces, lower-case digits.
 *   uuid  the identifier
 *   text  to fill
 * RC_OK, RC_NULL_POINTER (either address), otherwise what `set` of the text gave. */
typedef TarvoResult vaskStringFromUUIDFunction(const TarvoUUID* uuid, IVaskString* text);
TARVO_EXPORT vaskStringFromUUIDFunction vaskStringFromUUID;

/* [any thread] Reads an identifier. Lenient, as `scanf` is with numbers: digits may be of either case,
 * and each pair of them may stand behind white space, have its last digit alone, have a sign in place
 * of the first, or be 0x, which counts as 0. Nothing behind the last digit is looked at, not even the
 * closing brace.
 *   text  null-terminated
 *   uuid  out: the identifier; all zero on failure
 * RC_OK, RC_NULL_POINTER (uuid or text), RC_INVALID_ARGUMENT (not an identifier). */
typedef TarvoResult vaskUUIDFromStringFunction(const char16_t* text, TarvoUUID* uuid);
TARVO_EXPORT vaskUUIDFromStringFunction vaskUUIDFromString;

TARVO_END_DECLARATIONS

#endif
