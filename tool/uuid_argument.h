// Identifiers as a command's user gives them.
#pragma once

#include "tarvo/uuid.hpp"
#include "tool/failure.h"
#include "tool/text.h"

#include <string>

namespace tool {

// Raises Failure if the text is no identifier.
inline tarvo::UUID uuidArgument(const std::string& text) {
    const auto uuid = tarvo::UUID::parse(toUtf16(text));
    if (!uuid)
        throw Failure("not an identifier like {01234567-89ab-cdef-0123-456789abcdef}: " + text);
    return *uuid;
}

} // namespace tool
