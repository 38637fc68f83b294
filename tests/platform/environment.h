// The environment for a part of a test.
#pragma once

#include <cstdlib>
#include <map>
#include <optional>
#include <string>

// Puts variables of the environment back at its end.
class Environment {
  public:
    void set(const char* name, const char* value) {
        const char* before = std::getenv(name);
        before_.emplace(name, before ? std::optional<std::string>{before} : std::nullopt);
        put(name, value);
    }
    Environment() = default;
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() {
        for (const auto& [name, value] : before_) {
            put(name.c_str(), value ? value->c_str() : nullptr);
        }
    }

  private:
    static void put(const char* name, const char* value) {
        if (value) {
            setenv(name, value, 1);
        } else {
            unsetenv(name);
        }
    }

    std::map<std::string, std::optional<std::string>> before_;
};
