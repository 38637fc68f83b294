#include "platform/console.h"

#include "platform/text.h"

#include <sys/ioctl.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace TARVO::platform {

std::vector<std::optional<std::string>> utf8Arguments(int argc, const char* const* argv) {
    std::vector<std::optional<std::string>> arguments;
    for (int i = 1; i < argc; ++i) {
        const std::string_view text = argv[i];
        std::u16string decoded;
        appendUtf16(text, decoded);
        std::string argument;
        appendUtf8(decoded, argument);
        arguments.push_back(argument == text ? std::optional(argument) : std::nullopt);
    }
    return arguments;
}

void useUtf8Console() {
    // Streams here are bytes, and terminals take UTF-8.
}

std::size_t consoleWidth() {
    winsize size{};
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

bool hasErrorTerminal() {
    return isatty(STDERR_FILENO) == 1;
}

std::string systemDescription() {
    utsname name{};
    if (uname(&name) != 0) {
        return "unknown";
    }
    return std::string{name.sysname} + ' ' + name.release + ", " + name.machine;
}

} // namespace TARVO::platform
