// The commands of `tarvo registry`, as they are spelled on the command line.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

// What the command line says. It must outlive the parse, which also runs the command.
struct RegistryOptions {
    std::string path = "/";
    std::string key;
    std::string name;
    std::string value;
    std::string shownScope = "all";
    std::string scope = "user";
    std::string file;
    bool json = false;
    bool isString = false; // as it is without any of the next
    bool isInteger = false;
    bool isUuid = false;
    bool isEmpty = false;
    bool faultFound = false; // out: the command found that a file is malformed
};

void addRegistryCommands(CLI::App& app, RegistryOptions& options);

} // namespace tool
