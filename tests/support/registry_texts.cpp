#include "tests/support/registry_texts.h"

#include <algorithm>
#include <random>
#include <span>

namespace tests {
namespace {

using namespace std::string_view_literals;
using Pieces = std::span<const std::string_view>;

constexpr std::string_view kSpaces[] = {" "sv,  "\n"sv, "\t"sv,   "\r\n"sv,     "\v"sv,
                                        "\f"sv, "  "sv, " \n "sv, "\t\v\f\r "sv};

// Not white space to the expressions, and not what a tag, a name or a text is usually made of.
constexpr std::string_view kOddBytes[] = {
    "\0"sv,       "\x01"sv,         "\x08"sv,     "\x1F"sv,         "\x7F"sv,
    "\x80"sv,     "\xFF"sv,         "\xC2\x85"sv, "\xC2\xA0"sv,     "\xC3\xA9"sv,
    "\xC3\x89"sv, "\xE2\x82\xAC"sv, "\xE2\x82"sv, "\xE3\x80\x80"sv, "\xED\xA0\x80"sv,
    "\xC0\x80"sv, "\xF4\x90\x80"sv, "\xF0\x80"sv, "\xF0\x80\x80"sv, "\xF0\x9F\x98\x80"sv};

constexpr std::string_view kSigns[] = {
    "<"sv,     ">"sv,  "/"sv,  "\""sv, "'"sv,     "="sv,      "!"sv,       "-"sv,
    "?"sv,     "--"sv, "<!"sv, "<?"sv, "?>"sv,    "</"sv,     "/>"sv,      "<!--"sv,
    "-->"sv,   "_"sv,  "9"sv,  "a"sv,  "Z"sv,     "&"sv,      ";"sv,       "#"sv,
    "<!-->"sv, "//"sv, "<<"sv, ">>"sv, "<?\?>"sv, "<!--->"sv, "<!---->"sv, "<?>"sv};

constexpr std::string_view kReferences[] = {
    "&amp;"sv,    "&lt;"sv,     "&gt;"sv,     "&quot;"sv,    "&apos;"sv,      "&#65;"sv,
    "&#x41;"sv,   "&#x7a;"sv,   "&#32;"sv,    "&#9;"sv,      "&#10;"sv,       "&#8;"sv,
    "&#0;"sv,     "&#00;"sv,    "&#x0;"sv,    "&#x08;"sv,    "&#x9;"sv,       "&#xD83D;"sv,
    "&#xDE00;"sv, "&#xFFFF;"sv, "&#xfeff;"sv, "&#x7FF;"sv,   "&#x800;"sv,     "&#127;"sv,
    "&#128;"sv,   "&#9999;"sv,  "&#12345;"sv, "&#xABCDE;"sv, "&#x;"sv,        "&#;"sv,
    "&#X41;"sv,   "&#x4G;"sv,   "&amp"sv,     "&Amp;"sv,     "&foo;"sv,       "&;"sv,
    "&&amp;"sv,   "&am&lt;"sv,  "&amp;lt;"sv, "&#38;lt;"sv,  "&lt;&#3;&gt"sv, "&#-5;"sv};

// All but `registry` itself.
constexpr std::string_view kElements[] = {"key"sv,  "value"sv, "foo"sv,      "Key"sv,
                                          "key-"sv, "k_9"sv,   "registry2"sv};

constexpr std::string_view kOddAttributes[] = {" foo"sv,
                                               " name='b'"sv,
                                               " name=\"other\""sv,
                                               " a=\"1\"name=\"b\""sv,
                                               " =\"\""sv,
                                               " name="sv,
                                               " type=\"empty"sv,
                                               " Name=\"B\""sv,
                                               "\xA0name=\"c\""sv,
                                               " 9name=\"d\""sv,
                                               " name-=\"e\""sv,
                                               " name\0=\"f\""sv,
                                               " - name=\"g\""sv,
                                               " name = = \"h\""sv,
                                               " id=\"four\""sv,
                                               " name=\"<&#3;\""sv,
                                               "/"sv,
                                               " / "sv,
                                               "\""sv,
                                               " name name=\"i\""sv};

constexpr std::string_view kWholeTags[] = {"<registry>"sv,
                                           "<registry id=\"one\">"sv,
                                           "</registry>"sv,
                                           "<registry/>"sv,
                                           "<key name=\"a\">"sv,
                                           "<key name=\"b\"/>"sv,
                                           "</key>"sv,
                                           "</key/>"sv,
                                           "</key name=\"a\">"sv,
                                           "<key name=\"c\" / >"sv,
                                           "</ key>"sv,
                                           "< /key>"sv,
                                           "< key name=\"d\">"sv,
                                           "<value name=\"a\" type=\"string\">"sv,
                                           "<value name=\"b\" type=\"empty\"/>"sv,
                                           "<value name=\"c\" type=\"integer\">"sv,
                                           "</value>"sv,
                                           "</value\n>"sv,
                                           "<foo>"sv,
                                           "</foo>"sv,
                                           "<foo/>"sv,
                                           "<a<b>"sv,
                                           "<9>"sv,
                                           "<->"sv,
                                           "<a='>'>"sv,
                                           "<key name=\"e>\">"sv,
                                           "<key name=\"f/>\">"sv,
                                           "<key name=\"<g\">"sv};

// These match the expressions, or come near to it, and mean nothing.
constexpr std::string_view kIgnored[] = {"<!-- note -->"sv,
                                         "<!---->"sv,
                                         "<!--\n\t-->"sv,
                                         "<!-- -- -->"sv,
                                         "<!-- <key -->"sv,
                                         "<!--->-->"sv,
                                         "<!-- a > b -->"sv,
                                         "<!-- <b/> -->"sv,
                                         "<!-- open"sv,
                                         "<!--a--->"sv,
                                         "<?note?>"sv,
                                         "<?\?>"sv,
                                         "<?xml version=\"1.0\"?>"sv,
                                         "<? a > b ?>"sv,
                                         "<? open"sv,
                                         "<?a?\?>"sv,
                                         "<?a? >"sv,
                                         "<!DOCTYPE a>"sv,
                                         "<!-- a --!>"sv,
                                         "<!-- \x80\xFF -->"sv};

constexpr std::string_view kGoodNames[] = {
    "a"sv,      "alpha"sv,    "x y"sv,  "x-y_1"sv,        "'"sv,        "a&amp;b"sv,
    "&#x62;"sv, "\xC3\x89"sv, "\xFF"sv, "&foo"sv,         "c\0d"sv,     "e&#3;"sv,
    "1.2"sv,    "="sv,        "<"sv,    "\xED\xA0\xBD"sv, "&#xD83D;"sv, "&gt;"sv};

constexpr std::string_view kBadNames[] = {""sv,       "A"sv,     "aZ"sv,      "a/b"sv,  "a\\b"sv,
                                          "\0b"sv,    "&#3;"sv,  "a&#9;"sv,   "\x1F"sv, "\n"sv,
                                          "&#x41;"sv, "&#92;"sv, "a&#x2F;b"sv};

constexpr std::string_view kTypes[] = {"string"sv, "integer"sv, "uuid"sv, "empty"sv};

constexpr std::string_view kOddTypes[] = {""sv,        "String"sv,  "text"sv,         "string "sv,
                                          "str\0"sv,   "empty\0"sv, "&#105;nteger"sv, "uu&#3;id"sv,
                                          "\xFFuuid"sv};

constexpr std::string_view kGoodIntegers[] = {"0"sv,
                                              "12"sv,
                                              "-7"sv,
                                              "+3"sv,
                                              "007"sv,
                                              " 5"sv,
                                              "\n\t\v\f\r -6"sv,
                                              "2147483647"sv,
                                              "2147483648"sv,
                                              "-2147483648"sv,
                                              "-2147483649"sv,
                                              "99999999999999999999999"sv,
                                              "-18446744073709551617"sv,
                                              "1&#50;"sv,
                                              "1\0x"sv,
                                              "&#32;8"sv,
                                              "&#9;9"sv,
                                              "&#x2D;4"sv,
                                              "4294967296"sv};

constexpr std::string_view kBadIntegers[] = {""sv,
                                             " "sv,
                                             "-"sv,
                                             "+ 1"sv,
                                             "1 "sv,
                                             "1\n"sv,
                                             "0x10"sv,
                                             "1.5"sv,
                                             "--1"sv,
                                             "a"sv,
                                             "\0001"sv,
                                             "\xC2\xA0"
                                             "1"sv,
                                             "1\xFF"sv,
                                             "&#3;"sv,
                                             "1&#48"sv,
                                             "\xEF\xBC\x91"sv,
                                             "\xE3\x80\x80"
                                             "2"sv,
                                             "\x1F"
                                             "3"sv};

constexpr std::string_view kGoodUuids[] = {"{3b78cdeb-7fe8-4542-b58b-26205774d82a}"sv,
                                           "{00000000-0000-0000-0000-000000000000}"sv,
                                           "&#123;ffffffff-ffff-ffff-ffff-ffffffffffff}"sv,
                                           "{12345678-9abc-def0-1234-56789abcdef0}\0tail"sv};

constexpr std::string_view kBadUuids[] = {"{3B78CDEB-7FE8-4542-B58B-26205774D82A}"sv,
                                          "3b78cdeb-7fe8-4542-b58b-26205774d82a"sv,
                                          "{3b78cdeb-7fe8-4542-b58b-26205774d82}"sv,
                                          "{3b78cdeb-7fe8-4542-b58b26205774d82a}"sv,
                                          " {3b78cdeb-7fe8-4542-b58b-26205774d82a}"sv,
                                          "{3b78cdeb-7fe8-4542-b58b-26205774d82a}\n"sv,
                                          "{3b78cdeb-7fe8-4542-b58b-26205774d82g}"sv,
                                          "\n{3b78cdeb-7fe8-4542-b58b-26205774d82a}"sv,
                                          "{3b78cdeb-7fe8-4542-b58b-26205774d82\xC3\xA9}"sv,
                                          "{3b78cdeb7fe8-4542-b58b-26205774d82a-}"sv,
                                          ""sv};

constexpr std::string_view kWords[] = {
    "text"sv,  "Text"sv, "C:\\folder\\a.dll"sv, "12"sv, ">"sv, "\"q\""sv, "it's"sv, "name=\"a\""sv,
    "1 < 2"sv, "a--b"sv, "\xEF\xBB\xBF"sv,      "]]>"sv};

constexpr std::string_view kIds[] = {"one"sv,      "{3b78cdeb-7fe8-4542-b58b-26205774d82a}"sv,
                                     "two"sv,      "on&#x65;"sv,
                                     "one\0two"sv, ""sv,
                                     "&#3;"sv,     "\0one"sv};

constexpr std::u16string_view kKnownIds[] = {u""sv, u"one"sv, u"three"sv,
                                             u"{3b78cdeb-7fe8-4542-b58b-26205774d82a}"sv};

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
    void addSpace() { add(oneIn(4) ? anyOf(kSpaces) : " "sv); }

    void maybeAddSpace() {
        if (oneIn(12)) {
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
        const bool isTypeFirst = oneIn(2);
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
            add(anyOf(tables[below(std::size(tables))]));
        }
    }

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
        if (oneIn(80)) {
            return std::string(anyOf(kBadNames));
        }
        const std::string_view name = anyOf(kGoodNames);
        if (oneIn(12)) {
            return std::string(name); // it may well stand there twice
        }
        std::string number = std::to_string(++names_);
        return oneIn(2) ? number.append(name) : std::string(name) + number;
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
