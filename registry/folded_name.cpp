#include "registry/folded_name.h"

#include "platform/identifier.h"

#include <cstddef>
#include <cstring>

namespace TARVO {

namespace {

// Names are worked on four units at a time, one in each 16-bit lane of a word.
constexpr std::size_t kLanes = 4;

constexpr std::uint64_t inEveryLane(std::uint64_t unit) {
    return unit * 0x0001000100010001;
}

std::uint64_t loadLanes(const char16_t* units) noexcept {
    std::uint64_t lanes = 0;
    std::memcpy(&lanes, units, sizeof lanes);
    return lanes;
}

// Up to three units in lanes of their own.
std::uint64_t loadFewLanes(const char16_t* units, std::size_t count) noexcept {
    std::uint64_t lanes = 0;
    for (std::size_t i = 0; i < count; ++i)
        lanes |= std::uint64_t{units[i]} << (16 * i);
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

const HashSeed& hashSeed() {
    static const HashSeed seed;
    return seed;
}

// `Fold` is applied to each word of the name. What is left over at the end of a longer name is
// taken as whole words that overlap those before.
template <std::uint64_t (*Fold)(std::uint64_t)>
std::uint32_t hashWords(std::u16string_view name) noexcept {
    const HashSeed& seed = hashSeed();
    constexpr std::uint64_t kFirst = 0x9e3779b97f4a7c15;
    constexpr std::uint64_t kSecond = 0xd1b54a32d192ed03;

    std::uint64_t state = seed.words[0] ^ name.size();
    const auto mixIn = [&](std::uint64_t left, std::uint64_t right) {
        state = mix(state ^ kFirst ^ Fold(left), seed.words[1] ^ Fold(right));
    };
    const char16_t* units = name.data();
    const char16_t* const end = units + name.size();
    if (name.size() < kLanes) {
        mixIn(loadFewLanes(units, name.size()), 0);
    } else {
        for (; end - units > static_cast<std::ptrdiff_t>(2 * kLanes); units += 2 * kLanes)
            mixIn(loadLanes(units), loadLanes(units + kLanes));
        const bool isLong = name.size() >= 2 * kLanes;
        mixIn(loadLanes(isLong ? end - 2 * kLanes : units), loadLanes(end - kLanes));
    }
    return static_cast<std::uint32_t>(mix(state, kSecond));
}

constexpr std::uint64_t keepLanes(std::uint64_t lanes) {
    return lanes;
}

} // namespace

std::uint32_t hashOfName(std::u16string_view name) noexcept {
    return hashWords<foldLanes>(name);
}

std::uint32_t hashOfFoldedName(std::u16string_view name) noexcept {
    return hashWords<keepLanes>(name);
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
