// Result codes in the terms of the C++ library: a category for std::error_code, the names of the
// codes, and the way from one to the other.
#pragma once

#include "result.h"

#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace tarvo {

// The name of a code as a program spells it; empty for a code that isn't one of the library's.
constexpr std::string_view nameOfResult(TarvoResult code) noexcept {
    constexpr std::pair<TarvoResult, std::string_view> kNames[] = {
        {RC_OK, "RC_OK"},
        {RC_SEE_LAST_ERROR, "RC_SEE_LAST_ERROR"},
        {RC_UNSPECIFIED, "RC_UNSPECIFIED"},
        {RC_CODE_101, "RC_CODE_101"},
        {RC_OUT_OF_MEMORY, "RC_OUT_OF_MEMORY"},
        {RC_NULL_POINTER, "RC_NULL_POINTER"},
        {RC_INVALID_ARGUMENT, "RC_INVALID_ARGUMENT"},
        {RC_NO_INTERFACE, "RC_NO_INTERFACE"},
        {RC_READ_ONLY, "RC_READ_ONLY"},
        {RC_NOT_AVAILABLE, "RC_NOT_AVAILABLE"},
        {RC_CODE_108, "RC_CODE_108"},
        {RC_CANNOT_CREATE, "RC_CANNOT_CREATE"},
        {RC_CODE_110, "RC_CODE_110"},
        {RC_BAD_DATA, "RC_BAD_DATA"},
        {RC_END_OF_DATA, "RC_END_OF_DATA"},
        {RC_FORMAT_TOO_NEW, "RC_FORMAT_TOO_NEW"},
        {RC_ELEVATION_REFUSED, "RC_ELEVATION_REFUSED"},
        {RC_CODE_115, "RC_CODE_115"},
        {RC_PARSER_FAILED, "RC_PARSER_FAILED"},
        {RC_CODE_117, "RC_CODE_117"},
        {RC_NOT_FOUND, "RC_NOT_FOUND"},
        {RC_ACCESS_DENIED, "RC_ACCESS_DENIED"},
        {RC_BAD_REGISTRY_FILE, "RC_BAD_REGISTRY_FILE"},
        {RC_WRONG_VALUE_TYPE, "RC_WRONG_VALUE_TYPE"},
        {RC_INVALID_KEY_NAME, "RC_INVALID_KEY_NAME"},
        {RC_CODE_505, "RC_CODE_505"},
        {RC_NO_DATA_FOLDER, "RC_NO_DATA_FOLDER"},
        {RC_INCOMPLETE_REGISTRATION, "RC_INCOMPLETE_REGISTRATION"},
        {RC_BAD_LOCATION, "RC_BAD_LOCATION"},
        {RC_CODE_602, "RC_CODE_602"},
        {RC_CODE_603, "RC_CODE_603"},
    };
    for (const auto& [known, name] : kNames)
        if (known == code)
            return name;
    return {};
}

// The category of the result codes. Its messages are names and numbers, which need no library; the
// text for people is textOfResult's (error.hpp).
inline const std::error_category& resultCategory() noexcept {
    class Category final : public std::error_category {
      public:
        const char* name() const noexcept override { return "tarvo"; }
        std::string message(int code) const override {
            const auto result = static_cast<TarvoResult>(code);
            const std::string_view known = nameOfResult(result);
            std::string text(known.empty() ? "unknown result code" : known);
            return text.append(" (").append(std::to_string(result)).append(")");
        }
    };
    static const Category category;
    return category;
}

//     const std::error_code error = tarvo::errorOf(RC_NOT_FOUND);
//     std::cerr << error.message() << '\n';
inline std::error_code errorOf(TarvoResult result) noexcept {
    return {static_cast<int>(result), resultCategory()};
}

// The other way: the code that an error of this category bears; any other is RC_UNSPECIFIED.
inline TarvoResult resultOf(const std::system_error& error) noexcept {
    return error.code().category() == resultCategory()
               ? static_cast<TarvoResult>(error.code().value())
               : TarvoResult{RC_UNSPECIFIED};
}

} // namespace tarvo
