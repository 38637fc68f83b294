// Opening and reading registry.dat. Its sharing modes are the lock between processes: readers allow
// readers, a committer allows nobody, and whoever is refused waits for as long as it takes.
#pragma once

#include "platform/file.h"
#include "registry/registry_parser.h"
#include "tarvo/base.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace TARVO {

// What stands beside the file is named after it: the copy of the state before a commit, and the
// last such copy that was whole, once a damaged one has taken its place.
constexpr const char16_t* kBackupSuffix = u".backup";
constexpr const char16_t* kWholeBackupSuffix = u".backup-whole";

// Opens the file to read it. RC_OK without a file if there is none; RC_ACCESS_DENIED;
// RC_UNSPECIFIED.
Result openRegistryShared(const std::u16string& path, platform::File& file);

// Opens the file for a commit, and makes it if it is missing. RC_OK, and without a file if its
// folder is missing; RC_ACCESS_DENIED; RC_UNSPECIFIED.
Result openRegistryExclusive(const std::u16string& path, platform::File& file);

// Whether a file was cut off, by the last few thousand bytes of it. It can be well-formed all the
// same: what is open at its end counts as closed.
bool isCutOff(std::string_view tail);

// A file's bytes, a piece at a time: what has been read and not yet been dealt with.
class FileBytes {
  public:
    explicit FileBytes(platform::File& file) noexcept : file_(file) {}

    std::string_view view() const noexcept { return {bytes_.get() + begin_, end_ - begin_}; }
    bool atEnd() const noexcept { return atEnd_; }

    // Reads the next piece behind those that are there. False on a failed read.
    bool readOn();

    // Reads all that is left of the file. False on a failed read.
    bool readAll();

    // Lets go of bytes at the front.
    void drop(std::size_t size) noexcept { begin_ += size; }

  private:
    platform::File& file_;
    std::unique_ptr<char[]> bytes_; // room isn't cleared before it is read into
    std::size_t capacity_ = 0;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    bool atEnd_ = false;
};

// Parse the next piece of a file, or all that is left as far as the outcome demands. Nothing on a
// failed read.
std::optional<ParseOutcome> parsePiece(FileBytes& bytes, RegistryParser& parser);
std::optional<ParseOutcome> parseFile(FileBytes& bytes, RegistryParser& parser);

} // namespace TARVO
