// The words of a definition file: names, numbers, quoted texts and single marks, each with the
// documentation comment before it. White space and other comments stand between them.
#pragma once

#include "companions/idl-parser/errors.h"
#include "companions/idl-parser/source_file.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace TARVO::idl {

enum class TokenKind : std::uint8_t {
    end,
    name,       // letters, digits and _, with points between the parts of a qualified one
    number,     // what begins with a digit: 12, 0xff, 1.2.0
    quoted,     // without its quotes
    broken,     // a quoted text with an error, which was reported
    identifier, // a UUID without braces; only where one was asked for
    mark,       // any other character
};

struct Token {
    bool is(char mark) const noexcept { return kind == TokenKind::mark && text.front() == mark; }
    bool is(std::string_view word) const noexcept {
        return kind == TokenKind::name && text == word;
    }

    TokenKind kind = TokenKind::end;
    std::string_view text;
    std::string_view documentation; // the comment as it is written; empty if there is none
};

// The token as an error names it.
std::string describe(const Token& token);

class Lexer {
  public:
    Lexer(const SourceFile& file, Errors& errors) noexcept
        : file_(file), errors_(errors), rest_(file.text) {}

    Token next();

    // The same at a place where a UUID is expected, with or without braces. Elsewhere its digits
    // would be read as numbers and names.
    Token nextIdentifier();

    // The text behind the last token.
    std::string_view rest() const noexcept { return rest_; }

  private:
    void skipBlanksAndComments();
    void skipBlockComment();
    void skipLineComment();
    Token take(TokenKind kind, std::size_t size) noexcept;
    Token takeName() noexcept;
    Token takeQuoted();
    Token takeMark() noexcept;

    const SourceFile& file_;
    Errors& errors_;
    std::string_view rest_;
    std::string_view documentation_;
    bool lineDocumentationGoesOn_ = false; // nothing but white space since its last line
};

} // namespace TARVO::idl
