/* Making, printing and reading identifiers.
 *
 * The text form has 38 characters: {00112233-4455-6677-8899-aabbccddeeff}, the digits in the order
 * of the bytes.
 */
#ifndef TARVO_UUID_H
#define TARVO_UUID_H

#include "base.h"

TARVO_BEGIN_DECLARATIONS

/* [any thread] Makes a new identifier, by value. */
typedef TarvoUUID vaskGenUUIDFunction(void);
TARVO_EXPORT vaskGenUUIDFunction vaskGenUUID;

/* [any thread] Prints an identifier: braces, lower-case digits.
 *   uuid  the identifier
 *   text  to fill
 * RC_OK, RC_NULL_POINTER (either address), otherwise what `set` of the text gave. */
typedef TarvoResult vaskStringFromUUIDFunction(const TarvoUUID* uuid, IVaskString* text);
TARVO_EXPORT vaskStringFromUUIDFunction vaskStringFromUUID;

/* [any thread] Reads an identifier. Lenient: it takes digits of either case and blanks before a pair
 * of digits, and looks at nothing behind the last digit, not even for the closing brace.
 *   text  null-terminated
 *   uuid  out: the identifier; all zero on failure
 * RC_OK, RC_NULL_POINTER (uuid or text), RC_INVALID_ARGUMENT (not an identifier). */
typedef TarvoResult vaskUUIDFromStringFunction(const char16_t* text, TarvoUUID* uuid);
TARVO_EXPORT vaskUUIDFromStringFunction vaskUUIDFromString;

TARVO_END_DECLARATIONS

#endif
