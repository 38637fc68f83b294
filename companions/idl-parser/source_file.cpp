#include "companions/idl-parser/source_file.h"

#include "companions/idl-parser/model.h"
#include "platform/file.h"

#include <algorithm>
#include <cstdint>

namespace TARVO::idl {
namespace {

using platform::File;
using platform::FileError;

constexpr std::uint64_t kLargestFile = 256 * 1024 * 1024;

FileBytes failed(const char* failure, bool isMissing = false) {
    return {{}, failure, isMissing};
}

FileBytes failed(FileError error) {
    switch (error) {
    case FileError::notFound:
        return failed("the file is not there", true);
    case FileError::pathNotFound:
        return failed("its folder is not there", true);
    case FileError::accessDenied:
        return failed("access is denied");
    case FileError::sharingViolation:
        return failed("somebody else is writing it");
    default:
        return failed("it can't be opened");
    }
}

} // namespace

Place SourceFile::placeOf(std::string_view piece) const noexcept {
    const std::string_view before(text.data(),
                                  static_cast<std::size_t>(piece.data() - text.data()));
    const std::string_view inLine = before.substr(before.rfind('\n') + 1);
    const auto startsCharacter = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
    };
    const auto lines = std::count(before.begin(), before.end(), '\n');
    const auto characters = std::count_if(inLine.begin(), inLine.end(), startsCharacter);
    return {static_cast<std::size_t>(lines) + 1, static_cast<std::size_t>(characters) + 1};
}

bool SourceFile::sees(const Library& library) const noexcept {
    return library.file == this ||
           std::any_of(imports.begin(), imports.end(),
                       [&](const Import& import) { return import.file == library.file; });
}

FileBytes readFromDisk(const std::u16string& path) {
    auto [file, error] = File::openForReading(path);
    if (error != FileError::none)
        return failed(error);
    const auto size = file.size();
    if (!size)
        return failed("it can't be read");
    if (*size > kLargestFile)
        return failed("it is larger than 256 MB");
    FileBytes result;
    result.bytes.resize(static_cast<std::size_t>(*size));
    const auto read = file.read(result.bytes);
    if (!read)
        return failed("it can't be read");
    result.bytes.resize(*read);
    if (result.bytes.starts_with("\xFF\xFE") || result.bytes.starts_with("\xFE\xFF"))
        return failed("it is UTF-16, and definitions are UTF-8");
    return result;
}

} // namespace TARVO::idl
