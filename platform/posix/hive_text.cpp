#include "platform/posix/hive_text.h"

#include "platform/hexadecimal.h"
#include "platform/posix/ascii_case.h"
#include "platform/text.h"

#include <algorithm>
#include <cstring>
#include <optional>

namespace TARVO::platform {
namespace {

constexpr std::u16string_view kFirstLine = u"Windows Registry Editor Version 5.00";
constexpr std::u16string_view kHiveDigits = u"0123456789abcdef";

constexpr std::uint32_t kTextType = 1;
constexpr std::uint32_t kBytesType = 3;
constexpr std::uint32_t kNumberType = 4;

std::vector<std::byte> bytesOf(const void* data, std::size_t size) {
    const auto* const bytes = static_cast<const std::byte*>(data);
    return {bytes, bytes + size};
}

// Takes the text from front to back. Each function takes what it is named for, or gives nothing.
class HiveReader {
  public:
    HiveReader(std::u16string_view text, std::u16string_view rootName, HiveTree& tree)
        : rest_{text}, rootName_{rootName}, tree_{tree} {}

    bool read() {
        take(u"\uFEFF"); // some editors put this mark in front of UTF-8
        if (!take(kFirstLine) || !takeLineEnd()) {
            return false;
        }
        HiveKey* key = nullptr;
        for (skip(u" \t\r\n"); !rest_.empty(); skip(u" \t\r\n")) {
            if (rest_.front() == u';') {
                takeLine();
            } else if (rest_.front() == u'[') {
                key = takeKey();
                if (!key) {
                    return false;
                }
            } else if (!key || !takeValue(*key)) {
                return false;
            }
        }
        return true;
    }

  private:
    HiveKey* takeKey() {
        std::u16string_view line = takeLine();
        line.remove_suffix(line.size() - 1 - line.find_last_not_of(u" \t\r"));
        if (!line.ends_with(u']')) {
            return nullptr;
        }
        std::u16string_view path = line.substr(1, line.size() - 2);
        if (!std::ranges::equal(path.substr(0, rootName_.size()), rootName_, {},
                                loweredAscii<char16_t>, loweredAscii<char16_t>)) {
            return nullptr;
        }
        path.remove_prefix(rootName_.size());
        return path.empty() || path.starts_with(u'\\') ? tree_.create(path) : nullptr;
    }

    bool takeValue(HiveKey& key) {
        auto name = take(u"@") ? std::u16string{} : takeQuoted();
        if (!name || !take(u"=")) {
            return false;
        }
        auto value = takeData();
        if (!value || !takeLineEnd()) {
            return false;
        }
        key.values.insert_or_assign(*std::move(name), *std::move(value));
        return true;
    }

    std::optional<HiveValue> takeData() {
        if (rest_.starts_with(u'"')) {
            const auto text = takeQuoted();
            return text ? std::optional{HiveValue{
                              kTextType,
                              bytesOf(text->c_str(), (text->size() + 1) * sizeof(char16_t))}}
                        : std::nullopt;
        }
        if (take(u"dword:")) {
            const auto number = takeNumber(8);
            return number ? std::optional{HiveValue{kNumberType, bytesOf(&*number, sizeof *number)}}
                          : std::nullopt;
        }
        return take(u"hex") ? takeHex() : std::nullopt;
    }

    std::optional<HiveValue> takeHex() {
        std::optional<std::uint32_t> type = kBytesType;
        if (take(u"(")) {
            type = takeNumber(8);
            if (!take(u")")) {
                return std::nullopt;
            }
        }
        if (!type || !take(u":")) {
            return std::nullopt;
        }
        HiveValue value{*type, {}};
        while (skipToByte()) {
            const auto byte = takeNumber(2);
            if (!byte) {
                break;
            }
            value.bytes.push_back(static_cast<std::byte>(*byte));
            if (!take(u",")) {
                return value;
            }
        }
        return value.bytes.empty() ? std::optional{std::move(value)} : std::nullopt;
    }

    // Skips blanks, and line ends behind a mark that the bytes go on. False if the mark is
    // elsewhere.
    bool skipToByte() {
        for (skip(kBlanks); take(u"\\"); skip(kBlanks)) {
            if (!takeLineEnd()) {
                return false;
            }
        }
        return true;
    }

    std::optional<std::uint32_t> takeNumber(std::size_t mostDigits) {
        std::uint32_t number = 0;
        std::size_t digits = 0;
        for (; digits < mostDigits && digits < rest_.size(); ++digits) {
            const int value = hexadecimalValue(rest_[digits]);
            if (value < 0) {
                break;
            }
            number = number << 4 | static_cast<std::uint32_t>(value);
        }
        rest_.remove_prefix(digits);
        return digits > 0 ? std::optional{number} : std::nullopt;
    }

    // A text may have line ends in it.
    std::optional<std::u16string> takeQuoted() {
        if (!take(u"\"")) {
            return std::nullopt;
        }
        std::u16string text;
        for (;;) {
            const std::size_t end = rest_.find_first_of(u"\"\\");
            if (end == rest_.npos) {
                return std::nullopt;
            }
            text += rest_.substr(0, end);
            rest_.remove_prefix(end);
            if (take(u"\"")) {
                return text;
            }
            rest_.remove_prefix(1);
            if (!rest_.starts_with(u'"') && !rest_.starts_with(u'\\')) {
                return std::nullopt;
            }
            text += rest_.front();
            rest_.remove_prefix(1);
        }
    }

