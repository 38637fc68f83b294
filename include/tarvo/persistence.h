/* Saved state: reading it, offering to take it, and bringing state that was saved through COM into
 * a component.
 *
 * State is a tree. A node holds named values of thirteen kinds and named nodes; names are compared
 * exactly. IVaskPersistReader shows one node. A component reads its state from the one that `load`
 * of its IVaskPersist gets.
 */
#ifndef TARVO_PERSISTENCE_H
#define TARVO_PERSISTENCE_H

#include "base.h"
#include "data.h"

/* The kinds of values. */
enum {
    TARVO_PERSIST_REAL = 0,               /* double */
    TARVO_PERSIST_INTEGER = 1,            /* int32_t */
    TARVO_PERSIST_BOOLEAN = 2,            /* uint32_t, 0 for false */
    TARVO_PERSIST_STRING = 3,             /* text */
    TARVO_PERSIST_ENUMERATION = 4,        /* uint32_t */
    TARVO_PERSIST_VALUE = 5,              /* IVaskValue */
    TARVO_PERSIST_REAL_ARRAY = 6,         /* array of double */
    TARVO_PERSIST_INTEGER_ARRAY = 7,      /* array of int32_t */
    TARVO_PERSIST_BOOLEAN_ARRAY = 8,      /* array of uint32_t */
    TARVO_PERSIST_STRING_ARRAY = 9,       /* array of strings */
    TARVO_PERSIST_ENUMERATION_ARRAY = 10, /* array of uint32_t */
    TARVO_PERSIST_VALUE_ARRAY = 11,       /* array of values */
    TARVO_PERSIST_BYTE_ARRAY = 12         /* array of uint8_t */
};

/* Where saved state comes from and goes: the one pair that the depersist functions take. */
enum {
    TARVO_PERSIST_SOURCE_COM = 1, /* sourceKind: saved through COM */
    TARVO_PERSIST_TARGET_PMC = 2  /* targetKind: for a component of this system */
};

TARVO_BEGIN_DECLARATIONS

/* ---- IVaskPersistReader: one node of saved state --------------------------------------------- */

typedef struct IVaskPersistReader IVaskPersistReader;

/* This tells what the library's own readers do. A reader from elsewhere has the same slots, and any
 * code but RC_OK counts as a failure.
 *
 * A name may be null, which stands for the empty name. There is no conversion between kinds.
 * Readers of one tree may be used on several threads, each reader on one at a time. */
