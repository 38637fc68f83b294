// Files that people give to the tool.
#pragma once

#include "tool/failure.h"

#include <nlohmann/json.hpp>
#include <string>

namespace tool {

// The bytes of a file. Raises Failure if it can't be read.
std::string readFile(const std::string& path);

// Raises Failure if the file can't be read, or with the line and the column where it is no JSON or
// an object has a member for the second time, of which the parser would keep the last alone.
nlohmann::json readJson(const std::string& path);

// Puts the name of the file before the message of a Failure that the action raises.
template <class Action>
void tellFile(const std::string& path, const Action& action) {
    try {
        action();
    } catch (const Failure& failure) {
        throw Failure(path + ": " + failure.what(), failure.code());
    }
}

} // namespace tool
