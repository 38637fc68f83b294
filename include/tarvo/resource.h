/* What the resource library (TARVOResource.DLL) offers: the texts of the installation in its
 * language. It lies beside the library, which loads it at its own start.
 */
#ifndef TARVO_RESOURCE_H
#define TARVO_RESOURCE_H

#include "base.h"

/* The indices that are asked for. Those that bear a result code's name are its text. */
enum {
    TARVO_RESOURCE_OK = 0,
    TARVO_RESOURCE_LANGUAGE = 2, /* the tag of the language that the texts are in */
    TARVO_RESOURCE_SEE_LAST_ERROR = 3,
    TARVO_RESOURCE_UNSPECIFIED = 4, /* and the text of every code that isn't known */
    TARVO_RESOURCE_CODE_101 = 5,
    TARVO_RESOURCE_OUT_OF_MEMORY = 6,
    TARVO_RESOURCE_NULL_POINTER = 7,
    TARVO_RESOURCE_NOT_FOUND = 8,
    TARVO_RESOURCE_ACCESS_DENIED = 9,
    TARVO_RESOURCE_BAD_REGISTRY_FILE = 10,
    TARVO_RESOURCE_WRONG_VALUE_TYPE = 11,
    TARVO_RESOURCE_INVALID_KEY_NAME = 12,
    TARVO_RESOURCE_CODE_505 = 13,
    TARVO_RESOURCE_NO_DATA_FOLDER = 14,
    TARVO_RESOURCE_INVALID_ARGUMENT = 15,
    TARVO_RESOURCE_INCOMPLETE_REGISTRATION = 16,
    TARVO_RESOURCE_NO_INTERFACE = 17,
    TARVO_RESOURCE_READ_ONLY = 18,
    TARVO_RESOURCE_ELEVATION_REFUSED = 19,
    TARVO_RESOURCE_NOT_AVAILABLE = 20,
    TARVO_RESOURCE_CODE_108 = 21,
    TARVO_RESOURCE_CANNOT_CREATE = 22,
    TARVO_RESOURCE_CODE_110 = 23,
    TARVO_RESOURCE_BAD_DATA = 24,
    TARVO_RESOURCE_END_OF_DATA = 25,
    TARVO_RESOURCE_FORMAT_TOO_NEW = 26,
    TARVO_RESOURCE_CODE_115 = 27,
    TARVO_RESOURCE_PARSER_FAILED = 28,
    TARVO_RESOURCE_CODE_117 = 29,
    TARVO_RESOURCE_BAD_LOCATION = 30,
    TARVO_RESOURCE_CODE_602 = 31,
    TARVO_RESOURCE_CODE_603 = 32
};

TARVO_BEGIN_DECLARATIONS

/* [any thread] The entry point: gives a text.
 *   index  one of the indices above
 * A null-terminated text, which the caller copies at once; never null for an index above. */
typedef const char16_t* getResourceFunction(uint32_t index);
TARVO_ENTRY_POINT getResourceFunction getResource;

TARVO_END_DECLARATIONS

#endif