typedef struct IVaskPersistReaderTable {
    /* [any thread] As in IVaskInterface. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [one thread at a time] As in IVaskInterface. */
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId,
                                  IVaskInterface** interfaceReference);

    /* [one thread at a time] As in IVaskInterface, but the error is handed over: a second call
     * gives RC_NOT_AVAILABLE. */
    TarvoResult (*getLastError)(void* me, IVaskError** error);

    /* [one thread at a time] Gives the names of the node's values, in no particular order.
     *   names  array of strings, to fill
     * RC_OK, RC_NULL_POINTER (names, or an item that the array gave), RC_SEE_LAST_ERROR, otherwise
     * what `resize` of the array or `set` of an item gave. */
    TarvoResult (*ValueNames)(void* me, IVaskArray* names);

    /* [one thread at a time] Gives the kind of a value.
     *   name  of the value
     *   kind  out: one of the kinds above; untouched on failure
     * RC_OK, RC_NULL_POINTER (kind), RC_NOT_AVAILABLE (no such value), RC_SEE_LAST_ERROR. */
    TarvoResult (*GetValueType)(void* me, IVaskString* name, uint32_t* kind);

    /* [one thread at a time] These three give a value of the kind that each is named for.
     *   name   of the value
     *   value  out: the value; untouched on failure
     * RC_OK, RC_NULL_POINTER (value), RC_NOT_AVAILABLE (no such value), RC_BAD_DATA (another kind),
     * RC_SEE_LAST_ERROR. */
    TarvoResult (*GetReal)(void* me, IVaskString* name, double* value);
    TarvoResult (*GetInteger)(void* me, IVaskString* name, int32_t* value);
    TarvoResult (*GetBoolean)(void* me, IVaskString* name, uint32_t* value);

    /* [one thread at a time] Gives a text.
     *   name   of the value
     *   value  to fill
     * As GetReal, otherwise what `set` of the text gave. */
    TarvoResult (*GetString)(void* me, IVaskString* name, IVaskString* value);

    /* [one thread at a time] Gives an enumeration value. As GetReal. */
    TarvoResult (*GetEnumeration)(void* me, IVaskString* name, uint32_t* value);

    /* [one thread at a time] Gives a value of changing type.
     *   name   of the value
     *   value  to fill
     * As GetReal, otherwise what a setter of the value gave. */
    TarvoResult (*GetValue)(void* me, IVaskString* name, IVaskValue* value);

    /* [one thread at a time] These seven give an array of the kind that each is named for.
     *   name   of the value
     *   array  to fill; its elements must be of that kind
     * RC_OK, RC_NULL_POINTER (array, or an item that it gave), RC_NOT_AVAILABLE (no such value),
     * RC_BAD_DATA (another kind), RC_SEE_LAST_ERROR, otherwise what `resize` of the array or a
     * setter of an item gave. */
    TarvoResult (*GetArrayReal)(void* me, IVaskString* name, IVaskArray* array);
    TarvoResult (*GetArrayInteger)(void* me, IVaskString* name, IVaskArray* array);
    TarvoResult (*GetArrayBoolean)(void* me, IVaskString* name, IVaskArray* array);
    TarvoResult (*GetArrayString)(void* me, IVaskString* name, IVaskArray* array);
    TarvoResult (*GetArrayEnumeration)(void* me, IVaskString* name, IVaskArray* array);
    TarvoResult (*GetArrayValue)(void* me, IVaskString* name, IVaskArray* array);
    TarvoResult (*GetArrayByte)(void* me, IVaskString* name, IVaskArray* array);

    /* [one thread at a time] Gives the names of the nodes in this one. As ValueNames. */
    TarvoResult (*NodeNames)(void* me, IVaskArray* names);

    /* [one thread at a time] Gives a reader on a node in this one, a new one at each call. It stays
     * valid without this reader.
     *   name  of the node
     *   node  out: the reader, with one reference for the caller; untouched on failure
     * RC_OK, RC_NULL_POINTER (node), RC_NOT_AVAILABLE (no such node), RC_SEE_LAST_ERROR. */
    TarvoResult (*GetNode)(void* me, IVaskString* name, IVaskPersistReader** node);
} IVaskPersistReaderTable;

struct IVaskPersistReader {
    void* me;
    const IVaskPersistReaderTable* table;
};

/* ---- IVaskIdentification: what a reader is called -------------------------------------------- */

typedef struct IVaskIdentification IVaskIdentification;

/* The library's readers have it beside IVaskPersistReader. The name is that of the node, empty for
 * a root, and the description a phrase with it. */
typedef struct IVaskIdentificationTable {
    /* [any thread] As in IVaskInterface. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [one thread at a time] As in IVaskPersistReader. */
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId,
                                  IVaskInterface** interfaceReference);
    TarvoResult (*getLastError)(void* me, IVaskError** error);

    /* [one thread at a time] Gives the name.
     *   name  to fill
     * RC_OK, RC_NULL_POINTER, RC_SEE_LAST_ERROR, otherwise what `set` of the text gave. */
    TarvoResult (*getComponentName)(void* me, IVaskString* name);

    /* [one thread at a time] RC_READ_ONLY. The argument is not looked at. */
    TarvoResult (*setComponentName)(void* me, IVaskString* name);

    /* [one thread at a time] Gives the description. As getComponentName. */
    TarvoResult (*getComponentDescription)(void* me, IVaskString* description);

    /* [one thread at a time] RC_READ_ONLY. The argument is not looked at. */
    TarvoResult (*setComponentDescription)(void* me, IVaskString* description);
} IVaskIdentificationTable;

