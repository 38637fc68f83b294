// What a program needs to speak UTF-8 with whoever started it. Not part of the library.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace TARVO::platform {

// The arguments that the program was started with, without its own name. There is none for one that
// is malformed in the system's encoding: it couldn't be passed on as it is.
std::vector<std::optional<std::string>> utf8Arguments(int argc, const char* const* argv);

// From now on bytes written to the standard streams arrive as they are, and a console takes them as
// UTF-8. A console that others share is as before when the program ends.
void useUtf8Console();

// How many columns the terminal has that the program prints to; 80 if it doesn't print to one.
std::size_t consoleWidth();

// Does a terminal show what the program writes to the standard error?
bool hasErrorTerminal();

// The system that the program runs on and its version, for people.
std::string systemDescription();

} // namespace TARVO::platform
