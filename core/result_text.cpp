#include "core/result_text.h"

#include "core/resource.h"
#include "core/slot.h"
#include "tarvo/error.h"
#include "tarvo/result.hpp"
#include "tarvo/text.hpp"

#include <algorithm>
#include <iterator>

namespace TARVO {

namespace {

struct ResultText {
    Result code;
    std::uint32_t index; // of its text in the resource library
};

// Ordered by code. The indices follow the resource library's own order.
constexpr ResultText kResultTexts[] = {
    {RC_OK, 0},
    {RC_SEE_LAST_ERROR, 3},
    {RC_UNSPECIFIED, 4},
    {RC_CODE_101, 5},
    {RC_OUT_OF_MEMORY, 6},
    {RC_NULL_POINTER, 7},
    {RC_INVALID_ARGUMENT, 15},
    {RC_NO_INTERFACE, 17},
    {RC_READ_ONLY, 18},
    {RC_NOT_AVAILABLE, 20},
    {RC_CODE_108, 21},
    {RC_CANNOT_CREATE, 22},
    {RC_CODE_110, 23},
    {RC_BAD_DATA, 24},
    {RC_END_OF_DATA, 25},
    {RC_FORMAT_TOO_NEW, 26},
    {RC_ELEVATION_REFUSED, 19},
    {RC_CODE_115, 27},
    {RC_PARSER_FAILED, 28},
    {RC_CODE_117, 29},
    {RC_NOT_FOUND, 8},
    {RC_ACCESS_DENIED, 9},
    {RC_BAD_REGISTRY_FILE, 10},
    {RC_WRONG_VALUE_TYPE, 11},
    {RC_INVALID_KEY_NAME, 12},
    {RC_CODE_505, 13},
    {RC_NO_DATA_FOLDER, 14},
    {RC_INCOMPLETE_REGISTRATION, 16},
    {RC_BAD_LOCATION, 30},
    {RC_CODE_602, 31},
    {RC_CODE_603, 32},
};

const ResultText* findResultText(Result code) {
    const auto* found = std::ranges::lower_bound(kResultTexts, code, {}, &ResultText::code);
    return found != std::end(kResultTexts) && found->code == code ? found : nullptr;
}

// What stands in where the resource library has no text.
std::u16string nameAndNumber(Result code) {
    const std::string text = tarvo::errorOf(code).message(); // ASCII
    return {text.begin(), text.end()};
}

} // namespace

std::u16string textOfResult(Result code) {
    constexpr std::uint32_t kUnspecifiedText = 4;
    const ResultText* known = findResultText(code);
    if (const char16_t* text = resourceText(known != nullptr ? known->index : kUnspecifiedText))
        return text;
    return nameAndNumber(code);
}

} // namespace TARVO

TarvoResult getErrorDescription(uint32_t code, IVaskString* text) {
    return TARVO::guardedCall([&]() -> TarvoResult {
        if (text == nullptr)
            return RC_NULL_POINTER;
        return tarvo::setText(text, TARVO::textOfResult(code));
    });
}
