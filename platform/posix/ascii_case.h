// Names whose case doesn't count, where ASCII letters alone have case.
#pragma once

namespace TARVO::platform {

template <typename Character>
constexpr Character loweredAscii(Character c) {
    constexpr int distance = 'a' - 'A';
    return c >= Character{'A'} && c <= Character{'Z'} ? static_cast<Character>(c + distance) : c;
}

} // namespace TARVO::platform
