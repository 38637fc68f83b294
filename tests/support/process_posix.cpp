#include "platform/module.h"
#include "platform/text.h"
#include "tests/support/process.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace support {
namespace {

struct Pipe {
    int readEnd;
    int writeEnd;
};

Pipe makePipe() {
    std::array<int, 2> ends;
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe for a child process");
    }
    return {ends[0], ends[1]};
}

} // namespace

ChildProcess startSelf(std::string_view first, std::string_view second) {
    std::signal(SIGPIPE, SIG_IGN); // a child may end before it has read all
    std::string program;
    TARVO::platform::appendUtf8(TARVO::platform::ownModulePath(), program);
    // Not the path: a program need not be told how it was found.
    std::string name = "child";
    std::string firstText{first};
    std::string secondText{second};
    std::array<char*, 4> arguments{name.data(), firstText.data(), secondText.data(), nullptr};

    const Pipe input = makePipe();
    const Pipe output = makePipe();
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, input.readEnd, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, output.writeEnd, STDOUT_FILENO);
    pid_t process = -1;
    const int error =
        posix_spawn(&process, program.c_str(), &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(input.readEnd);
    close(output.writeEnd);
    if (error != 0) {
        close(input.writeEnd);
        close(output.readEnd);
        throw std::runtime_error("a child process can't be started");
    }
    return {process, input.writeEnd, output.readEnd};
}

bool readByte(std::intptr_t output, char& byte) {
    return read(static_cast<int>(output), &byte, 1) == 1;
}

void writeBytes(std::intptr_t input, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(static_cast<int>(input), bytes.data(), bytes.size());
        if (count < 0) {
            return;
        }
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

void closeHandle(std::intptr_t handle) {
    close(static_cast<int>(handle));
}

void killProcess(std::intptr_t process) {
    kill(static_cast<pid_t>(process), SIGKILL);
}

int waitForEnd(std::intptr_t process) {
    int status = 0;
    while (waitpid(static_cast<pid_t>(process), &status, 0) < 0 && errno == EINTR) {
    }
    constexpr int signalBase = 128; // as a shell tells it
    return WIFEXITED(status) ? WEXITSTATUS(status) : signalBase + WTERMSIG(status);
}

void leavePrivileges() {
    constexpr uid_t nobody = 65534;
    if (geteuid() == 0 && (setgid(nobody) != 0 || setuid(nobody) != 0)) {
        throw std::runtime_error("the rights of the superuser can't be given up");
    }
}

void limitFileSize(std::optional<std::size_t> bytes) {
    std::signal(SIGXFSZ, SIG_IGN); // or the write would not come back to tell
    rlimit limit{};
    if (getrlimit(RLIMIT_FSIZE, &limit) == 0) {
        limit.rlim_cur = bytes.value_or(limit.rlim_max); // a lowered maximum could not be lifted
    }
    if (setrlimit(RLIMIT_FSIZE, &limit) != 0) {
        throw std::runtime_error("the size of files can't be limited");
    }
}

void dieAtFileSize(std::size_t bytes) {
    limitFileSize(bytes);
    std::signal(SIGXFSZ, SIG_DFL);
}

} // namespace support
