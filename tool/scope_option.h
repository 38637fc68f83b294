// The option that says which scope a command works on.
#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace tool {

inline void addScope(CLI::App* command, std::string& scope,
                     const char* text = "The scope; if left out, the user's") {
    command->add_option("--scope", scope, text)
        ->check(CLI::IsMember({"machine", "user"}).description(""))
        ->type_name("machine|user");
}

} // namespace tool
