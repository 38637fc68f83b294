// The commands of `tarvo pmc`, as they are spelled on the command line.
#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <string>

namespace tool {

// What the command line says. It must outlive the parse, which also runs the command.
struct PmcOptions {
    std::string component;
    std::string category;
    std::string manifest;
    std::string location;
    std::string scope = "user";
    std::uint32_t flags = 0;
    bool json = false;
};

void addPmcCommands(CLI::App& app, PmcOptions& options);

} // namespace tool
