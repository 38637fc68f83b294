#include "registry/writer_names.h"

#include "tarvo/result.h"

namespace TARVO {

namespace {

constexpr std::u16string_view kSeparators = u"/\\";

constexpr bool isLeading(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
constexpr bool isTrailing(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

// An unpaired surrogate has no place in the file's UTF-8: two names that differ in one alone would
// be written as the same name, and the file could not be read any more.
bool isStorable(std::u16string_view name) {
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name[i] < u' ' || isTrailing(name[i]))
            return false;
        if (isLeading(name[i]) && (++i == name.size() || !isTrailing(name[i])))
            return false;
    }
    return !name.empty();
}

std::u16string fold(std::u16string_view name) {
    std::u16string folded(name);
    for (char16_t& unit : folded)
        if (unit >= u'A' && unit <= u'Z')
            unit = static_cast<char16_t>(unit + (u'a' - u'A'));
    return folded;
}

} // namespace

Result takeValueName(const char16_t* name, std::u16string& folded) {
    if (name == nullptr)
        return RC_NULL_POINTER;
    const std::u16string_view text(name);
    if (!isStorable(text) || text.find_first_of(kSeparators) != std::u16string_view::npos)
        return RC_INVALID_KEY_NAME;
    folded = fold(text);
    return RC_OK;
}

Result splitKeyPath(std::u16string_view path, std::vector<std::u16string>& components) {
    do {
        const std::size_t end = path.find_first_of(kSeparators);
        const std::u16string_view component = path.substr(0, end);
        if (!isStorable(component))
            return RC_INVALID_KEY_NAME;
        components.push_back(fold(component));
        path.remove_prefix(end == std::u16string_view::npos ? path.size() : end + 1);
    } while (!path.empty());
    return RC_OK;
}

Result takeAbsolutePath(std::u16string_view& path) {
    if (path.empty())
        return RC_OK;
    if (kSeparators.find(path.front()) == std::u16string_view::npos)
        return RC_INVALID_KEY_NAME;
    path.remove_prefix(1);
    return RC_OK;
}

} // namespace TARVO
