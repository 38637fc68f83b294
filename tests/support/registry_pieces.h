// The pieces that random registry files are made of (registry_texts.cpp): each table holds what is
// worth trying at one kind of place, the right and the nearly right.
#pragma once

#include <string_view>

namespace tests::pieces {

using namespace std::string_view_literals;

inline constexpr std::string_view kSpaces[] = {" "sv,  "\n"sv, "\t"sv,   "\r\n"sv,     "\v"sv,
                                               "\f"sv, "  "sv, " \n "sv, "\t\v\f\r "sv};

// Not white space to the expressions, and not what a tag, a name or a text is usually made of.
inline constexpr std::string_view kOddBytes[] = {"\0"sv,
                                                 "\x01"sv,
                                                 "\x08"sv,
                                                 "\x1F"sv,
                                                 "\x7F"sv,
                                                 "\x80"sv,
                                                 "\xFF"sv,
                                                 "\xC2\x85"sv,
                                                 "\xC2\xA0"sv,
                                                 "\xC3\xA9"sv,
                                                 "\xC3\x89"sv,
                                                 "\xE2\x82\xAC"sv,
                                                 "\xE2\x82"sv,
                                                 "\xE3\x80\x80"sv,
                                                 "\xED\xA0\x80"sv,
                                                 "\xC0\x80"sv,
                                                 "\xF4\x90\x80"sv,
                                                 "\xF0\x80"sv,
                                                 "\xF0\x80\x80\0z"sv,
                                                 "\xF0\x9F\x98\x80"sv};

inline constexpr std::string_view kSigns[] = {
    "<"sv,     ">"sv,  "/"sv,  "\""sv, "'"sv,     "="sv,      "!"sv,       "-"sv,
    "?"sv,     "--"sv, "<!"sv, "<?"sv, "?>"sv,    "</"sv,     "/>"sv,      "<!--"sv,
    "-->"sv,   "_"sv,  "9"sv,  "a"sv,  "Z"sv,     "&"sv,      ";"sv,       "#"sv,
    "<!-->"sv, "//"sv, "<<"sv, ">>"sv, "<?\?>"sv, "<!--->"sv, "<!---->"sv, "<?>"sv};

inline constexpr std::string_view kReferences[] = {
    "&amp;"sv,    "&lt;"sv,     "&gt;"sv,     "&quot;"sv,    "&apos;"sv,      "&#65;"sv,
    "&#x41;"sv,   "&#x7a;"sv,   "&#32;"sv,    "&#9;"sv,      "&#10;"sv,       "&#8;"sv,
    "&#0;"sv,     "&#00;"sv,    "&#x0;"sv,    "&#x08;"sv,    "&#x9;"sv,       "&#xD83D;"sv,
    "&#xDE00;"sv, "&#xFFFF;"sv, "&#xfeff;"sv, "&#x7FF;"sv,   "&#x800;"sv,     "&#127;"sv,
    "&#128;"sv,   "&#9999;"sv,  "&#12345;"sv, "&#xABCDE;"sv, "&#x;"sv,        "&#;"sv,
    "&#X41;"sv,   "&#x4G;"sv,   "&amp"sv,     "&Amp;"sv,     "&foo;"sv,       "&;"sv,
    "&&amp;"sv,   "&am&lt;"sv,  "&amp;lt;"sv, "&#38;lt;"sv,  "&lt;&#3;&gt"sv, "&#1F;"sv};

// All but `registry` itself.
inline constexpr std::string_view kElements[] = {"key"sv,  "value"sv, "foo"sv, "Key"sv,
                                                 "key-"sv, "k_9"sv,   "k:9"sv, "registry2"sv};

inline constexpr std::string_view kOddAttributes[] = {" foo"sv,
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

inline constexpr std::string_view kWholeTags[] = {"<registry>"sv,
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
inline constexpr std::string_view kIgnored[] = {"<!-- note -->"sv,
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

inline constexpr std::string_view kGoodNames[] = {
    "a"sv,      "alpha"sv,    "x y"sv,  "x-y_1"sv,        "'"sv,        "a&amp;b"sv,
    "&#x62;"sv, "\xC3\x89"sv, "\xFF"sv, "&foo"sv,         "c\0d"sv,     "e&#3;"sv,
    "1.2"sv,    "="sv,        "<"sv,    "\xED\xA0\xBD"sv, "&#xD83D;"sv, "&gt;"sv};

inline constexpr std::string_view kShortNames[] = {"a"sv, "b"sv, "&#x62;"sv};

inline constexpr std::string_view kBadNames[] = {
    ""sv,      "A"sv,    "aZ"sv, "a/b"sv,    "a\\b"sv,  "\0b"sv,     "&#3;"sv,
    "a&#9;"sv, "\x1F"sv, "\n"sv, "&#x41;"sv, "&#92;"sv, "a&#x2F;b"sv};

inline constexpr std::string_view kTypes[] = {"string"sv, "integer"sv, "uuid"sv, "empty"sv};

inline constexpr std::string_view kOddTypes[] = {
    ""sv,        "String"sv,       "text"sv,     "string "sv, "str\0"sv,
    "empty\0"sv, "&#105;nteger"sv, "uu&#3;id"sv, "\xFFuuid"sv};

inline constexpr std::string_view kGoodIntegers[] = {"0"sv,
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

inline constexpr std::string_view kBadIntegers[] = {""sv,
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
                                                    "\xC2\xA0+1"sv,
                                                    "1\xFF"sv,
                                                    "&#3;"sv,
                                                    "1&#48"sv,
                                                    "\xEF\xBC\x91"sv,
                                                    "\xE3\x80\x80-2"sv,
                                                    "\x1F+3"sv};

inline constexpr std::string_view kGoodUuids[] = {"{3b78cdeb-7fe8-4542-b58b-26205774d82a}"sv,
                                                  "{00000000-0000-0000-0000-000000000000}"sv,
                                                  "&#123;ffffffff-ffff-ffff-ffff-ffffffffffff}"sv,
                                                  "{12345678-9abc-def0-1234-56789abcdef0}\0tail"sv};

inline constexpr std::string_view kBadUuids[] = {"{3B78CDEB-7FE8-4542-B58B-26205774D82A}"sv,
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

inline constexpr std::string_view kWords[] = {
    "text"sv,  "Text"sv, "C:\\folder\\a.dll"sv, "12"sv, ">"sv, "\"q\""sv, "it's"sv, "name=\"a\""sv,
    "1 < 2"sv, "a--b"sv, "\xEF\xBB\xBF"sv,      "]]>"sv};

// A reader may take plain text many bytes at a time: what is odd must come at every place in it.
inline constexpr std::string_view kPlain =
    "a plain text that fills blocks of bytes: [0123456789]{}.";

inline constexpr std::string_view kIds[] = {
    "one"sv,      "{3b78cdeb-7fe8-4542-b58b-26205774d82a}"sv,
    "two"sv,      "on&#x65;"sv,
    "one\0two"sv, ""sv,
    "&#3;"sv,     "\0one"sv};

inline constexpr std::u16string_view kKnownIds[] = {u""sv, u"one"sv, u"three"sv,
                                                    u"{3b78cdeb-7fe8-4542-b58b-26205774d82a}"sv};

} // namespace tests::pieces
