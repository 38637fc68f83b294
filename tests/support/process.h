// Other processes, for tests of what happens between processes. A test program starts itself again
// in a role, and the two talk in lines over the child's standard streams: so a test says what
// happens in which order, and never waits by guess. A program with roles is linked with
// tarvo_test_process, which brings the main function for both of its lives.
#pragma once

#include "tests/support/process_system.h"

#include <optional>
#include <string>
#include <string_view>

namespace support {

// Makes a function a role: it runs in place of the tests, with std::cin and std::cout leading to
// the program that started it.
class Role {
  public:
    Role(const char* name, void (*run)());
};

// This program in a role.
class Process {
  public:
    explicit Process(std::string_view role);
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;
    ~Process() { wait(); }

    void send(std::string_view line);

    // The next line of the child's output; nothing behind its last.
    std::optional<std::string> receive();

    // Sends a line and gives the one that comes back; "(ended)" if none does.
    std::string ask(std::string_view line);

    // Ends the child at once, wherever it is. What it had written can still be received.
    void kill();

    // Ends the child's input, waits for its end and gives its exit status.
    int wait();

  private:
    ChildProcess child_;
    int status_ = 0;
};

// Gives up the rights of a superuser, if this process has them, so that the rights of files count.
void leavePrivileges();

// Lets no file of this process grow beyond this size, as if the disk were full; nothing lifts the
// limit. Posix only.
void limitFileSize(std::optional<std::size_t> bytes);

// Lets this process be killed in the write that takes a file beyond this size. Posix only.
void dieAtFileSize(std::size_t bytes);

} // namespace support
