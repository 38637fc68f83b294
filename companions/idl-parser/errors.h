// The errors of a definition, told where they stand. The first few are what a person mends before
// the next try, so reading ends when there are more of them.
#pragma once

#include "companions/idl-parser/source_file.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TARVO::idl {

// Raised by an error beyond those that are kept.
struct TooManyErrors {};

class Errors {
  public:
    static constexpr std::size_t kMost = 20;

    // An error at the start of a piece of the file's text.
    void add(const SourceFile& file, std::string_view piece, std::string message);

    // An error that ends all reading.
    void addFatal(std::u16string_view path, std::string_view message);

    bool empty() const noexcept { return errors_.empty() && fatal_.empty(); }

    // One line for each error, in the order of the text.
    std::u16string text() const;

  private:
    struct Error {
        const SourceFile* file;
        std::string_view piece;
        std::string message;
    };

    std::vector<Error> errors_;
    std::u16string fatal_;
    bool tooMany_ = false;
};

} // namespace TARVO::idl
