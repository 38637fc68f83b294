// What can be told of a file that is to be loaded as a module, without running any of its code.
#pragma once

#include <string>
#include <vector>

namespace tool {

struct ModuleFacts {
    bool exists = false;
    bool fits = false;                // a library for this system and machine
    std::string kind;                 // for people: "32-bit library for Windows"
    std::string version;              // of TARVO, if the file belongs to it
    std::vector<std::string> imports; // of a library for Windows: the libraries that it needs
};

ModuleFacts examineModule(const std::u16string& path);

} // namespace tool
