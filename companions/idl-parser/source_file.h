// A definition file in memory. Names, texts and comments of the model are views of its bytes, so
// that where something stands in the file can always be told from the thing itself.
#pragma once

#include "tarvo/uuid.hpp"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TARVO::idl {

struct Library;
struct SourceFile;

struct Import {
    std::string_view path;              // as written, without the quotes
    std::optional<tarvo::UUID> library; // one that the file has to define
    const SourceFile* file = nullptr;
};

// Where a piece of a file stands, both numbers from 1 on.
struct Place {
    std::size_t line;
    std::size_t column; // in characters
};

struct SourceFile {
    // Of a view of its text.
    Place placeOf(std::string_view piece) const noexcept;

    // Whether the file itself or one that it imports defines the library.
    bool sees(const Library& library) const noexcept;

    std::size_t number = 0; // in the order of reading
    std::u16string path;
    std::string text; // UTF-8 without a byte order mark
    std::vector<Import> imports;
    std::vector<Library*> libraries;
};

// A file's bytes, or why they can't be had.
struct FileBytes {
    std::string bytes;
    const char* failure = nullptr;
    bool isMissing = false;
};

using ReadFile = std::function<FileBytes(const std::u16string& path)>;

// Reads a file of the disk.
FileBytes readFromDisk(const std::u16string& path);

} // namespace TARVO::idl
