// Opening and reading registry.dat. Its sharing modes are the lock between processes: readers allow
// readers, a committer allows nobody, and whoever is refused waits for as long as it takes.
#pragma once

#include "platform/file.h"
#include "tarvo/base.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace TARVO {

// Opens the file to read it. RC_OK without a file if there is none; RC_ACCESS_DENIED;
// RC_UNSPECIFIED.
Result openRegistryShared(const std::u16string& path, platform::File& file);

// Opens the file for a commit, and makes it if it is missing. RC_OK, and without a file if its
// folder is missing; RC_ACCESS_DENIED; RC_UNSPECIFIED.
Result openRegistryExclusive(const std::u16string& path, platform::File& file);

// Whether a file was cut off, by the last few thousand bytes of it. It can be well-formed all the
// same: what is open at its end counts as closed.
bool isCutOff(std::string_view tail);

// The bytes of a file, as far as they have been read.
class FileBytes {
  public:
    explicit FileBytes(platform::File& file) noexcept : file_(file) {}

    std::string_view view() const noexcept { return {bytes_.get(), size_}; }
    bool atEnd() const noexcept { return atEnd_; }

    // Reads on until `size` bytes are there or the file ends. False on a failed read.
    bool readUpTo(std::size_t size);

    // Reads on to the end of the file. False on a failed read.
    bool readAll();

  private:
    platform::File& file_;
    std::unique_ptr<char[]> bytes_; // room isn't cleared before it is read into
    std::size_t size_ = 0;
    bool atEnd_ = false;
};

} // namespace TARVO
