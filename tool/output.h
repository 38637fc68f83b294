// What the tool prints, and what it shows while there is nothing to print yet: a command that has
// worked for longer than a second says on a terminal what it is at and for how long. That line goes
// before anything is printed, which is why all that the tool prints comes through here.
#pragma once

#include <condition_variable>
#include <cstdio>
#include <fmt/format.h>
#include <mutex>
#include <stop_token>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace tool {

// The line on the terminal behind the standard error. There is one such object, in main.
class Progress {
  public:
    Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    ~Progress();

    // What the command is at from now on: "Reading x.json".
    static void say(std::string what);

    // Takes the line off the terminal; there is none any more.
    static void end();

  private:
    void show(const std::stop_token& stop);

    static Progress* only_;
    std::mutex mutex_;
    std::condition_variable_any stopped_;
    std::string what_ = "Working";
    std::jthread thread_; // runs only if there is a terminal
};

// To the standard output.
template <class... Args>
void printOut(fmt::format_string<Args...> format, Args&&... arguments) {
    Progress::end();
    fmt::print(format, std::forward<Args>(arguments)...);
}

// To the standard error, with all control characters shown as their symbols but the ends of lines:
// messages repeat what users and files say.
void writeError(std::string_view text);

template <class... Args>
void printError(fmt::format_string<Args...> format, Args&&... arguments) {
    Progress::end();
    writeError(fmt::format(format, std::forward<Args>(arguments)...));
}

} // namespace tool
