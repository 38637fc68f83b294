// The conversions give, for every input, what the system's own give on Windows, malformed text
// included.
#include "platform/text.h"

#include "platform/ascii.h"

namespace TARVO::platform {
namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kFirstSurrogate = 0xD800;
constexpr char32_t kFirstLowSurrogate = 0xDC00;
constexpr char32_t kSurrogateMask = 0x3FF; // the bits that one surrogate of a pair holds

struct Piece {
    char32_t character;
    std::size_t size;
};

// How many bytes a sequence has that begins with this one; 1 also for what can't begin any.
std::size_t sequenceSize(unsigned char lead) {
    if (lead < 0xC2 || lead > 0xF4) {
        return 1;
    }
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

bool isContinuation(unsigned char byte) {
    return (byte & 0xC0) == 0x80;
}

// With some lead bytes a second byte makes an overlong form, a surrogate, or too large a number.
bool canFollow(unsigned char lead, unsigned char second) {
    switch (lead) {
    case 0xE0:
        return second >= 0xA0;
    case 0xED:
        return second < 0xA0;
    case 0xF0:
        return second >= 0x90;
    case 0xF4:
        return second < 0x90;
    default:
        return true;
    }
}

// Decodes the sequence that `text` begins with. Its first byte is not ASCII.
Piece decode(std::string_view text) {
    const auto byteAt = [=](std::size_t i) {
        return static_cast<unsigned char>(text[i]);
    };
    const unsigned char lead = byteAt(0);
    const std::size_t size = sequenceSize(lead);
    if (size == 1) {
        return {kReplacement, 1};
    }
    if (size > text.size()) {
        return {kReplacement, text.size()};
    }
    char32_t character = lead & (0x7Fu >> size);
    for (std::size_t i = 1; i < size; ++i) {
        if (!isContinuation(byteAt(i))) {
            return {kReplacement, i};
        }
        if (i == 1 && !canFollow(lead, byteAt(i))) {
            return {kReplacement, 2};
        }
        character = character << 6 | (byteAt(i) & 0x3Fu);
    }
    return {character, size};
}

char16_t* putUtf16(char32_t character, char16_t* target) {
    if (character < kFirstSupplementary) {
        *target++ = static_cast<char16_t>(character);
        return target;
    }
    const char32_t bits = character - kFirstSupplementary;
    *target++ = static_cast<char16_t>(kFirstSurrogate | bits >> 10);
    *target++ = static_cast<char16_t>(kFirstLowSurrogate | (bits & kSurrogateMask));
    return target;
}

bool isHighSurrogate(char16_t unit) {
    return (unit & ~kSurrogateMask) == kFirstSurrogate;
}

bool isLowSurrogate(char16_t unit) {
    return (unit & ~kSurrogateMask) == kFirstLowSurrogate;
}

// Takes the character that `text` begins with.
Piece decode(std::u16string_view text) {
    const char16_t first = text[0];
    if (isHighSurrogate(first) && text.size() > 1 && isLowSurrogate(text[1])) {
        const char32_t bits = (first & kSurrogateMask) << 10 | (text[1] & kSurrogateMask);
        return {kFirstSupplementary + bits, 2};
    }
    return {isHighSurrogate(first) || isLowSurrogate(first) ? kReplacement : first, 1};
}

char* putUtf8(char32_t character, char* target) {
    const auto put = [&target](char32_t byte) {
        *target++ = static_cast<char>(byte);
    };
    if (character < 0x80) {
        put(character);
    } else if (character < 0x800) {
        put(0xC0 | character >> 6);
        put(0x80 | (character & 0x3F));
    } else if (character < kFirstSupplementary) {
        put(0xE0 | character >> 12);
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    } else {
        put(0xF0 | character >> 18);
        put(0x80 | (character >> 12 & 0x3F));
        put(0x80 | (character >> 6 & 0x3F));
        put(0x80 | (character & 0x3F));
    }
    return target;
}

} // namespace

void appendUtf16(std::string_view utf8, std::u16string& out) {
    const std::size_t start = out.size();
    out.resize(start + utf8.size()); // no byte becomes more than one unit
    char16_t* target = out.data() + start;
    for (;;) {
        const std::size_t ascii = copyAsciiFront(utf8, target);
        utf8.remove_prefix(ascii);
        target += ascii;
        if (utf8.empty()) {
            break;
        }
        const Piece piece = decode(utf8);
        utf8.remove_prefix(piece.size);
        target = putUtf16(piece.character, target);
    }
    out.resize(static_cast<std::size_t>(target - out.data()));
}

void appendUtf8(std::u16string_view text, std::string& out) {
    const std::size_t start = out.size();
    out.resize(start + text.size());
    const std::size_t front = copyAsciiFront(text, out.data() + start);
    text.remove_prefix(front);
    if (text.empty()) {
        return; // nearly always
    }
    constexpr std::size_t bytesPerUnit = 3;
    out.resize(start + front + text.size() * bytesPerUnit);
    char* target = out.data() + start + front;
    while (!text.empty()) {
        const Piece piece = decode(text);
        text.remove_prefix(piece.size);
        target = putUtf8(piece.character, target);
        const std::size_t ascii = copyAsciiFront(text, target);
        text.remove_prefix(ascii);
        target += ascii;
    }
    out.resize(static_cast<std::size_t>(target - out.data()));
}

} // namespace TARVO::platform
