// A parse result written as a definition again, one declaration a line, through nothing but the
// binary interface. That a text comes back as it was shows that nothing of it was lost; that any
// text comes back the same after the first time, that all of it was understood.
#pragma once

#include <tarvo/idl_parser.h>

#include <string>

namespace tests {

// The libraries of the definition itself; the error message if it has one.
std::string definitionText(IVaskIDLParseResult* result);

} // namespace tests
