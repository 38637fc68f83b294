#include "tests/support/process.h"

#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <utility>

namespace support {
namespace {

constexpr std::string_view kRoleArgument = "--role";

auto& roles() {
    static std::map<std::string, void (*)(), std::less<>> table;
    return table;
}

} // namespace

Role::Role(const char* name, void (*run)()) {
    roles().emplace(name, run);
}

Process::Process(std::string_view role) : child_{startSelf(kRoleArgument, role)} {}

void Process::send(std::string_view line) {
    writeBytes(child_.input, std::string{line} + '\n');
}

std::optional<std::string> Process::receive() {
    std::string line;
    char byte = 0;
    while (readByte(child_.output, byte)) {
        if (byte == '\n') {
            return line;
        }
        if (byte != '\r') { // streams of text end their lines with both on some systems
            line += byte;
        }
    }
    return std::nullopt;
}

std::string Process::ask(std::string_view line) {
    send(line);
    return receive().value_or("(ended)");
}

void Process::kill() {
    killProcess(child_.process);
}

int Process::wait() {
    if (child_.process != kNoHandle) {
        closeHandle(std::exchange(child_.input, kNoHandle));
        while (receive()) {
            // A child that is still writing could not end.
        }
        closeHandle(std::exchange(child_.output, kNoHandle));
        status_ = waitForEnd(std::exchange(child_.process, kNoHandle));
    }
    return status_;
}

} // namespace support

int main(int count, char** arguments) {
    if (count == 3 && arguments[1] == support::kRoleArgument) {
        const auto role = support::roles().find(std::string_view{arguments[2]});
        if (role == support::roles().end()) {
            std::cerr << "no such role: " << arguments[2] << '\n';
            return 1;
        }
        role->second();
        return 0;
    }
    testing::InitGoogleTest(&count, arguments);
    return RUN_ALL_TESTS();
}
