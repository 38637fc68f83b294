// The commands of `tarvo pmc`. Each prints its result and raises Failure if it can't do its work.
#pragma once

#include <cstdint>
#include <string>

namespace tool {

// Prints all components, or those of a category if one is given.
void listComponents(const std::string& category, bool asJson);

// Prints all that is known of a component, which is named by identifier or ProgID.
void showComponent(const std::string& component, bool json);

void registerComponent(const std::string& manifestPath, bool allUsers);

// Removes a component, or one location of it if that is given.
void unregisterComponent(const std::string& uuidText, const std::string& location, bool allUsers);

// Creates an instance, prints where it came from and what it offers, and releases it.
void createComponent(const std::string& component, std::uint32_t flags);

// Explains why a component is or isn't found, and would or wouldn't be created here.
void explainComponent(const std::string& component, std::uint32_t flags);

} // namespace tool
