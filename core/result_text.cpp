#include "core/result_text.h"

#include "core/resource.h"
#include "core/slot.h"
#include "tarvo/error.h"
#include "tarvo/resource.h"
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

// Ordered by code, which isn't the order of the texts.
constexpr ResultText kResultTexts[] = {
    {RC_OK, TARVO_RESOURCE_OK},
    {RC_SEE_LAST_ERROR, TARVO_RESOURCE_SEE_LAST_ERROR},
    {RC_UNSPECIFIED, TARVO_RESOURCE_UNSPECIFIED},
    {RC_CODE_101, TARVO_RESOURCE_CODE_101},
    {RC_OUT_OF_MEMORY, TARVO_RESOURCE_OUT_OF_MEMORY},
    {RC_NULL_POINTER, TARVO_RESOURCE_NULL_POINTER},
    {RC_INVALID_ARGUMENT, TARVO_RESOURCE_INVALID_ARGUMENT},
    {RC_NO_INTERFACE, TARVO_RESOURCE_NO_INTERFACE},
    {RC_READ_ONLY, TARVO_RESOURCE_READ_ONLY},
    {RC_NOT_AVAILABLE, TARVO_RESOURCE_NOT_AVAILABLE},
    {RC_CODE_108, TARVO_RESOURCE_CODE_108},
    {RC_CANNOT_CREATE, TARVO_RESOURCE_CANNOT_CREATE},
    {RC_CODE_110, TARVO_RESOURCE_CODE_110},
    {RC_BAD_DATA, TARVO_RESOURCE_BAD_DATA},
    {RC_END_OF_DATA, TARVO_RESOURCE_END_OF_DATA},
    {RC_FORMAT_TOO_NEW, TARVO_RESOURCE_FORMAT_TOO_NEW},
    {RC_ELEVATION_REFUSED, TARVO_RESOURCE_ELEVATION_REFUSED},
    {RC_CODE_115, TARVO_RESOURCE_CODE_115},
    {RC_PARSER_FAILED, TARVO_RESOURCE_PARSER_FAILED},
    {RC_CODE_117, TARVO_RESOURCE_CODE_117},
    {RC_NOT_FOUND, TARVO_RESOURCE_NOT_FOUND},
    {RC_ACCESS_DENIED, TARVO_RESOURCE_ACCESS_DENIED},
    {RC_BAD_REGISTRY_FILE, TARVO_RESOURCE_BAD_REGISTRY_FILE},
    {RC_WRONG_VALUE_TYPE, TARVO_RESOURCE_WRONG_VALUE_TYPE},
    {RC_INVALID_KEY_NAME, TARVO_RESOURCE_INVALID_KEY_NAME},
    {RC_CODE_505, TARVO_RESOURCE_CODE_505},
    {RC_NO_DATA_FOLDER, TARVO_RESOURCE_NO_DATA_FOLDER},
    {RC_INCOMPLETE_REGISTRATION, TARVO_RESOURCE_INCOMPLETE_REGISTRATION},
    {RC_BAD_LOCATION, TARVO_RESOURCE_BAD_LOCATION},
    {RC_CODE_602, TARVO_RESOURCE_CODE_602},
    {RC_CODE_603, TARVO_RESOURCE_CODE_603},
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
