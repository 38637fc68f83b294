// The C++ layer over the binary interface, in headers alone: holders for references, strings,
// values and arrays, identifiers as values, the registry, the catalogue, type libraries, creation
// and saved state as classes, and one exception, tarvo::Error. It adds no allocation and no copy to
// what the interface itself asks for.
//
// A host links tarvo_client and calls tarvo::load first. A component needs component.hpp and no
// library.
#pragma once

#include "array.hpp"
#include "catalogue.hpp"
#include "collection.hpp"
#include "creation.hpp"
#include "encoding.hpp"
#include "error.hpp"
#include "load.hpp"
#include "query.hpp"
#include "reference.hpp"
#include "registrar.hpp"
#include "registry.hpp"
#include "registry_writer.hpp"
#include "result.hpp"
#include "state.hpp"
#include "state_source.hpp"
#include "tarvo.h"
#include "text.hpp"
#include "type_library.hpp"
#include "uuid.hpp"
#include "value.hpp"
