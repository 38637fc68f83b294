// The C++ layer over the binary interface, in headers alone: holders for references, strings, values
// and arrays, identifiers as values, result codes as std::error_code. It adds no allocation and no
// copy to what the interface itself asks for.
#pragma once

#include "array.hpp"
#include "reference.hpp"
#include "result.hpp"
#include "state.hpp"
#include "state_source.hpp"
#include "tarvo.h"
#include "text.hpp"
#include "uuid.hpp"
#include "value.hpp"
