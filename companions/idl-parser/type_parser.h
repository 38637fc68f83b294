// Types as they are written: integer, Color, string[], IList<IMap<string, Geometry.IPoint>>. What a
// name means is found out when all files are read.
#pragma once

#include "companions/idl-parser/document.h"
#include "companions/idl-parser/token_reader.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace TARVO::idl {

// A type that needs a look when all names are known: one that is a name, or an array. What it is
// made of has its own use before it.
struct TypeUse {
    Type* type;
    const Library* library; // where it is used
    std::string_view text;  // the name, or the bracket
};

class TypeParser {
  public:
    TypeParser(TokenReader& reader, Document& document, std::vector<TypeUse>& uses) noexcept
        : reader_(reader), document_(document), uses_(uses) {}

    // Whose types follow.
    void enterLibrary(const Library& library) noexcept { library_ = &library; }
    void enterInterface(std::span<const std::string_view> templateArguments) noexcept {
        templateArguments_ = templateArguments;
    }

    Type* parse();
    Type* parseMethodResult();

  private:
    struct OpenType {
        Type* type;
        std::size_t firstArgument;
    };

    Type* parseName();
    Type* parseBrackets(Type* element);
    Type* close();

    TokenReader& reader_;
    Document& document_;
    std::vector<TypeUse>& uses_;
    const Library* library_ = nullptr;
    std::span<const std::string_view> templateArguments_;
    std::vector<OpenType> open_; // instead of the stack, however deep they nest
    std::vector<Type*> arguments_;
};

} // namespace TARVO::idl
