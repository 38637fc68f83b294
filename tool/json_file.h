// Files that people give to the tool.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tool {

// The bytes of a file. Raises Failure if it can't be read.
std::string readFile(const std::string& path);

// Raises Failure if the file can't be read, with the line and the column where it is no JSON, or if
// an object has two members of one name.
nlohmann::json readJson(const std::string& path);

} // namespace tool
