// The definition parser, TARVOIDLParser.dll: it stands beside this library and is loaded when the
// first type library is registered.
#pragma once

#include "tarvo/idl_parser.h"
#include "tarvo/reference.hpp"

namespace TARVO {

using ParseResultHolder = tarvo::Reference<IVaskIDLParseResult>;

// Has the parser read a definition, whose meaning is the parser's own affair. Raises
// vask_link_error if the parser can't be loaded, which the next call tries again, or with the
// parser's message if the definition has mistakes. Any thread.
ParseResultHolder parseDefinition(const char16_t* definition);

} // namespace TARVO
