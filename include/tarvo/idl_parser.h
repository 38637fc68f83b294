/* What the definition parser (TARVOIDLParser.dll) offers: a definition file becomes objects that
 * name the type libraries in it and what they define. It lies beside the library, which loads it
 * when a type library is first registered; a generator of language bindings loads it by itself.
 *
 * Whatever a result gives stands in one memory: it never changes, and it lives for as long as the
 * result or any of its libraries has a reference. Items and types come without a reference for the
 * caller. Texts and identifiers are those of the definition; text that is to be filled gets what
 * `set` of it gave as the result.
 *
 * The library itself calls few of these slots: getLibraryCount, getLibrary and getErrorMessage of a
 * result, all of a type library's named ones but getDocumentation and the names of attributes, and
 * getName, getUUID and getNumberOfTemplateArguments of an item. A parser in the place of this one
 * needs no others. Reserved slots are null.
 */
#ifndef TARVO_IDL_PARSER_H
#define TARVO_IDL_PARSER_H

#include "base.h"

/* What an item is. */
enum {
    TARVO_IDL_CATEGORY = 0,
    TARVO_IDL_ENUMERATION = 1,
    TARVO_IDL_INTERFACE = 2,
    TARVO_IDL_ENUMERATOR = 3, /* a member of an enumeration */
    TARVO_IDL_METHOD = 4,     /* a member of an interface */
    TARVO_IDL_PARAMETER = 5   /* a member of a method */
};

/* Which way a parameter goes. */
enum {
    TARVO_IDL_IN = 1,   /* to the callee */
    TARVO_IDL_OUT = 2,  /* to the caller */
    TARVO_IDL_INOUT = 3 /* both */
};

/* What a type is, and as what it crosses in a call. The letters say: by value, or through the
 * address of such a value if it is going out (v); as a reference to a pair that the caller owns and
 * the callee fills if it is going out (p); as a reference to an interface pair, which comes with one
 * reference for the caller if it is going out (i). */
enum {
    TARVO_IDL_VOID = 0,              /* nothing; only as the result of a method */
    TARVO_IDL_RESULT = 1,            /* a TarvoResult (v) */
    TARVO_IDL_INTEGER = 2,           /* an int32_t (v) */
    TARVO_IDL_UNSIGNED = 3,          /* a uint32_t: a length, a count, flags (v) */
    TARVO_IDL_BYTE = 4,              /* a uint8_t (v) */
    TARVO_IDL_BOOLEAN = 5,           /* a uint32_t, 0 for false (v) */
    TARVO_IDL_REAL = 6,              /* a double (v) */
    TARVO_IDL_UUID = 7,              /* the address of a TarvoUUID, in and out */
    TARVO_IDL_STRING = 8,            /* an IVaskString (p) */
    TARVO_IDL_VALUE = 9,             /* an IVaskValue (p) */
    TARVO_IDL_TARVO_BASE = 10,       /* an ITarvoBase (i) */
    TARVO_IDL_VASK_INTERFACE = 11,   /* an IVaskInterface (i) */
    TARVO_IDL_ENUMERATION_TYPE = 12, /* a uint32_t with the values of an enumeration (v) */
    TARVO_IDL_INTERFACE_TYPE = 13,   /* an interface that a definition defines (i) */
    TARVO_IDL_ARRAY = 14,            /* an IVaskArray of its one argument (p) */
    TARVO_IDL_TEMPLATE_ARGUMENT = 15 /* whatever an interface's template argument stands for */
};

TARVO_BEGIN_DECLARATIONS

typedef struct IVaskIDLItem IVaskIDLItem;
typedef struct IVaskIDLLibrary IVaskIDLLibrary;

/* ---- IVaskIDLType: the type of a parameter, of a result, or an interface's base -------------- */

typedef struct IVaskIDLType IVaskIDLType;

typedef struct IVaskIDLTypeTable {
    /* [any thread] As in ITarvoBase; keeps the whole result. No caller owes these calls. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [any thread] Gives what the type is, TARVO_IDL_VOID to TARVO_IDL_TEMPLATE_ARGUMENT. */
    int32_t (*getKind)(void* me);

    /* [any thread] Gives the enumeration or interface that the type names.
     *   item  out: without a reference for the caller; null on failure
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (a type of another kind). */
    TarvoResult (*getItem)(void* me, IVaskIDLItem** item);

    /* [any thread] Gives the number of types that an interface type has as template arguments; 1
     * for an array, 0 for all others. */
    int32_t (*getArgumentCount)(void* me);

    /* [any thread] Gives one of them, or the type of an array's elements.
     *   index     from 0 on
     *   argument  out: without a reference for the caller; null on failure
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (no such index). */
    TarvoResult (*getArgument)(void* me, uint32_t index, IVaskIDLType** argument);

    /* [any thread] Gives the position, from 0 on, among the template arguments of the interface
     * that the type is used in; -1 if it is none. */
    int32_t (*getTemplateArgumentIndex)(void* me);
} IVaskIDLTypeTable;

