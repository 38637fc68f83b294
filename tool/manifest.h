// The manifest of a component: a JSON file with all that a registration holds, by which an author
// registers a component. Its schema is shipped as manifest.schema.json.
#pragma once

#include "tarvo/uuid.hpp"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tool {

struct Manifest {
    tarvo::UUID uuid;
    std::uint32_t flags = 0;
    std::map<std::string, std::string> texts; // by the member's name; what is left out isn't here
    std::vector<tarvo::UUID> categories;
    std::map<std::int32_t, std::string> locations; // paths are whole
};

// Raises Failure with every mistake and its place in the file. A path of a location is taken as
// relative to the manifest's folder, and must lead to a file.
Manifest readManifest(const std::string& path);

} // namespace tool
