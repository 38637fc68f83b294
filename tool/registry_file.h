// A registry file read by itself, to show one scope or to find what is wrong with a file.
#pragma once

#include "registry/tree.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tool {

// The first place at which a file is malformed. Lines and columns count from 1, columns in bytes.
struct FileFault {
    std::size_t line = 0;
    std::size_t column = 0;
    std::string reason;
};

struct RegistryFile {
    bool isThere = false;
    bool isBlank = false;  // without a byte, as before the first commit
    bool isCutOff = false; // its end, or all of it, is missing; the library takes what there is
    tarvo::Reference<TARVO::TarvoRegistry> root; // null if the file is malformed
    std::optional<FileFault> fault;
};

// A missing file is not there and has an empty tree. Raises Failure for one that can't be read.
RegistryFile readRegistryFile(const std::u16string& path);

// "path:line:column: reason"
std::string describeFault(std::u16string_view path, const FileFault& fault);

// Whether a file that is no malformed one is whole, and how much it holds.
std::string describeContent(const RegistryFile& file);

// The same of any file: that it isn't there, that it is malformed and where, or what it holds.
std::string describeState(const RegistryFile& file);

} // namespace tool
