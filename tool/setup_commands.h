// The command line of `tarvo setup`: how an installation makes itself known to programs, and what
// is wrong with it.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

// What the command line says. It must outlive the parse, which also runs the command.
struct SetupOptions {
    std::string scope = "user";
    bool json = false;
    bool fix = false;
    bool faultFound = false; // the outcome of a check
};

void addSetupCommands(CLI::App& app, SetupOptions& options);

} // namespace tool
