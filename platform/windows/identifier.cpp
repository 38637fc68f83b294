#include "platform/identifier.h"

#include "platform/windows/native_text.h"

#include <algorithm>
#include <bit>
#include <objbase.h>

namespace TARVO::platform {
namespace {

// The first three fields are numbers in the machine's order; the text prints them from the top.
IdentifierBytes swapped(IdentifierBytes bytes) {
    std::reverse(bytes.begin(), bytes.begin() + 4);
    std::reverse(bytes.begin() + 4, bytes.begin() + 6);
    std::reverse(bytes.begin() + 6, bytes.begin() + 8);
    return bytes;
}

} // namespace

IdentifierBytes newIdentifier() {
    GUID guid{};
    CoCreateGuid(&guid);
    return swapped(std::bit_cast<IdentifierBytes>(guid));
}

std::optional<IdentifierBytes> classIdentifier(const char16_t* text) {
    CLSID identifier{};
    if (FAILED(CLSIDFromString(asNative(text), &identifier))) {
        return std::nullopt;
    }
    return swapped(std::bit_cast<IdentifierBytes>(identifier));
}

ClassText classText(const IdentifierBytes& bytes) {
    ClassText text{};
    StringFromGUID2(std::bit_cast<GUID>(swapped(bytes)), reinterpret_cast<wchar_t*>(text.data()),
                    static_cast<int>(text.size()));
    return text;
}

} // namespace TARVO::platform
