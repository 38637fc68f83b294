#include "client/version.h"

#include <algorithm>
#include <exception>

namespace TARVO {

namespace {

// Takes the next field off the text; several points in a row part two fields as one does.
std::string takeField(std::u16string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(u'.'), text.size()));
    const std::u16string_view field = text.substr(0, text.find(u'.'));
    text.remove_prefix(field.size());
    std::string narrowed;
    for (const char16_t unit : field)
        narrowed.push_back(unit < 0x80 ? static_cast<char>(unit) : '?');
    return narrowed;
}

} // namespace

std::array<std::uint32_t, 4> parseInstalledVersion(std::u16string_view text) {
    std::array<std::uint32_t, 4> version{};
    std::size_t field = 0;
    for (const char16_t unit : text) {
        if (unit == u'.')
            ++field;
        else if (unit < u'0' || unit > u'9')
            break;
        if (field == version.size())
            break;
        if (unit != u'.')
            version[field] = version[field] * 10 + (unit - u'0');
    }
    return version;
}

std::optional<LibraryVersion> parseLibraryVersion(std::u16string_view text) {
    try {
        std::array<int, 4> fields{};
        for (int& field : fields)
            field = std::stoi(takeField(text));
        return LibraryVersion{fields[0], fields[1], fields[2]};
    } catch (const std::exception&) {
        return std::nullopt; // a field that isn't there, isn't a number or is too large for one
    }
}

} // namespace TARVO
