// The elements of a tree in the form in which the system itself writes them:
//
//   <key name="a">
//   <value name="answer" type="integer">42</value>
//   <value name="nothing" type="empty"/>
//
// A file is made of little else, so they are read in one go and not tag by tag. What departs from
// the form is left to the scanner of the whole language.
#pragma once

#include "registry/plain_text.h"
#include "registry/tree.h"

#include <cstddef>
#include <string_view>

namespace TARVO {

// The start of a key, or a whole value. Views of the file's bytes.
struct WrittenElement {
    std::size_t position = 0; // of the element's <
    bool isKey = false;       // else a value
    PlainText name;
    // Of a value:
    RegistryValueType type = RegistryValueType::empty;
    std::string_view text;
    bool isPlain = false; // whether the text is
};

// Reads the element that the next < from `position` on begins, and moves `position` behind it.
// False if that is nothing in this form, or so close to the end of the bytes that the scanner had
// better see to it.
bool readWritten(std::string_view bytes, std::size_t& position, WrittenElement& element) noexcept;

} // namespace TARVO
