/* The resource library: every text of the installation that a person reads, in one language.
 *
 * It is a library of its own so that an installation in another language replaces this one file.
 * TARVO.dll asks for texts by index; indices never change.
 */
#include <tarvo/resource.h>

#include <stddef.h>

/* For codes that this version knows and never gives itself. */
#define RESERVED(code)                                                                             \
    u"Error " #code ": a code that this version does not use itself. "                             \
    u"Ask the maker of the component that reported it."

/* A text tells what happened, and then what can be done about it. */
static const char16_t* const kTexts[] = {
    [TARVO_RESOURCE_OK] = u"The operation succeeded.",
    [TARVO_RESOURCE_LANGUAGE] = u"en",
    [TARVO_RESOURCE_SEE_LAST_ERROR] =
        u"The operation failed, and the object that failed has the details. "
        u"Ask it for its last error.",
    [TARVO_RESOURCE_UNSPECIFIED] =
        u"The operation failed for a reason that has no code of its own. "
        u"Try again; if it keeps failing, check that the installation is complete and "
        u"that its files can be read.",
    [TARVO_RESOURCE_CODE_101] = RESERVED(101),
    [TARVO_RESOURCE_OUT_OF_MEMORY] =
        u"There was not enough memory. Close other programs and try again.",
    [TARVO_RESOURCE_NULL_POINTER] =
        u"A required argument was missing (a null pointer). "
        u"This is a mistake in the calling program; report it to its maker.",
    [TARVO_RESOURCE_NOT_FOUND] =
        u"There is no such key, value or component, or the path does not begin with a "
        u"slash. Check the spelling and that the component is registered.",
    [TARVO_RESOURCE_ACCESS_DENIED] =
        u"Access was denied. Changes for all users need administrator rights; "
        u"otherwise check the rights to the registry file.",
    [TARVO_RESOURCE_BAD_REGISTRY_FILE] =
        u"The registry file is damaged. Find the place with \"tarvo registry verify\" "
        u"and mend it, or restore the file from its copy registry.dat.backup.",
    [TARVO_RESOURCE_WRONG_VALUE_TYPE] =
        u"The value is of another type than the one asked for. "
        u"Ask for its type first, or store the value anew with the right type.",
    [TARVO_RESOURCE_INVALID_KEY_NAME] =
        u"The name or path cannot be used. A path begins with a slash, and its names "
        u"are neither empty nor hold slashes or control characters.",
    [TARVO_RESOURCE_CODE_505] = RESERVED(505),
    [TARVO_RESOURCE_NO_DATA_FOLDER] =
        u"The folder for the data is not available. "
        u"Check that it can be created and written, and that the disk is not full.",
    [TARVO_RESOURCE_INVALID_ARGUMENT] =
        u"An argument has a value that is not allowed. "
        u"Check the identifiers, numbers and texts that were given.",
    [TARVO_RESOURCE_INCOMPLETE_REGISTRATION] =
        u"The registration of the component is incomplete. "
        u"It needs a name, an identifier, an interface version and a location.",
    [TARVO_RESOURCE_NO_INTERFACE] =
        u"The object does not have the interface asked for. "
        u"Use a component that offers it, or a newer version of this one.",
    [TARVO_RESOURCE_READ_ONLY] = u"The object can only be read. Make a copy and change that.",
    [TARVO_RESOURCE_ELEVATION_REFUSED] =
        u"The component may not run in a process with administrator rights. "
        u"Start the program without them, or register the component for all users.",
    [TARVO_RESOURCE_NOT_AVAILABLE] =
        u"What was asked for is not there: no such index, name or entry, or no error "
        u"is recorded. Check the index or the name.",
    [TARVO_RESOURCE_CODE_108] = RESERVED(108),
    [TARVO_RESOURCE_CANNOT_CREATE] =
        u"The component could not be created. Check that it is registered and that "
        u"its library and what that needs are in their places.",
    [TARVO_RESOURCE_CODE_110] = RESERVED(110),
    [TARVO_RESOURCE_BAD_DATA] = u"The saved state holds an entry of another kind than expected. "
                                u"Open it with the program that saved it, or use an earlier copy.",
    [TARVO_RESOURCE_END_OF_DATA] =
        u"The saved state ends too early or holds a kind of entry that is not known. "
        u"The file is probably damaged; use an earlier copy.",
    [TARVO_RESOURCE_FORMAT_TOO_NEW] =
        u"The saved state was written by a newer version. "
        u"Update this installation, or save it again in an older format.",
    [TARVO_RESOURCE_CODE_115] = RESERVED(115),
    [TARVO_RESOURCE_PARSER_FAILED] =
        u"The interface definition could not be read. Check that the file exists and "
        u"is correct, and that the definition parser is installed.",
    [TARVO_RESOURCE_CODE_117] = RESERVED(117),
    [TARVO_RESOURCE_BAD_LOCATION] = u"The remote location cannot be used. "
                                    u"Check its address and that the other machine can be reached.",
    [TARVO_RESOURCE_CODE_602] = RESERVED(602),
    [TARVO_RESOURCE_CODE_603] = RESERVED(603),
};

const char16_t* getResource(uint32_t index) {
    return index < sizeof kTexts / sizeof kTexts[0] ? kTexts[index] : NULL;
}
