// The commands of `tarvo setup`: how an installation makes itself known to programs.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

// What the command line says. It must outlive the parse, which also runs the command.
struct SetupOptions {
    std::string scope = "user";
};

void addSetupCommands(CLI::App& app, SetupOptions& options);

} // namespace tool
