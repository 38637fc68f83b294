/* The result codes. Every slot and export that can fail gives one of them.
 *
 * RC_SEE_LAST_ERROR is the one code that carries more than the number: the failing object's
 * getLastError has an IVaskError (error.h) with the detail and the chain of causes. The text of a
 * code, in the language of the installation, comes from getErrorDescription.
 */
#ifndef TARVO_RESULT_H
#define TARVO_RESULT_H

#include "base.h"

#ifdef __cplusplus
enum : TarvoResult
#else
enum
#endif
{
    RC_OK = 0,             /* success */
    RC_SEE_LAST_ERROR = 1, /* ask the failing object's getLastError */

    RC_UNSPECIFIED = 100,       /* a failure with no code of its own */
    RC_CODE_101 = 101,          /* has a text; this library never gives it */
    RC_OUT_OF_MEMORY = 102,     /* memory ran out while something was stored */
    RC_NULL_POINTER = 103,      /* a required pointer is null */
    RC_INVALID_ARGUMENT = 104,  /* an argument is there but can't be accepted */
    RC_NO_INTERFACE = 105,      /* the object has no such interface */
    RC_READ_ONLY = 106,         /* a write to something that can only be read */
    RC_NOT_AVAILABLE = 107,     /* what was asked for isn't there: an index, a name, an error */
    RC_CODE_108 = 108,          /* has a text; this library never gives it */
    RC_CANNOT_CREATE = 109,     /* no instance of the component can be made */
    RC_CODE_110 = 110,          /* has a text; this library never gives it */
    RC_BAD_DATA = 111,          /* saved state: an entry isn't of the kind that it has to be */
    RC_END_OF_DATA = 112,       /* saved state: the data end too early, or name an unknown kind */
    RC_FORMAT_TOO_NEW = 113,    /* saved state: the format's version is above what is read */
    RC_ELEVATION_REFUSED = 114, /* the component may not be created in an elevated process */
    RC_CODE_115 = 115,          /* has a text; this library never gives it */
    RC_PARSER_FAILED = 116,     /* the definition parser failed on a library */
    RC_CODE_117 = 117,          /* has a text; this library never gives it */

    RC_NOT_FOUND = 500,               /* no such key, value, component or location */
    RC_ACCESS_DENIED = 501,           /* no right to a registry file, or to delete a scope's root */
    RC_BAD_REGISTRY_FILE = 502,       /* a registry file's mark-up is malformed */
    RC_WRONG_VALUE_TYPE = 503,        /* the registry value holds another type */
    RC_INVALID_KEY_NAME = 504,        /* a key or value name, or a path, isn't usable */
    RC_CODE_505 = 505,                /* has a text; this library never gives it */
    RC_NO_DATA_FOLDER = 506,          /* the scope's data folder isn't available */
    RC_INCOMPLETE_REGISTRATION = 507, /* a component's registration lacks a required part */

    RC_BAD_LOCATION = 601, /* a remote location can't be used */
    RC_CODE_602 = 602,     /* has a text; this library never gives it */
    RC_CODE_603 = 603      /* has a text; this library never gives it */
};

#endif
