// The commands of `tarvo state`, as they are spelled on the command line.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

// What the command line says. It must outlive the parse, which also runs the command.
struct StateOptions {
    std::string file;
    std::string tree;
    bool json = false;
};

void addStateCommands(CLI::App& app, StateOptions& options);

} // namespace tool
