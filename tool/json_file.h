// JSON files that people write.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tool {

// Raises Failure if the file can't be read, or with the line and the column where it is no JSON.
nlohmann::json readJson(const std::string& path);

} // namespace tool
