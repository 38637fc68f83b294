// What a program needs to speak UTF-8 with whoever started it. Not part of the library.
#pragma once

#include <string>
#include <vector>

namespace platform {

// The arguments that the program was started with, without its own name.
std::vector<std::string> utf8Arguments(int argc, const char* const* argv);

// As long as it lives, bytes written to the standard streams arrive as they are, and a console
// takes them as UTF-8.
class Utf8Console {
  public:
    Utf8Console();
    ~Utf8Console();
    Utf8Console(const Utf8Console&) = delete;
    Utf8Console& operator=(const Utf8Console&) = delete;

  private:
    unsigned int codePage_ = 0; // of the console before, where consoles have one
};

// The system that the program runs on and its version, for people.
std::string systemDescription();

} // namespace platform
