#include "registry/folded_name.h"

#include "platform/identifier.h"

#include <algorithm>
#include <cstring>

namespace TARVO {

namespace {

// Names are worked on four units at a time, one in each 16-bit lane of a word.
constexpr std::size_t kLanes = 4;

constexpr std::uint64_t inEveryLane(std::uint64_t unit) {
    return unit * 0x0001000100010001;
}

std::uint64_t loadLanes(const char16_t* units, std::size_t count = kLanes) noexcept {
    std::uint64_t lanes = 0;
    if (count != 0)
        std::memcpy(&lanes, units, count * sizeof(char16_t));
    return lanes;
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

// Multiplies to the full width and folds the halves together, so that every bit of both factors
// reaches every bit of the result.
std::uint64_t mix(std::uint64_t left, std::uint64_t right) noexcept {
    __extension__ using Wide = unsigned __int128;
    const Wide product = static_cast<Wide>(left) * right;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

struct HashSeed {
    HashSeed() {
        const auto bytes = platform::newIdentifier();
        std::memcpy(words, bytes.data(), sizeof words);
        words[1] |= 1;
    }
    std::uint64_t words[2];
};

} // namespace

std::uint32_t hashOfName(std::u16string_view name) noexcept {
    static const HashSeed seed;
    constexpr std::uint64_t kFirst = 0x9e3779b97f4a7c15;
    constexpr std::uint64_t kSecond = 0xd1b54a32d192ed03;

    std::uint64_t state = seed.words[0] ^ name.size();
    const char16_t* units = name.data();
    std::size_t left = name.size();
    for (; left > 2 * kLanes; left -= 2 * kLanes, units += 2 * kLanes)
        state = mix(state ^ kFirst ^ foldLanes(loadLanes(units)),
                    seed.words[1] ^ foldLanes(loadLanes(units + kLanes)));
    const std::size_t first = std::min(left, kLanes);
    state = mix(state ^ kFirst ^ foldLanes(loadLanes(units, first)),
                seed.words[1] ^ foldLanes(loadLanes(units + first, left - first)));
    state = mix(state, kSecond);
    return static_cast<std::uint32_t>(state);
}

bool isSameName(std::u16string_view name, std::u16string_view stored) noexcept {
    if (name.size() != stored.size())
        return false;
    std::size_t i = 0;
    for (; i + kLanes <= name.size(); i += kLanes)
        if (foldLanes(loadLanes(name.data() + i)) != loadLanes(stored.data() + i))
            return false;
    const std::size_t left = name.size() - i;
    return foldLanes(loadLanes(name.data() + i, left)) == loadLanes(stored.data() + i, left);
}

} // namespace TARVO