struct IVaskIdentification {
    void* me;
    const IVaskIdentificationTable* table;
};

/* ---- IVaskPersist: a component that takes saved state ---------------------------------------- */

typedef struct IVaskPersist IVaskPersist;

typedef struct IVaskPersistTable {
    /* [any thread] As in IVaskInterface. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [one thread at a time] As in IVaskInterface. */
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId,
                                  IVaskInterface** interfaceReference);
    TarvoResult (*getLastError)(void* me, IVaskError** error);

    /* The component's own; this library never calls it. */
    void (*reserved4)(void);

    /* [one thread at a time] Takes over saved state.
     *   reader  on the root of the state; borrowed
     * RC_OK or any other code; with RC_SEE_LAST_ERROR getLastError has the detail. */
    TarvoResult (*load)(void* me, IVaskPersistReader* reader);
} IVaskPersistTable;

struct IVaskPersist {
    void* me;
    const IVaskPersistTable* table;
};

/* ---- Bringing state that was saved through COM into a component ------------------------------ */

/* [any thread] Turns saved state as COM left it into the form that
 * tarvoDepersistPMCFromTransitionFormat takes. State that is in that form already comes back as it
 * is.
 *   reader      on the saved state, to be asked for IVaskPersistReader; may be null
 *   out         out: a reader, with one reference for the caller; untouched on every failure, so
 *               set it to null before; the address must be valid, it isn't tested
 *   sourceKind  TARVO_PERSIST_SOURCE_COM
 *   targetKind  TARVO_PERSIST_TARGET_PMC
 * RC_OK, always: whether it went well shows in `out` alone. */
typedef TarvoResult tarvoDepersistFromTransitionFormatFunction(IVaskInterface* reader,
                                                               IVaskInterface** out,
                                                               uint32_t sourceKind,
                                                               uint32_t targetKind);
TARVO_EXPORT tarvoDepersistFromTransitionFormatFunction tarvoDepersistFromTransitionFormat;

/* [any thread] Hands saved state in the transition form to `load` of a component. State that this
 * library can decode is decoded first; any other reaches the component through the reader given.
 *   pmc         the component, to be asked for IVaskPersist after the state is decoded
 *   reader      on the saved state, to be asked for IVaskPersistReader
 *   sourceKind  TARVO_PERSIST_SOURCE_COM
 *   targetKind  TARVO_PERSIST_TARGET_PMC
 * RC_OK, RC_INVALID_ARGUMENT (sourceKind or targetKind), RC_NO_INTERFACE (reader is null or hasn't
 * got the interface), RC_INVALID_ARGUMENT (the reader doesn't show state in the transition form),
 * RC_FORMAT_TOO_NEW, RC_END_OF_DATA (the state is cut short, or has an unknown kind),
 * RC_BAD_DATA (an entry of another kind than it has to be, nodes more than 1,000 levels below the
 * root, or more than 100 repeated names of nodes in a bag), a code of the reader that failed,
 * RC_NO_INTERFACE (pmc is null or hasn't got the interface), otherwise what `load` gave. With
 * RC_SEE_LAST_ERROR the detail is with the object that failed, the reader or the component; it has
 * been asked for its last error once by then. */
typedef TarvoResult tarvoDepersistPMCFromTransitionFormatFunction(IVaskInterface* pmc,
                                                                  IVaskInterface* reader,
                                                                  uint32_t sourceKind,
                                                                  uint32_t targetKind);
TARVO_EXPORT tarvoDepersistPMCFromTransitionFormatFunction tarvoDepersistPMCFromTransitionFormat;

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
using ::IVaskIdentification;
using ::IVaskIdentificationTable;
using ::IVaskPersist;
using ::IVaskPersistReader;
using ::IVaskPersistReaderTable;
using ::IVaskPersistTable;
} // namespace TARVO
#endif

#endif
