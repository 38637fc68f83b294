#include "companions/idl-parser/lexer.h"

#include "companions/idl-parser/text.h"

#include <algorithm>
#include <array>

namespace TARVO::idl {
namespace {

enum CharacterClass : std::uint8_t { other, blank, letter, digit };

constexpr std::array<CharacterClass, 256> kClasses = [] {
    std::array<CharacterClass, 256> classes{};
    for (const char c : {' ', '\t', '\r', '\n', '\f', '\v'})
        classes[static_cast<unsigned char>(c)] = blank;
    for (unsigned char c = 'a'; c <= 'z'; ++c)
        classes[c] = classes[c - 'a' + 'A'] = letter;
    for (unsigned char c = '0'; c <= '9'; ++c)
        classes[c] = digit;
    classes['_'] = letter;
    return classes;
}();

CharacterClass classOf(char c) noexcept {
    return kClasses[static_cast<unsigned char>(c)];
}

constexpr auto isWord = [](char c) noexcept {
    return classOf(c) >= letter;
};

template <class Predicate>
std::size_t sizeWhile(std::string_view text, Predicate isPart) {
    return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), isPart) -
                                    text.begin());
}

// How many bytes the character that the text begins with has, if it is well-formed; never more than
// there are.
std::size_t characterSize(std::string_view text) noexcept {
    const auto isContinuation = [](char c) {
        return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
    };
    constexpr std::size_t kMost = 4;
    return 1 + sizeWhile(text.substr(1, kMost - 1), isContinuation);
}

std::string hexadecimal(char c) {
    constexpr char kDigits[] = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(c);
    return {'0', 'x', kDigits[value >> 4], kDigits[value & 15]};
}

} // namespace

std::string describe(const Token& token) {
    constexpr std::size_t kMostShown = 40;
    const std::string shown =
        std::string(token.text.substr(0, kMostShown)) + (token.text.size() > kMostShown ? "…" : "");
    switch (token.kind) {
    case TokenKind::end:
        return "the end of the file";
    case TokenKind::quoted:
    case TokenKind::broken:
        return "a quoted text";
    case TokenKind::mark:
        if (static_cast<unsigned char>(token.text.front()) < 0x20)
            return "the character " + hexadecimal(token.text.front());
        [[fallthrough]];
    default:
        return inQuotes(shown);
    }
}

Token Lexer::next() {
    skipBlanksAndComments();
    if (rest_.empty())
        return take(TokenKind::end, 0);
    switch (classOf(rest_.front())) {
    case letter:
        return takeName();
    case digit:
        return take(TokenKind::number,
                    sizeWhile(rest_, [](char c) { return isWord(c) || c == '.'; }));
    default:
        return rest_.front() == '"' ? takeQuoted() : takeMark();
    }
}

Token Lexer::nextIdentifier() {
    constexpr std::size_t kSize = tarvo::UUID::kTextLength - 2;
    skipBlanksAndComments();
    const bool hasBraces = rest_.starts_with('{');
    const std::string_view text = rest_.substr(hasBraces ? 1 : 0);
    const std::size_t size = sizeWhile(text, [](char c) { return isWord(c) || c == '-'; });
    const std::size_t wholeSize = size + (hasBraces ? 2 : 0);
    if (size != kSize || (hasBraces && !text.substr(size).starts_with('}')))
        return next();
    Token token = take(TokenKind::identifier, wholeSize);
    token.text = text.substr(0, kSize);
    return token;
}

Token Lexer::take(TokenKind kind, std::size_t size) noexcept {
    const Token token{kind, rest_.substr(0, size), documentation_};
    rest_.remove_prefix(size);
    return token;
}

Token Lexer::takeName() noexcept {
    std::size_t size = sizeWhile(rest_, isWord);
    while (size + 1 < rest_.size() && rest_[size] == '.' && classOf(rest_[size + 1]) == letter)
        size += 1 + sizeWhile(rest_.substr(size + 1), isWord);
    return take(TokenKind::name, size);
}

// A text that isn't closed ends with its line.
Token Lexer::takeQuoted() {
    std::size_t end = 1;
    while (end < rest_.size() && rest_[end] != '"' && rest_[end] != '\n')
        end += rest_[end] == '\\' && end + 1 < rest_.size() && rest_[end + 1] != '\n' ? 2 : 1;
    const bool isClosed = end < rest_.size() && rest_[end] == '"';
    const std::string_view inside = rest_.substr(1, end - 1);
    const char* fault = isClosed ? faultOfQuoted(inside)
                                 : "the text that begins here has no closing '\"' in its line";
    if (fault != nullptr)
        errors_.add(file_, rest_, fault);
    Token token =
        take(fault == nullptr ? TokenKind::quoted : TokenKind::broken, end + (isClosed ? 1 : 0));
    token.text = inside;
    return token;
}

Token Lexer::takeMark() noexcept {
    return take(TokenKind::mark, characterSize(rest_));
}

void Lexer::skipBlanksAndComments() {
    documentation_ = {};
    lineDocumentationGoesOn_ = false;
    for (;;) {
        rest_.remove_prefix(sizeWhile(rest_, [](char c) { return classOf(c) == blank; }));
        if (rest_.starts_with("//"))
            skipLineComment();
        else if (rest_.starts_with("/*"))
            skipBlockComment();
        else
            return;
    }
}

// Lines of documentation that follow each other are one comment.
void Lexer::skipLineComment() {
    const std::string_view line = rest_.substr(0, rest_.find('\n'));
    const bool isDocumentation = line.starts_with("///") && !line.starts_with("////");
    if (isDocumentation) {
        const char* start = lineDocumentationGoesOn_ ? documentation_.data() : line.data();
        documentation_ = {start, static_cast<std::size_t>(line.data() + line.size() - start)};
    }
    lineDocumentationGoesOn_ = isDocumentation;
    rest_.remove_prefix(line.size());
}

void Lexer::skipBlockComment() {
    const std::size_t end = rest_.find("*/", 2);
    if (end == std::string_view::npos) {
        errors_.add(file_, rest_, "the comment that begins here has no end");
        rest_.remove_prefix(rest_.size());
        return;
    }
    const std::string_view comment = rest_.substr(0, end + 2);
    if (comment.starts_with("/**") && comment.size() > 4 && comment[3] != '*')
        documentation_ = comment;
    lineDocumentationGoesOn_ = false;
    rest_.remove_prefix(comment.size());
}

} // namespace TARVO::idl
