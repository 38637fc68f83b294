// A folder of its own for each test, gone with the test.
#pragma once

#include "platform/folder.h"
#include "platform/identifier.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

class TemporaryFolder {
  public:
    TemporaryFolder() {
        constexpr char16_t digits[] = u"0123456789abcdef";
        std::u16string name = u"tarvo-";
        for (const auto byte : TARVO::platform::newIdentifier()) {
            name += digits[byte >> 4];
            name += digits[byte & 15];
        }
        path_ = (std::filesystem::temp_directory_path() / name).u16string();
        if (!TARVO::platform::createFolder(path_)) {
            throw std::runtime_error("no folder for temporary files");
        }
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored; // what can't be removed is left to the system's own clean-up
        std::filesystem::remove_all(path_, ignored);
    }

    const std::u16string& path() const { return path_; }

    std::u16string operator/(std::u16string_view name) const {
        return path_ + TARVO::platform::kFolderSeparator + std::u16string{name};
    }

    std::u16string write(std::u16string_view name, std::string_view text) const {
        const std::u16string path = *this / name;
        std::ofstream file{std::filesystem::path{path}, std::ios::binary};
        if (!(file << text << std::flush)) {
            throw std::runtime_error("a temporary file can't be written");
        }
        return path;
    }

    static std::string textOf(const std::u16string& path) {
        std::ifstream file{std::filesystem::path{path}, std::ios::binary};
        return {std::istreambuf_iterator<char>{file}, {}};
    }

  private:
    std::u16string path_;
};
