// The files of a definition: the one that was asked for and those that it imports, each read once,
// however many ways lead to it.
#pragma once

#include "companions/idl-parser/document.h"
#include "companions/idl-parser/errors.h"
#include "companions/idl-parser/source_file.h"

#include <string>
#include <unordered_map>

namespace TARVO::idl {

class Imports {
  public:
    Imports(Document& document, Errors& errors, const ReadFile& read) noexcept
        : document_(document), errors_(errors), read_(read) {}

    // Reads the definition itself.
    void open(const std::u16string& path);

    // Reads what a file imports; the file has been parsed.
    void follow(SourceFile& file);

    // Checks the imports among each other, when all files have been parsed.
    void check() const;

  private:
    const SourceFile* find(const SourceFile& importer, const Import& import);
    FileBytes readNear(const SourceFile& importer, const Import& import, std::u16string& path);
    const SourceFile* findSame(const std::u16string& path, const std::string& text) const;
    const SourceFile* add(const std::u16string& path, std::string text);
    void checkLibraries(const SourceFile& file) const;
    void checkCircles() const;

    Document& document_;
    Errors& errors_;
    const ReadFile& read_;
    std::unordered_map<std::u16string, const SourceFile*> files_; // by the paths that led there
};

} // namespace TARVO::idl
