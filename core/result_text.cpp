#include "core/result_text.h"

#include "core/resource.h"
#include "core/slot.h"
#include "tarvo/error.h"
#include "tarvo/result.h"
#include "tarvo/text.hpp"

#include <algorithm>
#include <iterator>

namespace TARVO {

namespace {

struct ResultText {
    Result code;
    std::uint32_t index; // of its text in the resource library
    const char16_t* name;
};

// Ordered by code. The indices follow the resource library's own order.
constexpr ResultText kResultTexts[] = {
    {RC_OK, 0, u"RC_OK"},
    {RC_SEE_LAST_ERROR, 3, u"RC_SEE_LAST_ERROR"},
    {RC_UNSPECIFIED, 4, u"RC_UNSPECIFIED"},
    {RC_CODE_101, 5, u"RC_CODE_101"},
    {RC_OUT_OF_MEMORY, 6, u"RC_OUT_OF_MEMORY"},
    {RC_NULL_POINTER, 7, u"RC_NULL_POINTER"},
    {RC_INVALID_ARGUMENT, 15, u"RC_INVALID_ARGUMENT"},
    {RC_NO_INTERFACE, 17, u"RC_NO_INTERFACE"},
    {RC_READ_ONLY, 18, u"RC_READ_ONLY"},
    {RC_NOT_AVAILABLE, 20, u"RC_NOT_AVAILABLE"},
    {RC_CODE_108, 21, u"RC_CODE_108"},
    {RC_CANNOT_CREATE, 22, u"RC_CANNOT_CREATE"},
    {RC_CODE_110, 23, u"RC_CODE_110"},
    {RC_BAD_DATA, 24, u"RC_BAD_DATA"},
    {RC_END_OF_DATA, 25, u"RC_END_OF_DATA"},
    {RC_FORMAT_TOO_NEW, 26, u"RC_FORMAT_TOO_NEW"},
    {RC_ELEVATION_REFUSED, 19, u"RC_ELEVATION_REFUSED"},
    {RC_CODE_115, 27, u"RC_CODE_115"},
    {RC_PARSER_FAILED, 28, u"RC_PARSER_FAILED"},
    {RC_CODE_117, 29, u"RC_CODE_117"},
    {RC_NOT_FOUND, 8, u"RC_NOT_FOUND"},
    {RC_ACCESS_DENIED, 9, u"RC_ACCESS_DENIED"},
    {RC_BAD_REGISTRY_FILE, 10, u"RC_BAD_REGISTRY_FILE"},
    {RC_WRONG_VALUE_TYPE, 11, u"RC_WRONG_VALUE_TYPE"},
    {RC_INVALID_KEY_NAME, 12, u"RC_INVALID_KEY_NAME"},
    {RC_CODE_505, 13, u"RC_CODE_505"},
    {RC_NO_DATA_FOLDER, 14, u"RC_NO_DATA_FOLDER"},
    {RC_INCOMPLETE_REGISTRATION, 16, u"RC_INCOMPLETE_REGISTRATION"},
    {RC_BAD_LOCATION, 30, u"RC_BAD_LOCATION"},
    {RC_CODE_602, 31, u"RC_CODE_602"},
    {RC_CODE_603, 32, u"RC_CODE_603"},
};

const ResultText* findResultText(Result code) {
    const auto* found = std::ranges::lower_bound(kResultTexts, code, {}, &ResultText::code);
    return found != std::end(kResultTexts) && found->code == code ? found : nullptr;
}

// What stands in where the resource library has no text.
std::u16string nameAndNumber(const ResultText* known, Result code) {
    std::u16string text = known != nullptr ? known->name : u"unknown result code";
    text.append(u" (");
    for (const char digit : std::to_string(code))
        text.push_back(static_cast<char16_t>(digit));
    return text.append(u")");
}

} // namespace

std::u16string textOfResult(Result code) {
    constexpr std::uint32_t kUnspecifiedText = 4;
    const ResultText* known = findResultText(code);
    if (const char16_t* text = resourceText(known != nullptr ? known->index : kUnspecifiedText))
        return text;
    return nameAndNumber(known, code);
}

} // namespace TARVO

TarvoResult getErrorDescription(uint32_t code, IVaskString* text) {
    return TARVO::guardedCall([&]() -> TarvoResult {
        if (text == nullptr)
            return RC_NULL_POINTER;
        return tarvo::setText(text, TARVO::textOfResult(code));
    });
}
