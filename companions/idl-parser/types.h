// What types mean, once the names of all files are known: which item a name stands for, and whether
// a type may stand where it does.
#pragma once

#include "companions/idl-parser/declarations.h"
#include "companions/idl-parser/type_parser.h"

#include <span>

namespace TARVO::idl {

// Completes the types, and reports those that mean nothing.
void resolveTypes(std::span<const TypeUse> uses, const Declarations& declarations, Errors& errors);

// Checks bases, results and parameters of the interfaces. To be called when all types are known.
void checkInterfaces(const Document& document, Errors& errors);

} // namespace TARVO::idl
