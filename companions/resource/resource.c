/* The resource library: every text of the installation that a person reads, in one language.
 *
 * It is a library of its own so that an installation in another language replaces this one file.
 * TARVO.dll asks for texts by index; the indices follow the order in which codes were once added,
 * not the order of the codes, and never change.
 */
#include <tarvo/base.h>

#include <stddef.h>
#include <stdint.h>
#include <uchar.h>

/* For codes that this version knows and never gives itself. */
#define RESERVED(code)                                                                             \
    u"Error " #code ": a code that this version does not use itself. "                             \
    u"Ask the maker of the component that reported it."

/* The comment behind an index is the result code that the text is for. A text tells what happened,
 * and then what can be done about it. */
static const char16_t* const kTexts[] = {
    [0] = /* 0 */ u"The operation succeeded.",
    [2] = u"en", /* the tag of the language */
    [3] = /* 1 */ u"The operation failed, and the object that failed has the details. "
                  u"Ask it for its last error.",
    [4] = /* 100 */ u"The operation failed for a reason that has no code of its own. "
                    u"Try again; if it keeps failing, check that the installation is complete and "
                    u"that its files can be read.",
    [5] = /* 101 */ RESERVED(101),
    [6] = /* 102 */ u"There was not enough memory. Close other programs and try again.",
    [7] = /* 103 */ u"A required argument was missing (a null pointer). "
                    u"This is a mistake in the calling program; report it to its maker.",
    [8] = /* 500 */ u"There is no such key, value or component, or the path does not begin with a "
                    u"slash. Check the spelling and that the component is registered.",
    [9] = /* 501 */ u"Access was denied. Changes for all users need administrator rights; "
                    u"otherwise check the rights to the registry file.",
    [10] = /* 502 */ u"The registry file is damaged. Find the place with \"tarvo registry verify\" "
                     u"and mend it, or restore the file from its copy registry.dat.backup.",
    [11] = /* 503 */ u"The value is of another type than the one asked for. "
                     u"Ask for its type first, or store the value anew with the right type.",
    [12] = /* 504 */ u"The name or path cannot be used. A path begins with a slash, and its names "
                     u"are neither empty nor hold slashes or control characters.",
    [13] = /* 505 */ RESERVED(505),
    [14] = /* 506 */ u"The folder for the data is not available. "
                     u"Check that it can be created and written, and that the disk is not full.",
    [15] = /* 104 */ u"An argument has a value that is not allowed. "
                     u"Check the identifiers, numbers and texts that were given.",
    [16] = /* 507 */ u"The registration of the component is incomplete. "
                     u"It needs a name, an identifier, an interface version and a location.",
    [17] = /* 105 */ u"The object does not have the interface asked for. "
                     u"Use a component that offers it, or a newer version of this one.",
    [18] = /* 106 */ u"The object can only be read. Make a copy and change that.",
    [19] = /* 114 */ u"The component may not run in a process with administrator rights. "
                     u"Start the program without them, or register the component for all users.",
    [20] = /* 107 */ u"What was asked for is not there: no such index, name or entry, or no error "
                     u"is recorded. Check the index or the name.",
    [21] = /* 108 */ RESERVED(108),
    [22] = /* 109 */ u"The component could not be created. Check that it is registered and that "
                     u"its library and what that needs are in their places.",
    [23] = /* 110 */ RESERVED(110),
    [24] = /* 111 */ u"The saved state holds an entry of another kind than expected. "
                     u"Open it with the program that saved it, or use an earlier copy.",
    [25] = /* 112 */ u"The saved state ends too early or holds a kind of entry that is not known. "
                     u"The file is probably damaged; use an earlier copy.",
    [26] = /* 113 */ u"The saved state was written by a newer version. "
                     u"Update this installation, or save it again in an older format.",
    [27] = /* 115 */ RESERVED(115),
    [28] = /* 116 */ u"The interface definition could not be read. Check that the file exists and "
                     u"is correct, and that the definition parser is installed.",
    [29] = /* 117 */ RESERVED(117),
    [30] = /* 601 */ u"The remote location cannot be used. "
                     u"Check its address and that the other machine can be reached.",
    [31] = /* 602 */ RESERVED(602),
    [32] = /* 603 */ RESERVED(603),
};

TARVO_EXPORT const char16_t* getResource(uint32_t index);

TARVO_EXPORT const char16_t* getResource(uint32_t index) {
    return index < sizeof kTexts / sizeof kTexts[0] ? kTexts[index] : NULL;
}