    bool take(std::u16string_view word) {
        const bool isHere = rest_.starts_with(word);
        rest_.remove_prefix(isHere ? word.size() : 0);
        return isHere;
    }

    void skip(std::u16string_view characters) {
        rest_.remove_prefix(std::min(rest_.find_first_not_of(characters), rest_.size()));
    }

    std::u16string_view takeLine() {
        const std::u16string_view line = rest_.substr(0, rest_.find(u'\n'));
        rest_.remove_prefix(line.size());
        return line;
    }

    bool takeLineEnd() {
        skip(kBlanks);
        return rest_.empty() || take(u"\n");
    }

    static constexpr std::u16string_view kBlanks = u" \t\r";

    std::u16string_view rest_;
    std::u16string_view rootName_;
    HiveTree& tree_;
};

class HiveWriter {
  public:
    explicit HiveWriter(std::u16string_view rootName) : path_{rootName} { text_ += kFirstLine; }

    void write(const HiveKey& root) {
        writeKey(root);
        std::vector<Level> levels{{root.subkeys.begin(), root.subkeys.end(), path_.size()}};
        while (!levels.empty()) {
            Level& level = levels.back();
            path_.resize(level.pathSize);
            if (level.next == level.end) {
                levels.pop_back();
                continue;
            }
            const auto& [name, key] = *level.next++;
            path_ += u'\\' + name;
            writeKey(*key);
            levels.push_back({key->subkeys.begin(), key->subkeys.end(), path_.size()});
        }
    }

    std::string utf8() const {
        std::string result;
        appendUtf8(text_, result);
        return result += '\n';
    }

  private:
    // A key whose subkeys are being written.
    struct Level {
        HiveKey::Subkeys::const_iterator next;
        HiveKey::Subkeys::const_iterator end;
        std::size_t pathSize;
    };

    void writeKey(const HiveKey& key) {
        text_ += u"\n\n[" + path_ + u']';
        for (const auto& [name, value] : key.values) {
            text_ += u'\n';
            if (name.empty()) {
                text_ += u'@';
            } else {
                writeQuoted(name);
            }
            text_ += u'=';
            writeData(value);
        }
    }

    void writeData(const HiveValue& value) {
        if (const auto text = plainText(value)) {
            writeQuoted(*text);
        } else if (value.type == kNumberType && value.bytes.size() == sizeof(std::uint32_t)) {
            text_ += u"dword:";
            std::uint32_t number = 0;
            std::memcpy(&number, value.bytes.data(), sizeof number);
            writeNumber(number, 8);
        } else {
            writeHex(value);
        }
    }

    // What may stand between quotation marks.
    static std::optional<std::u16string> plainText(const HiveValue& value) {
        if (value.type != kTextType || value.bytes.empty() ||
            value.bytes.size() % sizeof(char16_t) != 0) {
            return std::nullopt;
        }
        std::u16string text(value.bytes.size() / sizeof(char16_t), u'\0');
        std::memcpy(text.data(), value.bytes.data(), value.bytes.size());
        if (!text.ends_with(u'\0')) {
            return std::nullopt;
        }
        text.pop_back();
        const auto isControl = [](char16_t c) {
            return c < u' ';
        };
        const bool isPlain = std::ranges::none_of(text, isControl) && isWellFormed(text);
        return isPlain ? std::optional{std::move(text)} : std::nullopt;
    }

    void writeQuoted(std::u16string_view text) {
        text_ += u'"';
        for (const char16_t c : text) {
            if (c == u'"' || c == u'\\') {
                text_ += u'\\';
            }
            text_ += c;
        }
        text_ += u'"';
    }

    void writeHex(const HiveValue& value) {
        text_ += u"hex";
        if (value.type != kBytesType) {
            text_ += u'(';
            writeNumber(value.type, 1);
            text_ += u')';
        }
        char16_t mark = u':';
        for (const std::byte byte : value.bytes) {
            text_ += mark;
            writeNumber(std::to_integer<std::uint32_t>(byte), 2);
            mark = u',';
        }
        if (value.bytes.empty()) {
            text_ += mark;
        }
    }

    void writeNumber(std::uint32_t number, int leastDigits) {
        constexpr int allDigits = 8;
        for (int digit = allDigits - 1; digit >= 0; --digit) {
            const std::uint32_t rest = number >> (4 * digit);
            if (rest > 0 || digit < leastDigits) {
                text_ += kHiveDigits[rest & 15];
            }
        }
    }

    std::u16string path_;
    std::u16string text_;
};

} // namespace

bool readHive(std::string_view text, std::u16string_view rootName, HiveTree& tree) {
    std::u16string wide;
    appendUtf16(text, wide);
    std::string back;
    appendUtf8(wide, back);
    // Text in another encoding would not come back as it was.
    return back == text && HiveReader{wide, rootName, tree}.read();
}

std::string writeHive(const HiveKey& root, std::u16string_view rootName) {
    HiveWriter writer{rootName};
    writer.write(root);
    return writer.utf8();
}

} // namespace TARVO::platform
