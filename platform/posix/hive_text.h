// The text of a hive, as the system's registry editor exports it, but in UTF-8:
//
//   Windows Registry Editor Version 5.00
//
//   [HKEY_CURRENT_USER\Software\Example]
//   @="the default value"
//   "Name"="text, with \\ and \" for the two marks"
//   "Number"=dword:0000002a
//   "Bytes"=hex:01,02,03
//   "Any other type"=hex(7):61,00,00,00,00,00
//
// Every type and every byte of a value is kept: what is no plain text ending in one null character
// stands as hex(1). Reading takes lines that begin with ';' for remarks, which are not kept, either
// form of line end, and numbers that go on behind '\' on the next line.
#pragma once

#include "platform/posix/hive_tree.h"

#include <string>
#include <string_view>

namespace TARVO::platform {

// False if the text can't be understood; the tree may hold any part of it then.
//   rootName  what the path of every key begins with
bool readHive(std::string_view text, std::u16string_view rootName, HiveTree& tree);

std::string writeHive(const HiveKey& root, std::u16string_view rootName);

} // namespace TARVO::platform
