#include "registry/writer_names.h"

#include "core/lower_case.h"
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

} // namespace

Result takeValueName(const char16_t* name, std::u16string& folded) {
    if (name == nullptr)
        return RC_NULL_POINTER;
    const std::u16string_view text(name);
    if (!isStorable(text) || text.find_first_of(kSeparators) != std::u16string_view::npos)
        return RC_INVALID_KEY_NAME;
    folded = lowerCase(text);
    return RC_OK;
}

Result splitKeyPath(std::u16string_view path, std::vector<std::u16string>& components) {
    do {
        const std::size_t end = path.find_first_of(kSeparators);
        const std::u16string_view component = path.substr(0, end);
        if (!isStorable(component))
            return RC_INVALID_KEY_NAME;
        components.push_back(lowerCase(component));
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
