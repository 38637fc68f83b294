// The elements of a tree in the form in which the system itself writes them:
//
//   <key name="a">
//   <value name="answer" type="integer">42</value>
//   <value name="nothing" type="empty"/>
//
// A file is made of little else, so they are read in one go and not tag by tag. What departs from
// the form is left to the scanner of the whole language.
#pragma once

#include "registry/file_text.h"

#include <cstddef>
#include <string_view>

namespace TARVO {

// The start of a key, or a whole value. The object is used again from element to element.
struct WrittenElement {
    std::size_t position = 0; // of the element's <
    bool isKey = false;       // else a value
    FileText name;
    std::string_view type; // of a value; its bytes
    FileText text;         // of a value
};

// Reads the element that the next < from `position` on begins, and moves `position` behind it.
// False if that is nothing in this form, or so close to the end of the bytes that the scanner had
// better see to it.
bool readWritten(std::string_view bytes, std::size_t& position, WrittenElement& element);

} // namespace TARVO
