#include "platform/console.h"

#include <sys/ioctl.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace TARVO::platform {

std::vector<std::string> utf8Arguments(int argc, const char* const* argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
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
