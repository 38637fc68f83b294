/* The ground that every other header stands on: basic types, the interface pair, the two root
 * interfaces, and how text and arrays cross.
 *
 * Everything that crosses the library's boundary is an interface pair: two words, `me` and `table`.
 * A reference to an interface is the address of such a pair. A caller fetches a slot from the table
 * and calls it as a plain function with `me` as its first argument:
 *
 *     key->table->getIntegerValue(key->me, u"size", NULL, &size);
 *
 * No language-level class, exception or allocator crosses, so any language and compiler can take
 * part on either side.
 *
 * A longer interface repeats the slots of the one that it extends, so a reference to it may be cast
 * to the shorter one.
 *
 * Rules that hold for every slot and export, unless its own text says otherwise:
 *   - Functions use the platform's default C calling convention.
 *   - A required pointer that is null gives RC_NULL_POINTER before anything else happens.
 *   - A reference given back through an out-address belongs to the caller, who owes one release.
 *     A reference passed in is borrowed for the call; a callee that keeps it adds its own.
 *   - Text is UTF-16: an IVaskString, or a `const char16_t*` that ends in a null character. Lengths
 *     and counts are in units and elements, never in bytes.
 *   - Result codes are listed in the order in which their checks run.
 *   - RC_UNSPECIFIED (from an object with a last error: RC_SEE_LAST_ERROR) is possible everywhere,
 *     when something unforeseen such as a lack of memory ends a call. It is listed only where it
 *     has further reasons.
 *
 * What stands in brackets before a function tells which threads may call it and whether it waits:
 *   [any thread]            also while other calls run, on the same object too
 *   [one thread at a time]  calls on the same object must not overlap; which thread it is, is free
 *   [...; waits]            the call may wait for another process or thread; its text says which
 */
#ifndef TARVO_BASE_H
#define TARVO_BASE_H

#ifdef __cplusplus
#include <cstdint>
#else
#include <stdint.h>
#include <uchar.h>
#endif

#ifdef __cplusplus
#define TARVO_EXTERN_C extern "C"
#define TARVO_BEGIN_DECLARATIONS extern "C" {
#define TARVO_END_DECLARATIONS }
#else
#define TARVO_EXTERN_C
#define TARVO_BEGIN_DECLARATIONS
#define TARVO_END_DECLARATIONS
#endif

/* Marks an exported function. Callers bind the exports by name at run time and need no import
 * declaration; the Windows build exports through its module definition file. */
#if defined(__GNUC__) && !defined(_WIN32)
#define TARVO_EXPORT __attribute__((visibility("default")))
#else
#define TARVO_EXPORT
#endif

/* Marks an entry point that another library offers to this one: a component library, say. Whoever
 * defines the function exports it thereby. */
#ifdef _WIN32
#define TARVO_ENTRY_POINT __declspec(dllexport)
#else
#define TARVO_ENTRY_POINT TARVO_EXPORT
#endif

TARVO_BEGIN_DECLARATIONS

/* 0 for success, otherwise one of the codes of result.h, or a code of a plug-in's own that the
 * library passes on. */
typedef uint32_t TarvoResult;

/* An identifier: 16 bytes in the order in which its text prints them, with no byte order of its
 * own. Compared byte by byte. (A Windows GUID structure holds the same identifier with its first
 * three fields in the machine's order.) In C++ also known as TARVO::UUID; the plain name is left to
 * the Windows headers, which have another type of that name. */
typedef struct TarvoUUID {
    uint8_t bytes[16];
} TarvoUUID;

typedef struct IVaskError IVaskError; /* error.h */

/* ---- ITarvoBase: the root of the service objects -------------------------------------------- */

/* Registry keys, writers, enumerators and registrars: one interface, no last error, and no
 * identifier, since they can't be queried. */
typedef struct ITarvoBaseTable {
    /* [any thread] Adds one reference. */
    void (*addReference)(void* me);

    /* [any thread] Takes one reference away; the object goes with its last. */
    void (*release)(void* me);
} ITarvoBaseTable;

