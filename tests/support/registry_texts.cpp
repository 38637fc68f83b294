#include "tests/support/registry_texts.h"

#include "tests/support/registry_pieces.h"

#include <algorithm>
#include <random>
#include <span>

namespace tests {
namespace {

using namespace pieces;
using Pieces = std::span<const std::string_view>;

class Composer {
  public:
    explicit Composer(std::uint64_t seed) : random_(seed) {}

    RegistryText compose() {
        const std::size_t kind = below(10);
        if (kind == 0) {
            addSoup();
        } else {
            addDocument();
        }
        if (kind > 7) {
            mutate();
        }
        text_.resize(std::min(text_.size(), kMaxRegistryText));
        return {text_, std::u16string(kKnownIds[below(std::size(kKnownIds))])};
    }

  private:
    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(random_() % bound); }
    bool oneIn(std::size_t bound) { return below(bound) == 0; }
    std::string_view anyOf(Pieces pieces) { return pieces[below(pieces.size())]; }

    std::string_view anyPiece() {
        static constexpr Pieces tables[] = {kSpaces,     kOddBytes,     kSigns,     kSigns,
                                            kReferences, kElements,     kWholeTags, kWholeTags,
                                            kIgnored,    kGoodIntegers, kWords,     kOddAttributes};
        return anyOf(tables[below(std::size(tables))]);
    }

    void add(std::string_view piece) { text_ += piece; }
    void addSpace() { add(!isTidy_ && oneIn(4) ? anyOf(kSpaces) : " "sv); }

    void maybeAddSpace() {
        if (!isTidy_ && oneIn(12)) {
            addSpace();
        }
    }

    void addSoup() {
        if (oneIn(2)) {
            add("<registry>");
        }
        for (std::size_t count = below(40); count > 0; --count) {
            add(anyPiece());
        }
    }

    void addDocument() {
        addOutside();
        for (std::size_t count = oneIn(8) ? 2 : 1; count > 0; --count) {
            if (oneIn(10)) {
                addSkippedRegistry();
            } else {
                addRegistry();
            }
            addOutside();
        }
    }

    // What is ignored, as long as it stands outside the `registry` element.
    void addOutside() {
        for (std::size_t count = below(3); count > 0; --count) {
            switch (below(4)) {
            case 0:
                add(anyOf(kIgnored));
                break;
            case 1:
                addText();
                break;
            case 2:
                addElement(anyOf(kElements), 1);
                break;
            default:
                add("\n");
            }
        }
    }

    void addRegistry() {
        addStart("registry");
        if (oneIn(2)) {
            addAttribute("id", oneIn(3) ? anyOf(kIds) : "two"sv);
        }
        if (!isSelfClosed(25)) {
            addContent(0);
            if (!oneIn(20)) {
                addEnd("registry");
            }
        }
    }

    // The end tag of such a `registry` counts as the end of the element around it, so that what
    // comes behind is read, with the end tag of that element still to come.
    void addSkippedRegistry() {
        const std::string_view around = anyOf(kElements);
        addStart(around);
        add(">");
        addRegistry();
        addContent(0);
        addEnd(around);
    }

    void addContent(std::size_t depth) {
        for (std::size_t count = below(depth == 0 ? 7 : 4); count > 0; --count) {
            maybeAddSpace();
            const std::size_t kind = below(100);
            if (kind < 45) {
                addValue(depth);
            } else if (kind < 68) {
                addKey(depth);
            } else if (kind < 78) {
                add(anyOf(kIgnored));
            } else if (kind < 88) {
                addText();
            } else if (kind < 97) {
                addElement(oneIn(20) ? "registry"sv : "foo"sv, depth + 1);
            } else {
                add(anyPiece());
            }
        }
    }

    void addKey(std::size_t depth) {
        addStart("key");
        addAttribute("name", anyName());
        if (!isSelfClosed(8)) {
            addContent(depth + 1);
            addEnd("key");
        }
    }

    void addValue(std::size_t depth) {
        const std::size_t type = below(std::size(kTypes));
        const std::string_view typeName = oneIn(60) ? anyOf(kOddTypes) : kTypes[type];
        const bool isTypeFirst = !isTidy_ && oneIn(2);
        addStart("value");
        if (isTypeFirst) {
            addAttribute("type", typeName);
        }
        if (!oneIn(80)) {
            addAttribute("name", anyName());
        }
        if (!isTypeFirst && !oneIn(40)) {
            addAttribute("type", typeName);
        }
        const bool needsText = kTypes[type] == "integer" || kTypes[type] == "uuid";
        if (isSelfClosed(needsText ? 60 : 5)) {
            return;
        }
        addValueText(kTypes[type]);
        if (oneIn(6)) {
            addInterruption(depth);
            addValueText(kTypes[type]);
        }
        addEnd("value");
    }

