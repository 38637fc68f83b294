// What process.h needs of the system.
#pragma once

#include <cstdint>
#include <string_view>

namespace support {

inline constexpr std::intptr_t kNoHandle = -1;

struct ChildProcess {
    std::intptr_t process = kNoHandle;
    std::intptr_t input = kNoHandle;  // our end
    std::intptr_t output = kNoHandle; // our end
};

// Starts this program with these two arguments; raises std::runtime_error if it can't.
ChildProcess startSelf(std::string_view first, std::string_view second);

// False at the end of the child's output.
bool readByte(std::intptr_t output, char& byte);

// A child that has ended gets nothing, and that is no failure.
void writeBytes(std::intptr_t input, std::string_view bytes);

void closeHandle(std::intptr_t handle);

// Ends a child at once. Its handle stays.
void killProcess(std::intptr_t process);

// Waits for the end and gives the exit status. The handle is closed.
int waitForEnd(std::intptr_t process);

} // namespace support
