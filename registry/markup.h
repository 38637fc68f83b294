// The tokens of a registry file: tags, attributes and character references, found in one pass over
// the bytes. The language is a small one; these expressions (ECMAScript, on bytes) define it:
//
//   tag        <(/|)\s*([A-Za-z][A-Za-z0-9-_]*)([^>]*?)(>|/>)|(<!--\s*([^>]*)\s*-->)|(<\?[^>]*\?>)
//   attribute  \s+([A-Za-z][A-Za-z0-9-_]*)\s*=\s*"([^">]*)"
//   reference  &((amp)|(lt)|(gt)|(quot)|(apos)|(#[0-9]{1,4})|(#x[A-Fa-f0-9]{1,4}));
//
// What they don't match is text. None of a tag's three forms can hold a >, so each match ends at
// the first one behind its start; that is what makes a single pass exact.
#pragma once

#include "registry/written_element.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace TARVO {

// One match of the tag expression, as views of the bytes.
struct MarkupTag {
    std::string_view textBefore; // from the end of the match before
    std::size_t position = 0;    // of the tag's <
    bool isElement = false;      // else a comment or a processing instruction
    bool isEnd = false;          // </name>
    bool isSelfClosed = false;   // <name/>
    std::string_view name;
    std::string_view attributes; // between the name and the closing
};

class MarkupScanner {
  public:
    explicit MarkupScanner(std::string_view bytes) noexcept : bytes_(bytes) {}

    // Finds the next tag; false when there is none any more.
    bool next(MarkupTag& tag) noexcept;

    // Takes the next tag, and the rest of a value's element with it, if it is in the form in which
    // the system writes. False if it isn't, and nothing is taken.
    bool nextWritten(WrittenElement& element) noexcept {
        return readWritten(bytes_, position_, element);
    }

    // What stands behind the last tag found.
    std::string_view rest() const noexcept { return bytes_.substr(position_); }

  private:
    std::string_view bytes_;
    std::size_t position_ = 0; // the end of the last match
    std::size_t closing_ = 0;  // a > found ahead; it serves every < before it
};

class AttributeScanner {
  public:
    explicit AttributeScanner(std::string_view attributes) noexcept : rest_(attributes) {}

    // Finds the next attribute; false when there is none any more.
    bool next(std::string_view& name, std::string_view& value) noexcept;

  private:
    std::string_view rest_;
};

// Appends the bytes with each character reference replaced by its character in UTF-8. A reference
// to a character below 9 yields nothing; whatever isn't a reference stays as it is.
void decodeEntities(std::string_view bytes, std::string& out);

} // namespace TARVO
