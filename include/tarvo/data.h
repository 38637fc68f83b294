/* Values, and ready-made strings, values and arrays for callers that have none of their own.
 *
 * A data object is a plain container. It has no reference count: whoever makes it owns it alone,
 * passes it to calls as a parameter (by a cast to IVaskString, IVaskValue or IVaskArray) and ends
 * it with `destroy`.
 *
 * Slots of values and data objects don't test their addresses: all must be valid.
 */
#ifndef TARVO_DATA_H
#define TARVO_DATA_H

#include "base.h"

/* What an IVaskValue can hold: its tag. */
enum {
    TARVO_VALUE_STRING = 0,  /* text */
    TARVO_VALUE_INTEGER = 1, /* 32-bit signed number */
    TARVO_VALUE_BOOLEAN = 2, /* 32-bit number, 0 for false */
    TARVO_VALUE_REAL = 3,    /* 64-bit IEEE number */
    TARVO_VALUE_EMPTY = 4    /* nothing */
};

TARVO_BEGIN_DECLARATIONS

/* ---- IVaskValue: one value of changing type ------------------------------------------------- */

/* A value is read as what it is: there is no conversion. An empty one reads as an empty text, as
 * the smallest integer and as NaN, and not at all as a boolean. As with IVaskString, whoever makes
 * the pair owns it, and a callee doesn't keep it. */
typedef struct IVaskValueTable {
    /* [one thread at a time] Gives the tag itself, not a result code. */
    uint32_t (*getValueType)(void* me);

    /* [one thread at a time] Gives the text of a string, or an empty text if the value is empty.
     *   text    out: the value's own text, valid until the value is next changed; a null character
     *           stands behind it; null on failure
     *   length  out: units without that terminator; 0 on failure
     * RC_OK, RC_NOT_AVAILABLE (another type). */
    TarvoResult (*getStringValue)(void* me, const char16_t** text, uint32_t* length);

    /* [one thread at a time] Gives an integer, or INT32_MIN if the value is empty.
     *   value  out: the number; untouched on failure
     * RC_OK, RC_NOT_AVAILABLE (another type). */
    TarvoResult (*getIntegerValue)(void* me, int32_t* value);

    /* [one thread at a time] Gives a boolean.
     *   value  out: the boolean, as it was set; untouched on failure
     * RC_OK, RC_NOT_AVAILABLE (another type, or empty). */
    TarvoResult (*getBooleanValue)(void* me, uint32_t* value);

    /* [one thread at a time] Gives a real, or a quiet NaN if the value is empty.
     *   value  out: the number; untouched on failure
     * RC_OK, RC_NOT_AVAILABLE (another type). */
    TarvoResult (*getRealValue)(void* me, double* value);

    /* [one thread at a time] Makes the value a string, with a copy of the text.
     *   text    `length` units; a terminator is not required
     * RC_OK, RC_OUT_OF_MEMORY (a data object is as it was; a value that the library passes to a
     * component to fill is empty). */
    TarvoResult (*setStringValue)(void* me, const char16_t* text, uint32_t length);

    /* [one thread at a time] Makes the value an integer. RC_OK. */
    TarvoResult (*setIntegerValue)(void* me, int32_t value);

    /* [one thread at a time] Makes the value a boolean. RC_OK. */
    TarvoResult (*setBooleanValue)(void* me, uint32_t value);

    /* [one thread at a time] Makes the value a real. RC_OK. */
    TarvoResult (*setRealValue)(void* me, double value);

    /* [one thread at a time] Makes the value empty. RC_OK. */
    TarvoResult (*setEmpty)(void* me);
} IVaskValueTable;

typedef struct IVaskValue {
    void* me;
    const IVaskValueTable* table;
} IVaskValue;

/* ---- Data objects --------------------------------------------------------------------------- */

