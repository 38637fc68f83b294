/* A caller in plain C: what it does to the library is done by a C compiler's reading of the
 * headers.
 */
#ifndef TARVO_TESTS_INCLUDE_CALLER_H
#define TARVO_TESTS_INCLUDE_CALLER_H

#include <tarvo/base.h>

TARVO_BEGIN_DECLARATIONS

/* A string of at most 63 units. */
typedef struct CallerText {
    IVaskString string;
    uint32_t length;
    char16_t units[64];
} CallerText;

/* Makes the text empty. */
void initialiseText(CallerText* text);

TarvoUUID generateUUID(void);
TarvoResult printUUID(const TarvoUUID* uuid, CallerText* text);
TarvoResult readUUID(const CallerText* text, TarvoUUID* uuid);

TARVO_END_DECLARATIONS

#endif
