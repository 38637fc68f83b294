// A COM class in one view of the system's registry, judged as the catalogue judges it.
#pragma once

#include "platform/system_registry.h"
#include "tarvo/uuid.hpp"

#include <optional>
#include <string>

namespace tool {

struct SystemClass {
    bool exists = false;
    bool isUsable = false;
    std::string text; // for people: what it is, or why it can't be used
};

const char* viewName(TARVO::platform::RegistryView view);

SystemClass examineClass(const tarvo::UUID& uuid, TARVO::platform::RegistryView view);

// The identifier of the class that a ProgID leads to in a view.
std::optional<std::string> classOfProgId(const std::u16string& progId,
                                         TARVO::platform::RegistryView view);

} // namespace tool
