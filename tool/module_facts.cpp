#include "tool/module_facts.h"

#include "platform/file.h"
#include "platform/folder.h"
#include "registry/registry_file.h"

#include <cstdint>
#include <cstring>
#include <fmt/format.h>
#include <optional>
#include <string_view>

namespace tool {

namespace {

constexpr bool kOnWindows = TARVO::platform::kFolderSeparator == u'\\';

// The bytes of a file whose layout is little-endian; what lies beyond its end can't be read.
class Image {
  public:
    explicit Image(std::string_view bytes) : bytes_(bytes) {}

    template <class Number>
    std::optional<Number> at(std::uint64_t offset) const {
        if (offset > bytes_.size() || bytes_.size() - offset < sizeof(Number))
            return std::nullopt;
        Number number{};
        std::memcpy(&number, bytes_.data() + offset, sizeof number);
        return number;
    }

    std::string textAt(std::uint64_t offset) const {
        if (offset >= bytes_.size())
            return {};
        const std::string_view rest = bytes_.substr(offset);
        return std::string(rest.substr(0, rest.find('\0')));
    }

    bool startsWith(std::string_view start) const { return bytes_.starts_with(start); }

  private:
    std::string_view bytes_;
};

// The fields of the ELF header (System V ABI) that tell what the file is.
ModuleFacts examineELF(const Image& image) {
    constexpr std::uint8_t k64Bit = 2;
    constexpr std::uint16_t kSharedObject = 3;
    constexpr std::uint16_t kX86_64 = 62;
    const auto bits = image.at<std::uint8_t>(4);
    const auto type = image.at<std::uint16_t>(16);
    const auto machine = image.at<std::uint16_t>(18);
    ModuleFacts facts;
    facts.exists = true;
    const bool isLibrary = type == kSharedObject;
    facts.fits = !kOnWindows && isLibrary && bits == k64Bit && machine == kX86_64;
    facts.kind = fmt::format("{} {} for Linux{}", bits == k64Bit ? "64-bit" : "32-bit",
                             isLibrary ? "library" : "program or object file",
                             machine == kX86_64 || bits != k64Bit ? "" : ", of another machine");
    return facts;
}

// The headers of a PE file (the PE/COFF format), as far as its imports.
class PEFile {
  public:
    explicit PEFile(const Image& image)
        : image_(image), header_(image.at<std::uint32_t>(0x3C).value_or(0) + std::uint64_t{4}) {}

    bool isValid() const { return image_.at<std::uint32_t>(header_ - 4) == 0x00004550u; }
    bool isX86_64() const { return image_.at<std::uint16_t>(header_) == 0x8664u; }
    bool is64Bit() const { return image_.at<std::uint16_t>(optionalHeader()) == 0x20Bu; }
    bool isLibrary() const {
        constexpr std::uint16_t kLibrary = 0x2000;
        return (image_.at<std::uint16_t>(header_ + 18).value_or(0) & kLibrary) != 0;
    }

    // The names in the table of imports, whose entries have 20 bytes; the last one is empty.
    std::vector<std::string> imports() const {
        constexpr std::uint64_t kEntry = 20;
        constexpr std::size_t kMost = 1000;
        std::vector<std::string> names;
        const auto table = image_.at<std::uint32_t>(optionalHeader() + (is64Bit() ? 120 : 104));
        auto entry = fileOffset(table.value_or(0));
        for (; entry && names.size() < kMost; *entry += kEntry) {
            const auto name = fileOffset(image_.at<std::uint32_t>(*entry + 12).value_or(0));
            if (!name)
                break;
            names.push_back(image_.textAt(*name));
        }
        return names;
    }

  private:
    std::uint64_t optionalHeader() const { return header_ + 20; }

    // Where the file has what goes to an address in memory. Nothing for 0, and where no section is.
    std::optional<std::uint64_t> fileOffset(std::uint32_t address) const {
        constexpr std::uint64_t kSection = 40;
        const std::uint64_t first =
            optionalHeader() + image_.at<std::uint16_t>(header_ + 16).value_or(0);
        const std::uint16_t count = image_.at<std::uint16_t>(header_ + 2).value_or(0);
        for (std::uint64_t section = first; section < first + count * kSection;
             section += kSection) {
            const std::uint32_t start = image_.at<std::uint32_t>(section + 12).value_or(0);
            const std::uint32_t size = image_.at<std::uint32_t>(section + 16).value_or(0);
            if (address > 0 && address >= start && address - start < size)
                return std::uint64_t{address} - start +
                       image_.at<std::uint32_t>(section + 20).value_or(0);
        }
        return std::nullopt;
    }

    const Image& image_;
    std::uint64_t header_; // behind the signature
};

// The build leaves it in every module.
std::string versionIn(std::string_view bytes) {
    constexpr std::string_view kMark = "@(#)TARVO ";
    const std::size_t found = bytes.find(kMark);
    if (found == std::string_view::npos)
        return {};
    const std::string_view rest = bytes.substr(found + kMark.size());
    return std::string(rest.substr(0, rest.find_first_not_of("0123456789.")));
}

ModuleFacts noLibrary(const char* kind) {
    ModuleFacts facts;
    facts.exists = true;
    facts.kind = kind;
    return facts;
}

ModuleFacts examinePE(const Image& image) {
    const PEFile file(image);
    if (!file.isValid())
        return noLibrary("no library");
    ModuleFacts facts;
    facts.exists = true;
    facts.fits = kOnWindows && file.isLibrary() && file.is64Bit() && file.isX86_64();
    facts.kind = fmt::format("{} {} for Windows{}", file.is64Bit() ? "64-bit" : "32-bit",
                             file.isLibrary() ? "library" : "program",
                             file.isX86_64() || !file.is64Bit() ? "" : ", of another machine");
    facts.imports = file.imports();
    return facts;
}

ModuleFacts examineImage(const Image& image) {
    if (image.startsWith("\x7F"
                         "ELF"))
        return examineELF(image);
    if (image.startsWith("MZ"))
        return examinePE(image);
    return noLibrary("no library");
}

} // namespace

ModuleFacts examineModule(const std::u16string& path) {
    TARVO::platform::OpenedFile opened = TARVO::platform::File::openForReading(path);
    if (opened.error == TARVO::platform::FileError::notFound ||
        opened.error == TARVO::platform::FileError::pathNotFound)
        return {};
    TARVO::FileBytes bytes(opened.file);
    if (opened.error != TARVO::platform::FileError::none || !bytes.readAll())
        return noLibrary("it can't be read");
    ModuleFacts facts = examineImage(Image(bytes.view()));
    facts.version = versionIn(bytes.view());
    return facts;
}

} // namespace tool