/* A string. New: empty. */
typedef struct VaskStringObjectTable {
    /* [one thread at a time] As in IVaskString. RC_OUT_OF_MEMORY leaves the text as it was. */
    void (*get)(void* me, const char16_t** text, uint32_t* length);
    TarvoResult (*set)(void* me, const char16_t* text, uint32_t length);

    /* [one thread at a time] Ends the object. A null `me` does nothing. */
    void (*destroy)(void* me);
} VaskStringObjectTable;

typedef struct VaskStringObject {
    void* me;
    const VaskStringObjectTable* table;
} VaskStringObject;

/* A value. New: empty. */
typedef struct VaskValueObjectTable {
    /* [one thread at a time] As in IVaskValue. */
    uint32_t (*getValueType)(void* me);
    TarvoResult (*getStringValue)(void* me, const char16_t** text, uint32_t* length);
    TarvoResult (*getIntegerValue)(void* me, int32_t* value);
    TarvoResult (*getBooleanValue)(void* me, uint32_t* value);
    TarvoResult (*getRealValue)(void* me, double* value);
    TarvoResult (*setStringValue)(void* me, const char16_t* text, uint32_t length);
    TarvoResult (*setIntegerValue)(void* me, int32_t value);
    TarvoResult (*setBooleanValue)(void* me, uint32_t value);
    TarvoResult (*setRealValue)(void* me, double value);
    TarvoResult (*setEmpty)(void* me);

    /* [one thread at a time] Ends the object. A null `me` does nothing. */
    void (*destroy)(void* me);
} VaskValueObjectTable;

typedef struct VaskValueObject {
    void* me;
    const VaskValueObjectTable* table;
} VaskValueObject;

/* An array. New: no elements, and `get` gives a null pointer. The elements of an array of strings
 * or of values belong to it: they end with it, or when `resize` cuts them off, and their own
 * `destroy` must not be called. A `resize` may move them, so fetch references to them anew. */
typedef struct VaskArrayObjectTable {
    /* [one thread at a time] As in IVaskArray. */
    void (*get)(void* me, void** elements, uint32_t* count);
    TarvoResult (*resize)(void* me, uint32_t count, void** elements);

    /* [one thread at a time] Ends the object and its elements. A null `me` does nothing. */
    void (*destroy)(void* me);
} VaskArrayObjectTable;

typedef struct VaskArrayObject {
    void* me;
    const VaskArrayObjectTable* table;
} VaskArrayObject;

/* ---- Making data objects -------------------------------------------------------------------- */

/* Functions without a `me`. Each makes a new object, which the caller owns and ends with `destroy`,
 * or gives null when memory runs out. */
typedef struct VaskDataClassFactory {
    /* [any thread] Makes a string. */
    VaskStringObject* (*createString)(void);

    /* [any thread] Makes a value. */
    VaskValueObject* (*createValue)(void);

    /* [any thread] Makes an array, whose elements are: */
    VaskArrayObject* (*createRealArray)(void);        /* double */
    VaskArrayObject* (*createIntegerArray)(void);     /* int32_t */
    VaskArrayObject* (*createByteArray)(void);        /* uint8_t */
    VaskArrayObject* (*createBooleanArray)(void);     /* uint32_t */
    VaskArrayObject* (*createEnumerationArray)(void); /* uint32_t */
    VaskArrayObject* (*createStringArray)(void);      /* VaskStringObject* */
    VaskArrayObject* (*createValueArray)(void);       /* VaskValueObject* */
} VaskDataClassFactory;

/* [any thread] Gives the factory: the table itself, never null, which belongs to the library. */
typedef const VaskDataClassFactory* vaskGetDataClassFactoryFunction(void);
TARVO_EXPORT vaskGetDataClassFactoryFunction vaskGetDataClassFactory;

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
using ::IVaskValue;
using ::IVaskValueTable;
using ::VaskArrayObject;
using ::VaskArrayObjectTable;
using ::VaskDataClassFactory;
using ::VaskStringObject;
using ::VaskStringObjectTable;
using ::VaskValueObject;
using ::VaskValueObjectTable;
} // namespace TARVO
#endif

#endif
