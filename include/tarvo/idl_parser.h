/* What the definition parser (TARVOIDLParser.dll) offers: a definition file becomes objects that
 * name the type libraries in it and what they define. It lies beside the library, which loads it
 * when a type library is first registered.
 *
 * The slots named here are those that the library calls; the reserved ones are the parser's own.
 */
#ifndef TARVO_IDL_PARSER_H
#define TARVO_IDL_PARSER_H

#include "base.h"

TARVO_BEGIN_DECLARATIONS

/* ---- IVaskIDLItem: a category, an enumeration or an interface -------------------------------- */

typedef struct IVaskIDLItem IVaskIDLItem;

/* An item belongs to its library and is valid for as long as that has a reference; the caller takes
 * and drops none on the item. */
typedef struct IVaskIDLItemTable {
    /* [any thread] As in ITarvoBase; not called. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    void (*reserved2To4[3])(void);

    /* [one thread at a time] Gives the item's name; the result is ignored.
     *   name  to fill */
    TarvoResult (*getName)(void* me, IVaskString* name);

    /* [one thread at a time] Gives the address of the item's identifier, valid until the next
     * call. */
    const TarvoUUID* (*getUUID)(void* me);

    void (*reserved7To10[4])(void);

    /* [one thread at a time] Gives the number of an interface's template arguments; 0 or less means
     * none. Not called on other items. */
    int32_t (*getNumberOfTemplateArguments)(void* me);
} IVaskIDLItemTable;

struct IVaskIDLItem {
    void* me;
    const IVaskIDLItemTable* table;
};

/* ---- IVaskIDLLibrary: one type library ------------------------------------------------------- */

typedef struct IVaskIDLLibrary IVaskIDLLibrary;

typedef struct IVaskIDLLibraryTable {
    /* [any thread] As in ITarvoBase. */
    void (*addReference)(void* me);
    void (*release)(void* me);

    void (*reserved2To4[3])(void);

    /* [one thread at a time] Gives an attribute of the library.
     *   name   the only one asked for is "version"
     *   value  to fill
     * RC_OK; any other code means that there is none. */
    TarvoResult (*getAttribute)(void* me, IVaskString* name, IVaskString* value);

    void (*reserved6)(void);

    /* [one thread at a time] Gives the number of categories. */
    int32_t (*getCategoryCount)(void* me);

    /* [one thread at a time] Gives a category.
     *   index  from 0 on
     *   item   out: the category, without a reference for the caller
     * RC_OK or the code of the failure. */
    TarvoResult (*getCategory)(void* me, uint32_t index, IVaskIDLItem** item);

    void (*reserved9To10[2])(void);

    /* [one thread at a time] The same for enumerations. */
    int32_t (*getEnumerationCount)(void* me);
    TarvoResult (*getEnumeration)(void* me, uint32_t index, IVaskIDLItem** item);

    void (*reserved13To14[2])(void);

    /* [one thread at a time] The same for interfaces. */
    int32_t (*getInterfaceCount)(void* me);
    TarvoResult (*getInterface)(void* me, uint32_t index, IVaskIDLItem** item);

    void (*reserved17To19[3])(void);

    /* [one thread at a time] Gives the library's name; the result is ignored.
     *   name  to fill */
    TarvoResult (*getName)(void* me, IVaskString* name);

    /* [one thread at a time] Gives the address of the library's identifier, valid until the next
     * call. */
    const TarvoUUID* (*getUUID)(void* me);

    /* [one thread at a time] Gives the path of the file that defined this library; the result is
     * ignored.
     *   path  to fill */
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

    void (*reserved2To14[13])(void);

    /* [one thread at a time] Gives the number of libraries; none is no failure. */
    int32_t (*getLibraryCount)(void* me);

    /* [one thread at a time] Gives a library.
     *   index    from 0 on
     *   library  out: the library, with one reference for the caller
     * RC_OK or the code of the failure. */
    TarvoResult (*getLibrary)(void* me, uint32_t index, IVaskIDLLibrary** library);

    /* [one thread at a time] Gives what is wrong with the definition; the result is ignored.
     *   message  to fill; stays empty if the definition could be read */
    TarvoResult (*getErrorMessage)(void* me, IVaskString* message);
} IVaskIDLParseResultTable;

struct IVaskIDLParseResult {
    void* me;
    const IVaskIDLParseResultTable* table;
};

/* ---- The entry point ------------------------------------------------------------------------- */

/* [any thread] Reads a definition file.
 *   definition  its path, as registerLibrary of a registry writer got it
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
} // namespace TARVO
#endif

#endif
