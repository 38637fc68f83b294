// The built parser as a caller has it: loaded by path, given the path of a file.
#pragma once

#include "platform/module.h"
#include "platform/text.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/definition_text.h"
#include "tests/support/text.h"

#include <tarvo/idl_parser.h>
#include <tarvo/reference.hpp>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>

namespace tests {

using ParseResult = tarvo::Reference<IVaskIDLParseResult>;

inline ParseResult parse(const char16_t* path) {
    static auto* const function =
        reinterpret_cast<VaskIDLParseFunction*>(TARVO::platform::findSymbol(
            TARVO::platform::loadModule(wide(PARSER_LIBRARY)), "VaskIDLParse"));
    if (function == nullptr)
        std::abort();
    return ParseResult::adopt(function(path));
}

// A definition's text or error message; paths of the folder lose their beginning.
inline std::string textIn(const TemporaryFolder& folder, const std::u16string& path) {
    std::string text = definitionText(parse(path.c_str()).get());
    std::string beginning;
    TARVO::platform::appendUtf8(folder / u"", beginning);
    for (std::size_t at; (at = text.find(beginning)) != std::string::npos;)
        text.erase(at, beginning.size());
    return text;
}

// Takes the marks ^ out of a file's text, and gives the errors that they stand for: the place of
// each and the next of the messages, which it takes away.
inline std::string takeMarks(std::string& text, const std::string& file,
                             std::string_view& messages) {
    std::string errors;
    for (std::size_t mark; (mark = text.find('^')) != std::string::npos;) {
        text.erase(mark, 1);
        const std::string_view before = std::string_view(text).substr(0, mark);
        const std::string_view line = before.substr(before.rfind('\n') + 1);
        const auto isFirstByte = [](char byte) {
            return (byte & 0xC0) != 0x80;
        };
        const std::size_t end = std::min(messages.find('\n'), messages.size());
        errors += file + ":" + std::to_string(std::count(before.begin(), before.end(), '\n') + 1) +
                  ":" + std::to_string(std::count_if(line.begin(), line.end(), isFirstByte) + 1) +
                  ": " + std::string(messages.substr(0, end)) + "\n";
        messages.remove_prefix(std::min(end + 1, messages.size()));
    }
    return errors;
}

// A library of its own around some items.
inline std::string inLibrary(const std::string& items) {
    return "[uuid(00000000-0000-0000-0000-000000000001)] library L {\n" + items + "\n}\n";
}

} // namespace tests
