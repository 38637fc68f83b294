#include "companions/idl-parser/token_reader.h"

#include "companions/idl-parser/text.h"

#include <utility>

namespace TARVO::idl {
namespace {

std::string quoted(char mark) {
    return inQuotes({&mark, 1});
}

} // namespace

TokenReader::TokenReader(const SourceFile& file, Errors& errors)
    : file_(file), errors_(errors), lexer_(file, errors), token_(lexer_.next()),
      behindLast_(file.text) {}

Token TokenReader::take() {
    behindLast_ = lexer_.rest();
    return std::exchange(token_, lexer_.next());
}

bool TokenReader::takeIf(char mark) {
    const bool isThere = token_.is(mark);
    if (isThere)
        take();
    return isThere;
}

bool TokenReader::takeIf(std::string_view word) {
    const bool isThere = token_.is(word);
    if (isThere)
        take();
    return isThere;
}

void TokenReader::expect(char mark) {
    if (!takeIf(mark))
        unexpected(quoted(mark));
}

Token TokenReader::expect(TokenKind kind, const char* what) {
    if (token_.kind != kind)
        unexpected(what);
    return take();
}

std::string_view TokenReader::expectName(const char* what) {
    const Token name = expect(TokenKind::name, what);
    if (name.text.find('.') != std::string_view::npos)
        report(name.text, "expected a name without points, found " + inQuotes(name.text));
    return name.text;
}

std::string_view TokenReader::expectIdentifier() {
    if (!token_.is('('))
        unexpected(quoted('('));
    token_ = lexer_.nextIdentifier();
    return expect(TokenKind::identifier,
                  "an identifier such as 3b78cdeb-7fe8-4542-b58b-26205774d82a")
        .text;
}

void TokenReader::expectSemicolon() {
    if (takeIf(';') || isReported())
        return;
    reported_ = token_.text.data();
    report(behindLast_, "expected ';' here, before " + describe(token_));
}

void TokenReader::unexpected(std::string_view expected) {
    if (!isReported()) {
        reported_ = token_.text.data();
        report(token_.text, "expected " + std::string(expected) + ", found " + describe(token_));
    }
    throw SyntaxError();
}

bool TokenReader::isReported() const noexcept {
    return token_.kind == TokenKind::broken || token_.text.data() == reported_;
}

void TokenReader::report(std::string_view piece, std::string message) {
    errors_.add(file_, piece, std::move(message));
}

void TokenReader::recover(char separator) {
    std::size_t depth = 0;
    while (!atEnd()) {
        if (depth == 0 && token_.is('}'))
            return;
        const Token token = take();
        if (token.is('{'))
            ++depth;
        const bool closesBlock = token.is('}') && --depth == 0;
        if (closesBlock || (depth == 0 && token.is(separator)))
            return;
    }
}

} // namespace TARVO::idl