typedef struct ITarvoBase {
    void* me;
    const ITarvoBaseTable* table;
} ITarvoBase;

/* ---- IVaskInterface: the root of objects with several interfaces ---------------------------- */

typedef struct IVaskInterface IVaskInterface;

typedef struct IVaskInterfaceTable {
    /* [any thread] Adds one reference. All interfaces of one object share one count. */
    void (*addReference)(void* me);

    /* [any thread] Takes one reference away; the object goes with its last. */
    void (*release)(void* me);

    /* [one thread at a time] Asks the object for another of its interfaces.
     *   interfaceId         the identifier of the interface wanted (identifiers.h)
     *   interfaceReference  out: the interface, with one reference for the caller; null on failure
     * RC_OK, RC_NULL_POINTER (either address), RC_NO_INTERFACE (the object hasn't got it). */
    TarvoResult (*queryInterface)(void* me, const TarvoUUID* interfaceId,
                                  IVaskInterface** interfaceReference);

    /* [one thread at a time] Gives the error behind the last RC_SEE_LAST_ERROR of this object.
     *   error  out: the error, with one reference for the caller; untouched on failure
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (no error is recorded). */
    TarvoResult (*getLastError)(void* me, IVaskError** error);
} IVaskInterfaceTable;

struct IVaskInterface {
    void* me;
    const IVaskInterfaceTable* table;
};

/* ---- IVaskString: text ---------------------------------------------------------------------- */

/* A string parameter. Whoever makes the pair owns it and the storage behind it: a callee neither
 * keeps the pair after the call nor allocates for its caller. Text that an operation gives back is
 * handed to `set`, and as a rule the operation's result is what `set` gave. */
typedef struct IVaskStringTable {
    /* [one thread at a time] Gives the text.
     *   text    out: pointer into the string's own storage, valid until the string is next changed;
     *           a null character stands behind the last unit
     *   length  out: units without that terminator */
    void (*get)(void* me, const char16_t** text, uint32_t* length);

    /* [one thread at a time] Replaces the text by a copy of what is passed. The pointer is valid
     * during the call only.
     *   text    `length` units; a terminator is not required
     * RC_OK, RC_READ_ONLY (a constant string), RC_OUT_OF_MEMORY. */
    TarvoResult (*set)(void* me, const char16_t* text, uint32_t length);
} IVaskStringTable;

typedef struct IVaskString {
    void* me;
    const IVaskStringTable* table;
} IVaskString;

/* ---- IVaskArray: arrays --------------------------------------------------------------------- */

/* An array parameter, owned by whoever makes it. Scalar arrays hand out the elements themselves;
 * an array of strings or of values hands out an array of interface references, whose item i is the
 * IVaskString* or IVaskValue* of element i. Which of them an operation wants stands in its text. */
typedef struct IVaskArrayTable {
    /* [one thread at a time] Gives the elements.
     *   elements  out: the first element, valid until the next `resize`; of no meaning
     *             with a count of 0
     *   count     out: number of elements */
    void (*get)(void* me, void** elements, uint32_t* count);

    /* [one thread at a time] Makes the array `count` elements long. The front stays as it is, new
     * elements are zero or empty.
     *   elements  out: the first element, valid until the next `resize`
     * RC_OK, RC_OUT_OF_MEMORY (the array is as it was). */
    TarvoResult (*resize)(void* me, uint32_t count, void** elements);
} IVaskArrayTable;

typedef struct IVaskArray {
    void* me;
    const IVaskArrayTable* table;
} IVaskArray;

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
using UUID = ::TarvoUUID;
using Result = ::TarvoResult;
using ::ITarvoBase;
using ::ITarvoBaseTable;
using ::IVaskArray;
using ::IVaskArrayTable;
using ::IVaskError;
using ::IVaskInterface;
using ::IVaskInterfaceTable;
using ::IVaskString;
using ::IVaskStringTable;
} // namespace TARVO
#endif

#endif