    void addInterruption(std::size_t depth) {
        if (oneIn(2)) {
            add(anyOf(kIgnored));
        } else {
            addElement(anyOf(kElements), depth + 1);
        }
    }

    void addValueText(std::string_view type) {
        if (type == "integer") {
            add(oneIn(25) ? anyOf(kBadIntegers) : anyOf(kGoodIntegers));
        } else if (type == "uuid") {
            add(oneIn(10) ? anyOf(kBadUuids) : anyOf(kGoodUuids));
        } else {
            addText();
        }
    }

    void addText() {
        static constexpr Pieces tables[] = {kSpaces, kOddBytes, kReferences, kWords, kWords};
        for (std::size_t count = below(4); count > 0; --count) {
            add(oneIn(4) ? plainText() : anyOf(tables[below(std::size(tables))]));
        }
    }

    std::string_view plainText() { return kPlain.substr(0, below(kPlain.size())); }

    void addElement(std::string_view name, std::size_t depth) {
        addStart(name);
        if (oneIn(3)) {
            addAttribute("name", anyName());
        }
        if (!isSelfClosed(4)) {
            addContent(depth);
            addEnd(name);
        }
    }

    std::string anyName() {
        if (oneIn(10)) {
            return std::string(anyOf(kShortNames)); // it may well stand there twice
        }
        if (oneIn(160)) {
            return std::string(anyOf(kBadNames));
        }
        std::string name(anyOf(oneIn(160) ? Pieces(kBadNames) : Pieces(kGoodNames)));
        if (oneIn(4)) {
            name.insert(0, plainText());
            name.append(plainText());
        }
        return name.insert(oneIn(2) ? 0 : name.size(), std::to_string(++names_));
    }

    void addStart(std::string_view name) {
        add("<");
        maybeAddSpace();
        add(name);
        if (oneIn(40)) {
            add(anyOf(kOddAttributes));
        }
    }

    void addAttribute(std::string_view name, std::string_view value) {
        addSpace();
        add(name);
        maybeAddSpace();
        add("=");
        maybeAddSpace();
        add("\"");
        add(value);
        add("\"");
    }

    // Ends a start tag, which once in so many times has no content.
    bool isSelfClosed(std::size_t times) {
        const bool selfClosed = oneIn(times);
        if (oneIn(40)) {
            add(anyOf(kOddAttributes));
        }
        maybeAddSpace();
        add(selfClosed ? "/>" : ">");
        return selfClosed;
    }

    void addEnd(std::string_view name) {
        add("</");
        maybeAddSpace();
        add(name);
        if (oneIn(40)) {
            add(anyOf(kOddAttributes));
        }
        maybeAddSpace();
        add(oneIn(60) ? "/>" : ">");
    }

    void mutate() {
        for (std::size_t count = 1 + below(3); count > 0 && !text_.empty(); --count) {
            const std::size_t position = below(text_.size());
            switch (below(5)) {
            case 0:
                text_.erase(position, 1 + below(8));
                break;
            case 1:
                text_.insert(position, anyPiece());
                break;
            case 2:
                text_[position] = static_cast<char>(below(256));
                break;
            case 3:
                text_.insert(position, text_.substr(below(text_.size()), 1 + below(40)));
                break;
            default:
                text_[position] = anyOf(kSigns)[0];
            }
        }
        if (oneIn(10)) {
            text_.resize(below(text_.size() + 1));
        }
    }

    std::mt19937_64 random_;
    std::string text_;
    // Laid out as the system does, which is a form that its reader has a way of its own for.
    bool isTidy_ = oneIn(2);
    std::size_t names_ = 0;
};

} // namespace

RegistryText registryText(std::uint64_t seed) {
    return Composer(seed).compose();
}

std::string escaped(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        if (byte == '"' || byte == '\\') {
            text += '\\';
            text += byte;
        } else if (byte >= ' ' && byte <= '~') {
            text += byte;
        } else {
            // Always three octal digits, so that a digit behind them is not taken for one of them.
            const auto value = static_cast<unsigned char>(byte);
            text += '\\';
            text += static_cast<char>('0' + (value >> 6));
            text += static_cast<char>('0' + (value >> 3 & 7));
            text += static_cast<char>('0' + (value & 7));
        }
    }
    return text;
}

} // namespace tests
