// The two scopes as the tool names them, and the order in which a look-up comes to them.
#pragma once

namespace tool {

inline constexpr bool kUserThenMachine[] = {false, true};

inline const char* scopeName(bool allUsers) {
    return allUsers ? "machine" : "user";
}

} // namespace tool
