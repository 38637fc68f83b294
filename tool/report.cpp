#include "tool/report.h"

#include "platform/console.h"
#include "tool/output.h"
#include "tool/text.h"

#include <algorithm>

namespace tool {

namespace {

constexpr std::size_t kTitle = 15;
constexpr std::size_t kTextColumn = 2 + kTitle + 1;

// Where a line of so many columns ends: behind the last word that fits. A path that is longer than
// that is parted behind one of its folders; any other long word stands alone.
std::size_t endOfLine(std::string_view text, std::size_t columns) {
    if (text.size() <= columns)
        return text.size();
    const std::size_t blank = text.rfind(' ', columns);
    if (blank != std::string_view::npos && blank > 0)
        return blank;
    const std::size_t folder = text.find_last_of("/\\", columns - 1);
    if (folder != std::string_view::npos && folder > 0)
        return folder + 1;
    return std::min(text.find_first_of(" /\\", columns), text.size());
}

std::string_view takeLine(std::string_view& text, std::size_t columns) {
    const std::string_view line = text.substr(0, endOfLine(text, columns));
    text.remove_prefix(line.size());
    if (text.starts_with(' '))
        text.remove_prefix(1);
    return line;
}

void printWrapped(std::string_view text, std::size_t left) {
    const std::size_t columns =
        std::max<std::size_t>(TARVO::platform::consoleWidth(), 60) - left - 1;
    printOut("{}\n", takeLine(text, columns));
    while (!text.empty())
        printOut("{:{}}{}\n", "", left, takeLine(text, columns));
}

} // namespace

void printHeading(std::string_view text) {
    printWrapped(printable(text), 0);
}

void printStep(std::string_view title, std::string_view text) {
    printOut("  {:<{}} ", title, kTitle);
    printWrapped(printable(text), kTextColumn);
}

void printItem(std::string_view lead, std::string_view text) {
    constexpr std::size_t kLead = 3;
    printOut("{:<{}} ", lead, kLead);
    printWrapped(printable(text), kLead + 1);
}

void printVerdict(std::string_view verdict, std::string_view advice) {
    printOut("\n");
    printWrapped(printable(verdict), 0);
    if (!advice.empty())
        printWrapped(printable(advice), 0);
}

} // namespace tool
