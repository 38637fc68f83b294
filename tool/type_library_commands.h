// The commands of `tarvo library`, as they are spelled on the command line.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

// What the command line says. It must outlive the parse, which also runs the command.
struct TypeLibraryOptions {
    std::string library;
    std::string file;
    std::string location;
    std::string text;
    std::string scope = "user";
    bool json = false;
};

void addTypeLibraryCommands(CLI::App& app, TypeLibraryOptions& options);

} // namespace tool
