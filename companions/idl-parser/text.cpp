#include "companions/idl-parser/text.h"

#include "platform/text.h"

#include <algorithm>

namespace TARVO::idl {
namespace {

constexpr std::string_view kBlanks = " \t\r\n\f\v";

std::string_view withoutBlanksInFront(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text;
}

std::string_view withoutBlanksBehind(std::string_view text) {
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

void dropPrefix(std::string_view& text, std::string_view prefix) {
    if (text.starts_with(prefix))
        text.remove_prefix(prefix.size());
}

// A line without its mark and the one blank behind that. A line that has no mark keeps its indent.
std::string_view withoutMark(std::string_view line, std::string_view mark) {
    const std::string_view marked = withoutBlanksInFront(line);
    if (marked.starts_with(mark)) {
        line = marked.substr(mark.size());
        dropPrefix(line, " ");
    }
    return withoutBlanksBehind(line);
}

} // namespace

std::string inQuotes(std::string_view text) {
    return "'" + std::string(text) + "'";
}

const char* faultOfQuoted(std::string_view text) noexcept {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (static_cast<unsigned char>(text[i]) < 0x20 && text[i] != '\t')
            return "a text can't hold control characters";
        if (text[i] != '\\')
            continue;
        ++i;
        if (i == text.size() || (text[i] != '"' && text[i] != '\\'))
            return "a text knows the escapes \\\" and \\\\ alone; paths may have / as well";
    }
    return nullptr;
}

std::u16string plainText(std::string_view quoted) {
    std::string plain;
    plain.reserve(quoted.size());
    for (std::size_t i = 0; i < quoted.size(); ++i) {
        if (quoted[i] == '\\' && i + 1 < quoted.size())
            ++i;
        plain.push_back(quoted[i]);
    }
    std::u16string text;
    platform::appendUtf16(plain, text);
    return text;
}

std::u16string documentationText(std::string_view comment) {
    const bool isBlock = comment.starts_with("/**");
    const std::string_view mark = isBlock ? "*" : "///";
    if (isBlock)
        comment = comment.substr(2, comment.size() - 4); // "/*" and "*/"
    std::string text;
    for (bool more = true; more;) {
        const std::size_t end = comment.find('\n');
        const std::string_view line = withoutMark(comment.substr(0, end), mark);
        if (!text.empty() || !line.empty())
            text.append(line).push_back('\n');
        more = end != std::string_view::npos;
        comment.remove_prefix(more ? end + 1 : 0);
    }
    std::u16string result;
    platform::appendUtf16(withoutBlanksBehind(text), result);
    return result;
}

} // namespace TARVO::idl
