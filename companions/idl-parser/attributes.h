// The list of attributes in brackets that may stand before every declaration:
//
//     [uuid(3b78cdeb-7fe8-4542-b58b-26205774d82a), version(1.0), deprecated]
#pragma once

#include "companions/idl-parser/document.h"
#include "companions/idl-parser/token_reader.h"

namespace TARVO::idl {

// Reads the list, if one is there.
Details parseAttributes(TokenReader& reader, Document& document);

// Reports a version that isn't numbers with points between them.
void checkVersion(TokenReader& reader, const Details& details);

} // namespace TARVO::idl
