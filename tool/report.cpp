#include "tool/report.h"

#include "platform/console.h"
#include "tool/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

constexpr std::size_t kTitle = 15;
constexpr std::size_t kLeft = 2 + kTitle + 1;

// Takes as many words as fit into the columns; a word that is longer than that stands alone.
std::string_view takeLine(std::string_view& text, std::size_t columns) {
    std::size_t end = text.size();
    if (end > columns) {
        const std::size_t blank = text.rfind(' ', columns);
        end = blank != std::string_view::npos && blank > 0 ? blank : text.find(' ');
        end = std::min(end, text.size());
    }
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

void printWrapped(std::string_view text, std::size_t left) {
    const std::size_t columns = std::max<std::size_t>(platform::consoleWidth(), 60) - left - 1;
    fmt::print("{}\n", takeLine(text, columns));
    while (!text.empty())
        fmt::print("{:{}}{}\n", "", left, takeLine(text, columns));
}

} // namespace

void printHeading(std::string_view text) {
    printWrapped(printable(text), 0);
}

void printStep(std::string_view title, std::string_view text) {
    fmt::print("  {:<{}} ", title, kTitle);
    printWrapped(printable(text), kLeft);
}

void printVerdict(std::string_view verdict, std::string_view advice) {
    fmt::print("\n");
    printWrapped(printable(verdict), 0);
    if (!advice.empty())
        printWrapped(printable(advice), 0);
}

} // namespace tool
