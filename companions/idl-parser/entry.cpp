// The export. It always gives an object: for a lack of memory one stands ready.
#include "companions/idl-parser/definition.h"
#include "tarvo/idl_parser.h"
#include "tarvo/result.h"
#include "tarvo/text.hpp"

namespace {

void countNothing(void*) {}

int32_t noLibraries(void*) {
    return 0;
}

TarvoResult noLibrary(void*, uint32_t, IVaskIDLLibrary** library) {
    if (library == nullptr)
        return RC_NULL_POINTER;
    *library = nullptr;
    return RC_NOT_AVAILABLE;
}

TarvoResult tellLackOfMemory(void*, IVaskString* message) {
    return message == nullptr
               ? RC_NULL_POINTER
               : tarvo::setText(message, u"There is not enough memory for the definition.");
}

constexpr IVaskIDLParseResultTable kOutOfMemoryTable = {
    .addReference = &countNothing,
    .release = &countNothing,
    .getImportedLibraryCount = &noLibraries,
    .getImportedLibrary = &noLibrary,
    .reserved4To14 = {},
    .getLibraryCount = &noLibraries,
    .getLibrary = &noLibrary,
    .getErrorMessage = &tellLackOfMemory,
};

constinit IVaskIDLParseResult outOfMemory = {nullptr, &kOutOfMemoryTable};

} // namespace

IVaskIDLParseResult* VaskIDLParse(const char16_t* definition) {
    try {
        return TARVO::idl::readDefinition(definition, TARVO::idl::readFromDisk)->pair();
    } catch (...) {
        return &outOfMemory;
    }
}