struct IVaskIDLType {
    void* me;
    const IVaskIDLTypeTable* table;
};

/* ---- IVaskIDLItem: a category, an enumeration, an interface, or a part of these -------------- */

/* An item belongs to its library and is valid for as long as that has a reference; the caller takes
 * and drops none on the item. */
typedef struct IVaskIDLItemTable {
    /* [any thread] As in ITarvoBase; keeps the whole result. No caller owes these calls. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [any thread] Gives what the item is, TARVO_IDL_CATEGORY to TARVO_IDL_PARAMETER. */
    int32_t (*getKind)(void* me);

    /* [any thread] Gives the text of the documentation comment before the item, with line feeds
     * between its lines; empty if there is none.
     *   text  to fill
     * RC_OK, RC_NULL_POINTER, the result of `set`. */
    TarvoResult (*getDocumentation)(void* me, IVaskString* text);

    /* [any thread] Gives an attribute of the item, as getAttribute of a library does. */
    TarvoResult (*getAttribute)(void* me, IVaskString* name, IVaskString* value);

    /* [any thread] Gives the item's name.
     *   name  to fill
     * RC_OK, RC_NULL_POINTER, the result of `set`. */
    TarvoResult (*getName)(void* me, IVaskString* name);

    /* [any thread] Gives the address of the item's identifier. That of an enumerator, a method or
     * a parameter is nil, unless the definition gives it one. */
    const TarvoUUID* (*getUUID)(void* me);

    /* [any thread] Gives the number of the item's own members, without those of a base interface:
     * the enumerators of an enumeration, the methods of an interface in the order of its table, the
     * parameters of a method; 0 for all others. */
    int32_t (*getMemberCount)(void* me);

    /* [any thread] Gives a member.
     *   index   from 0 on
     *   member  out: without a reference for the caller; null on failure
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (no such index). */
    TarvoResult (*getMember)(void* me, uint32_t index, IVaskIDLItem** member);

    /* [any thread] Gives the type of a parameter, of a method's result, or an interface's base.
     *   type  out: without a reference for the caller; null on failure
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (an interface without a base, or another item). */
    TarvoResult (*getType)(void* me, IVaskIDLType** type);

    /* [any thread] Gives the value of an enumerator, or which way a parameter goes; 0 for all
     * others. */
    uint32_t (*getValue)(void* me);

    /* [any thread] Gives the number of an interface's template arguments; 0 for all others. (To
     * the library, 0 or less means none.) */
    int32_t (*getNumberOfTemplateArguments)(void* me);

    /* [any thread] Gives the name of a template argument.
     *   index  from 0 on
     *   name   to fill
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (no such index), the result of `set`. */
    TarvoResult (*getTemplateArgumentName)(void* me, uint32_t index, IVaskString* name);

    /* [any thread] The attributes of the item, as in a library. */
    int32_t (*getAttributeCount)(void* me);
    TarvoResult (*getAttributeName)(void* me, uint32_t index, IVaskString* name);

    /* [any thread] Gives the library that defines the item; a type may name one of another library.
     *   library  out: the library, with one reference for the caller
     * RC_OK, RC_NULL_POINTER. */
    TarvoResult (*getLibrary)(void* me, IVaskIDLLibrary** library);
} IVaskIDLItemTable;

struct IVaskIDLItem {
    void* me;
    const IVaskIDLItemTable* table;
};

/* ---- IVaskIDLLibrary: one type library ------------------------------------------------------- */

