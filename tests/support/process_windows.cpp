#include "platform/module.h"
#include "tests/support/process.h"

#include <stdexcept>
#include <string>
#include <windows.h>

namespace support {
namespace {

struct Pipe {
    HANDLE readEnd;
    HANDLE writeEnd;
};

HANDLE asHandle(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

std::intptr_t asNumber(HANDLE handle) {
    return reinterpret_cast<std::intptr_t>(handle);
}

Pipe makePipe() {
    Pipe pipe{};
    if (!CreatePipe(&pipe.readEnd, &pipe.writeEnd, nullptr, 0)) {
        throw std::runtime_error("no pipe for a child process");
    }
    return pipe;
}

void passOn(HANDLE handle) {
    SetHandleInformation(handle, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
}

} // namespace

ChildProcess startSelf(std::string_view first, std::string_view second) {
    const std::u16string path = TARVO::platform::ownModulePath();
    const std::wstring program{path.begin(), path.end()};
    std::wstring command = L"child";
    for (const auto argument : {first, second}) {
        command.append(L" \"").append(argument.begin(), argument.end()).append(L"\"");
    }

    const Pipe input = makePipe();
    const Pipe output = makePipe();
    passOn(input.readEnd);
    passOn(output.writeEnd);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.readEnd;
    startup.hStdOutput = output.writeEnd;
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process{};
    const bool started = CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, TRUE, 0,
                                        nullptr, nullptr, &startup, &process) != 0;
    CloseHandle(input.readEnd);
    CloseHandle(output.writeEnd);
    if (!started) {
        CloseHandle(input.writeEnd);
        CloseHandle(output.readEnd);
        throw std::runtime_error("a child process can't be started");
    }
    CloseHandle(process.hThread);
    return {asNumber(process.hProcess), asNumber(input.writeEnd), asNumber(output.readEnd)};
}

bool readByte(std::intptr_t output, char& byte) {
    DWORD count = 0;
    return ReadFile(asHandle(output), &byte, 1, &count, nullptr) && count == 1;
}

void writeBytes(std::intptr_t input, std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD count = 0;
        if (!WriteFile(asHandle(input), bytes.data(), static_cast<DWORD>(bytes.size()), &count,
                       nullptr)) {
            return;
        }
        bytes.remove_prefix(count);
    }
}

void closeHandle(std::intptr_t handle) {
    CloseHandle(asHandle(handle));
}

void killProcess(std::intptr_t process) {
    TerminateProcess(asHandle(process), 1);
}

int waitForEnd(std::intptr_t process) {
    WaitForSingleObject(asHandle(process), INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(asHandle(process), &status);
    CloseHandle(asHandle(process));
    return static_cast<int>(status);
}

void leavePrivileges() {
    // A process has to be started with raised rights to have them.
}

} // namespace support
