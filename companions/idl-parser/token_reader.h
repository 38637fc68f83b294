// The words of a file, taken one by one as a grammar expects them. What is not as expected becomes
// an error that says what was; the part of the grammar that can't go on is left by an exception,
// and the reader finds the place from where on another one can.
#pragma once

#include "companions/idl-parser/lexer.h"

#include <string>
#include <string_view>

namespace TARVO::idl {

// Raised after an error was reported.
struct SyntaxError {};

class TokenReader {
  public:
    TokenReader(const SourceFile& file, Errors& errors);

    const Token& token() const noexcept { return token_; }
    bool atEnd() const noexcept { return token_.kind == TokenKind::end; }

    Token take();
    bool takeIf(char mark);
    bool takeIf(std::string_view word);

    // What comes next must be that.
    void expect(char mark);
    Token expect(TokenKind kind, const char* what);
    std::string_view expectName(const char* what); // without points
    std::string_view expectIdentifier();           // a UUID behind the mark that comes next

    // A semicolon that is missing keeps nobody from going on.
    void expectSemicolon();

    // The word that comes next is not what was expected. Once it was reported, whatever else can't
    // make sense of the same word is silent.
    [[noreturn]] void unexpected(std::string_view expected);

    void report(std::string_view piece, std::string message);

    // Goes on behind the next separator, or behind the block that begins before it; but stays
    // before a brace that closes the block all around.
    void recover(char separator);

  private:
    bool isReported() const noexcept;

    const SourceFile& file_;
    Errors& errors_;
    Lexer lexer_;
    Token token_;
    std::string_view behindLast_; // the text behind what was taken last
    const char* reported_ = nullptr;
};

} // namespace TARVO::idl
