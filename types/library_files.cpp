#include "types/library_files.h"

#include "core/patience.h"
#include "platform/file.h"
#include "platform/folder.h"
#include "tarvo/result.h"

#include <utility>

namespace TARVO {

namespace {

// Up to and including the last separator; empty if there is none.
std::u16string folderOf(const std::u16string& path) {
    return path.substr(0, path.rfind(platform::kFolderSeparator) + 1);
}

} // namespace

void LibraryFiles::stage(std::u16string sourcePath, std::u16string fileName) {
    staged_.push_back({std::move(sourcePath), std::move(fileName)});
}

void LibraryFiles::retire(std::u16string fileName) {
    retired_.push_back(std::move(fileName));
}

Result LibraryFiles::copyStaged(const std::u16string& registryPath) const {
    const std::u16string folder = folderOf(registryPath);
    for (const auto& [source, name] : staged_) {
        const std::u16string target = folder + name;
        if (!platform::isSameFile(source, target) &&
            !tryPatiently([&, &from = source] { return platform::copyFileOver(from, target); }))
            return RC_NO_DATA_FOLDER;
    }
    return RC_OK;
}

Result LibraryFiles::removeRetired(const std::u16string& registryPath) const {
    const std::u16string folder = folderOf(registryPath);
    if (!retired_.empty() && folder.empty())
        return RC_NOT_FOUND;
    for (const std::u16string& name : retired_)
        platform::removeFile(folder + name);
    return RC_OK;
}

void LibraryFiles::clear() noexcept {
    staged_.clear();
    retired_.clear();
}

} // namespace TARVO
