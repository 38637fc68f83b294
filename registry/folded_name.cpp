#include "registry/folded_name.h"

#include "core/text_hash.h"

#include <cstddef>

namespace TARVO {

namespace {

constexpr std::uint64_t inEveryLane(std::uint64_t unit) {
    return unit * 0x0001000100010001;
}

// Turns each lane that holds A to Z into a to z. The sums set a lane's top bit where its lower 15
// bits reach a bound, and can't carry into the next lane.
constexpr std::uint64_t foldLanes(std::uint64_t lanes) {
    const std::uint64_t topBits = inEveryLane(0x8000);
    const std::uint64_t low = lanes & ~topBits;
    const std::uint64_t fromA = low + inEveryLane(0x8000 - u'A');
    const std::uint64_t beyondZ = low + inEveryLane(0x8000 - u'Z' - 1);
    const std::uint64_t capital = fromA & ~beyondZ & ~lanes & topBits;
    return lanes | (capital >> 10); // the top bit becomes the bit that tells the cases apart
}

} // namespace

std::uint32_t hashOfName(std::u16string_view name) noexcept {
    return static_cast<std::uint32_t>(hashOfText<foldLanes>(name));
}

std::uint32_t hashOfFoldedName(std::u16string_view name) noexcept {
    return static_cast<std::uint32_t>(hashOfText(name));
}

bool isSameName(std::u16string_view name, std::u16string_view stored) noexcept {
    if (name.size() != stored.size())
        return false;
    if (name.size() < kLanes)
        return foldLanes(loadFewLanes(name.data(), name.size())) ==
               loadFewLanes(stored.data(), stored.size());
    const auto isSameWord = [&](std::size_t place) {
        return foldLanes(loadLanes(name.data() + place)) == loadLanes(stored.data() + place);
    };
    for (std::size_t place = 0; place + kLanes <= name.size(); place += kLanes)
        if (!isSameWord(place))
            return false;
    return isSameWord(name.size() - kLanes);
}

} // namespace TARVO
