// Reading a definition: all of its files, then all of its checks.
#pragma once

#include "companions/idl-parser/document.h"
#include "companions/idl-parser/source_file.h"

namespace TARVO::idl {

// Gives the document with one reference for the caller. Only a lack of memory raises; whatever is
// wrong with the definition is in the document's error message.
//   path  of the definition; null or empty if none is named
//   read  gives its bytes, and those of the files that it imports
Document* readDefinition(const char16_t* path, const ReadFile& read);

} // namespace TARVO::idl
