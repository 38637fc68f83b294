#include "registry/markup.h"

#include <array>
#include <cstdint>

namespace TARVO {

namespace {

constexpr std::size_t kNone = std::string_view::npos;

enum CharacterClass : std::uint8_t {
    kSpace = 1,
    kLetter = 2,
    kNamePart = 4,
    kDigit = 8,
    kHexDigit = 16
};

constexpr std::array<std::uint8_t, 256> makeClasses() {
    std::array<std::uint8_t, 256> classes{};
    for (const char c : {' ', '\t', '\n', '\v', '\f', '\r'})
        classes[static_cast<unsigned char>(c)] = kSpace;
    for (unsigned c = 'A'; c <= 'Z'; ++c)
        classes[c] = classes[c + 'a' - 'A'] = kLetter | kNamePart;
    for (unsigned c = '0'; c <= '9'; ++c)
        classes[c] = kNamePart | kDigit | kHexDigit;
    for (unsigned c = 'A'; c <= 'F'; ++c) {
        classes[c] |= kHexDigit;
        classes[c + 'a' - 'A'] |= kHexDigit;
    }
    classes['-'] = classes['_'] = kNamePart;
    return classes;
}

constexpr std::array<std::uint8_t, 256> kClasses = makeClasses();

bool isA(char byte, unsigned classes) noexcept {
    return (kClasses[static_cast<unsigned char>(byte)] & classes) != 0;
}

// The first position from `position` on that is of none of the classes.
std::size_t skip(std::string_view bytes, std::size_t position, unsigned classes) noexcept {
    while (position < bytes.size() && isA(bytes[position], classes))
        ++position;
    return position;
}

// The same where a byte of none of the classes is known to come.
const char* skipTo(const char* position, unsigned classes) noexcept {
    while (isA(*position, classes))
        ++position;
    return position;
}

// `match` runs from a < to the first > behind it.
bool isComment(std::string_view match) noexcept {
    constexpr std::string_view kOpening = "<!--";
    constexpr std::string_view kClosing = "-->";
    return match.size() >= kOpening.size() + kClosing.size() && match.starts_with(kOpening) &&
           match.ends_with(kClosing);
}

bool isInstruction(std::string_view match) noexcept {
    constexpr std::string_view kOpening = "<?";
    constexpr std::string_view kClosing = "?>";
    return match.size() >= kOpening.size() + kClosing.size() && match.starts_with(kOpening) &&
           match.ends_with(kClosing);
}

// The closing > ends every run of letters and blanks.
bool readElement(std::string_view match, MarkupTag& tag) noexcept {
    const char* position = match.data() + 1;
    tag.isEnd = *position == '/';
    const char* name = skipTo(position + (tag.isEnd ? 1 : 0), kSpace);
    if (!isA(*name, kLetter))
        return false;
    const char* nameEnd = skipTo(name, kNamePart);
    const char* end = match.data() + match.size() - 1;
    tag.isSelfClosed = end > nameEnd && end[-1] == '/';
    if (tag.isSelfClosed)
        --end;
    tag.name = {name, static_cast<std::size_t>(nameEnd - name)};
    tag.attributes = {nameEnd, static_cast<std::size_t>(end - nameEnd)};
    return true;
}

} // namespace

bool MarkupScanner::next(MarkupTag& tag) noexcept {
    for (std::size_t start = bytes_.find('<', position_); start != kNone;
         start = bytes_.find('<', start + 1)) {
        if (closing_ <= start)
            closing_ = bytes_.find('>', start);
        if (closing_ == kNone)
            return false;
        const std::string_view match = bytes_.substr(start, closing_ + 1 - start);
        tag.isElement = readElement(match, tag);
        if (!tag.isElement && !isComment(match) && !isInstruction(match))
            continue;
        tag.textBefore = bytes_.substr(position_, start - position_);
        tag.position = start;
        position_ = closing_ + 1;
        return true;
    }
    return false;
}

// A failed attempt goes on behind the white space that it began with: an attempt from within that
// white space would come to the same name.
bool AttributeScanner::next(std::string_view& name, std::string_view& value) noexcept {
    std::size_t position = 0;
    while (position < rest_.size()) {
        if (!isA(rest_[position], kSpace)) {
            ++position;
            continue;
        }
        const std::size_t nameStart = skip(rest_, position, kSpace);
        position = nameStart;
        if (nameStart == rest_.size() || !isA(rest_[nameStart], kLetter))
            continue;
        const std::size_t nameEnd = skip(rest_, nameStart, kNamePart);
        const std::size_t equals = skip(rest_, nameEnd, kSpace);
        if (equals == rest_.size() || rest_[equals] != '=')
            continue;
        const std::size_t quote = skip(rest_, equals + 1, kSpace);
        if (quote == rest_.size() || rest_[quote] != '"')
            continue;
        const std::size_t valueEnd = rest_.find('"', quote + 1);
        if (valueEnd == kNone)
            continue;
        name = rest_.substr(nameStart, nameEnd - nameStart);
        value = rest_.substr(quote + 1, valueEnd - quote - 1);
        rest_.remove_prefix(valueEnd + 1);
        return true;
    }
    rest_ = {};
    return false;
}

namespace {

struct NamedReference {
    std::string_view text;
    char character;
};

constexpr NamedReference kNamedReferences[] = {
    {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};

unsigned digitValue(char digit) noexcept {
    if (digit >= '0' && digit <= '9')
        return static_cast<unsigned>(digit - '0');
    return static_cast<unsigned>((digit | ('a' - 'A')) - 'a' + 10);
}

// At most four digits can stand in a reference, so three bytes are enough. Surrogates are encoded
// like any other number; what becomes of them is the business of the conversion that follows.
void appendCodePoint(unsigned codePoint, std::string& out) {
    constexpr unsigned kFirstKept = 9;
    if (codePoint < kFirstKept)
        return;
    const auto append = [&out](unsigned byte) {
        out.push_back(static_cast<char>(byte));
    };
    if (codePoint < 0x80) {
        append(codePoint);
    } else if (codePoint < 0x800) {
        append(0xC0 | (codePoint >> 6));
        append(0x80 | (codePoint & 0x3F));
    } else {
        append(0xE0 | (codePoint >> 12));
        append(0x80 | ((codePoint >> 6) & 0x3F));
        append(0x80 | (codePoint & 0x3F));
    }
}

// `bytes` begins with "&#". Gives the length of the reference, 0 if it isn't one.
std::size_t readNumber(std::string_view bytes, std::string& out) {
    constexpr std::size_t kMostDigits = 4;
    const bool isHex = bytes.size() > 2 && bytes[2] == 'x';
    const std::size_t start = isHex ? 3 : 2;
    const std::size_t end = skip(bytes, start, isHex ? kHexDigit : kDigit);
    if (end == start || end - start > kMostDigits || end == bytes.size() || bytes[end] != ';')
        return 0;
    unsigned codePoint = 0;
    for (const char digit : bytes.substr(start, end - start))
        codePoint = codePoint * (isHex ? 16 : 10) + digitValue(digit);
    appendCodePoint(codePoint, out);
    return end + 1;
}

// `bytes` begins with "&". Gives the length of the reference, 0 if it isn't one.
std::size_t readReference(std::string_view bytes, std::string& out) {
    if (bytes.starts_with("&#"))
        return readNumber(bytes, out);
    for (const auto& [text, character] : kNamedReferences) {
        if (bytes.starts_with(text)) {
            out.push_back(character);
            return text.size();
        }
    }
    return 0;
}

} // namespace

void decodeEntities(std::string_view bytes, std::string& out) {
    while (!bytes.empty()) {
        const std::size_t ampersand = bytes.find('&');
        out.append(bytes.substr(0, ampersand));
        if (ampersand == kNone)
            return;
        bytes.remove_prefix(ampersand);
        std::size_t length = readReference(bytes, out);
        if (length == 0) {
            out.push_back('&');
            length = 1;
        }
        bytes.remove_prefix(length);
    }
}

} // namespace TARVO