typedef struct IVaskIDLLibraryTable {
    /* [any thread] As in ITarvoBase; keeps the whole result. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [any thread] Gives the text of the documentation comment before the library, as
     * getDocumentation of an item does. */
    TarvoResult (*getDocumentation)(void* me, IVaskString* text);

    /* [any thread] Gives the number of attributes. The identifier is not counted as one. */
    int32_t (*getAttributeCount)(void* me);

    /* [any thread] Gives the name of an attribute.
     *   index  from 0 on, in the order of the definition
     *   name   to fill
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (no such index), the result of `set`. */
    TarvoResult (*getAttributeName)(void* me, uint32_t index, IVaskString* name);

    /* [any thread] Gives an attribute of the library.
     *   name   "version", say, which is the only one that the library asks for
     *   value  to fill; untouched if there is no such attribute, empty if it has no value
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (no such attribute), the result of `set`. */
    TarvoResult (*getAttribute)(void* me, IVaskString* name, IVaskString* value);

    void (*reserved6)(void);

    /* [any thread] Gives the number of categories. */
    int32_t (*getCategoryCount)(void* me);

    /* [any thread] Gives a category.
     *   index  from 0 on, in the order of the definition
     *   item   out: the category, without a reference for the caller; null on failure
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (no such index). */
    TarvoResult (*getCategory)(void* me, uint32_t index, IVaskIDLItem** item);

    void (*reserved9To10[2])(void);

    /* [any thread] The same for enumerations. */
    int32_t (*getEnumerationCount)(void* me);
    TarvoResult (*getEnumeration)(void* me, uint32_t index, IVaskIDLItem** item);

    void (*reserved13To14[2])(void);

    /* [any thread] The same for interfaces. */
    int32_t (*getInterfaceCount)(void* me);
    TarvoResult (*getInterface)(void* me, uint32_t index, IVaskIDLItem** item);

    void (*reserved17To19[3])(void);

    /* [any thread] Gives the library's name.
     *   name  to fill
     * RC_OK, RC_NULL_POINTER, the result of `set`. */
    TarvoResult (*getName)(void* me, IVaskString* name);

    /* [any thread] Gives the address of the library's identifier, which is never nil. */
    const TarvoUUID* (*getUUID)(void* me);

    /* [any thread] Gives the path of the file that defined this library: the definition's as it was
     * passed, or an imported file's, beginning with the folder of the file that imports it.
     *   path  to fill
     * RC_OK, RC_NULL_POINTER, the result of `set`. */
    TarvoResult (*getSourcePath)(void* me, IVaskString* path);
} IVaskIDLLibraryTable;

struct IVaskIDLLibrary {
    void* me;
    const IVaskIDLLibraryTable* table;
};

/* ---- IVaskIDLParseResult: what a definition held --------------------------------------------- */

typedef struct IVaskIDLParseResult IVaskIDLParseResult;

typedef struct IVaskIDLParseResultTable {
    /* [any thread] As in ITarvoBase. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    /* [any thread] Gives the number of libraries that imported files define. */
    int32_t (*getImportedLibraryCount)(void* me);

    /* [any thread] Gives such a library, as getLibrary does. */
    TarvoResult (*getImportedLibrary)(void* me, uint32_t index, IVaskIDLLibrary** library);

    void (*reserved4To14[11])(void);

    /* [any thread] Gives the number of libraries that the file itself defines. None is no failure;
     * a definition with errors has none. */
    int32_t (*getLibraryCount)(void* me);

    /* [any thread] Gives a library.
     *   index    from 0 on, in the order of the definition
     *   library  out: the library, with one reference for the caller; null on failure
     * RC_OK, RC_NULL_POINTER, RC_NOT_AVAILABLE (no such index). */
    TarvoResult (*getLibrary)(void* me, uint32_t index, IVaskIDLLibrary** library);

    /* [any thread] Gives what is wrong with the definition, one error a line, at most 20 of them:
     * "FILE:LINE:COLUMN: what was expected". Lines and columns count from 1, columns in characters.
     *   message  to fill; empty if the definition could be read
     * RC_OK, RC_NULL_POINTER, the result of `set`. */
    TarvoResult (*getErrorMessage)(void* me, IVaskString* message);
} IVaskIDLParseResultTable;

struct IVaskIDLParseResult {
    void* me;
    const IVaskIDLParseResultTable* table;
};

/* ---- The entry point ------------------------------------------------------------------------- */

/* [any thread] Reads a definition file and those that it imports.
 *   definition  its path, as registerLibrary of a registry writer got it; null is a definition
 *               that can't be read
 * The result, with one reference for the caller; never null, also if the file can't be read. */
typedef IVaskIDLParseResult* VaskIDLParseFunction(const char16_t* definition);
TARVO_ENTRY_POINT VaskIDLParseFunction VaskIDLParse;

TARVO_END_DECLARATIONS

#ifdef __cplusplus
namespace TARVO {
using ::IVaskIDLItem;
using ::IVaskIDLItemTable;
using ::IVaskIDLLibrary;
using ::IVaskIDLLibraryTable;
using ::IVaskIDLParseResult;
using ::IVaskIDLParseResultTable;
using ::IVaskIDLType;
using ::IVaskIDLTypeTable;
} // namespace TARVO
#endif

#endif
