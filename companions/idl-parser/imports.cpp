#include "companions/idl-parser/imports.h"

#include "companions/idl-parser/model.h"
#include "companions/idl-parser/text.h"
#include "platform/file.h"
#include "platform/folder.h"
#include "types/definition_file.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace TARVO::idl {
namespace {

constexpr std::size_t kMostFiles = 1000;

// A definition is the same on all systems, so both separators are good in it.
std::u16string importPath(std::string_view written) {
    std::u16string path = plainText(written);
    std::replace(path.begin(), path.end(), u'\\', u'/');
    return path;
}

bool isAbsolute(std::u16string_view path) noexcept {
    return path.starts_with(u'/') || (path.size() > 1 && path[1] == u':');
}

// With the separator at its end; empty for a file in the current folder.
std::u16string folderOf(std::u16string_view path) {
    constexpr char16_t kSeparators[] = {u'/', platform::kFolderSeparator, u'\0'};
    return std::u16string(path.substr(0, path.find_last_of(kSeparators) + 1));
}

} // namespace

void Imports::open(const std::u16string& path) {
    FileBytes read = read_(path);
    if (read.failure != nullptr)
        errors_.addFatal(path, read.failure);
    else
        add(path, std::move(read.bytes));
}

void Imports::follow(SourceFile& file) {
    for (Import& import : file.imports)
        import.file = find(file, import);
}

const SourceFile* Imports::find(const SourceFile& importer, const Import& import) {
    const std::u16string written = importPath(import.path);
    std::u16string path = isAbsolute(written) ? written : folderOf(importer.path) + written;
    if (const auto known = files_.find(path); known != files_.end())
        return known->second;
    FileBytes read = readNear(importer, import, path);
    if (read.failure != nullptr) {
        errors_.add(importer, import.path,
                    inQuotes(import.path) + " can't be imported: " + read.failure);
        return nullptr;
    }
    if (document_.files().size() == kMostFiles) {
        errors_.add(importer, import.path, "a definition has no more than 1,000 files");
        return nullptr;
    }
    if (const SourceFile* same = findSame(path, read.bytes)) {
        files_.emplace(std::move(path), same);
        return same;
    }
    return add(path, std::move(read.bytes));
}

// Registered definitions stand beside each other under the names of their libraries; there, an
// import that names its library finds it.
FileBytes Imports::readNear(const SourceFile& importer, const Import& import,
                            std::u16string& path) {
    FileBytes read = read_(path);
    if (!read.isMissing || !import.library)
        return read;
    std::u16string keptPath = folderOf(importer.path) + definitionFileName(*import.library);
    FileBytes kept = read_(keptPath);
    if (kept.failure != nullptr)
        return read;
    path = std::move(keptPath);
    return kept;
}

// A file that was read by another spelling of its path.
const SourceFile* Imports::findSame(const std::u16string& path, const std::string& text) const {
    for (const auto& file : document_.files())
        if (file->text == text && (file->path == path || platform::isSameFile(file->path, path)))
            return file.get();
    return nullptr;
}

const SourceFile* Imports::add(const std::u16string& path, std::string text) {
    const SourceFile* file = &document_.addFile(path, std::move(text));
    files_.emplace(path, file);
    return file;
}

void Imports::check() const {
    for (const auto& file : document_.files())
        checkLibraries(*file);
    checkCircles();
}

void Imports::checkLibraries(const SourceFile& file) const {
    for (const Import& import : file.imports) {
        if (!import.library || import.file == nullptr)
            continue;
        const auto& libraries = import.file->libraries;
        const auto isWanted = [&](const Library* library) {
            return library->details->uuid == *import.library;
        };
        if (std::none_of(libraries.begin(), libraries.end(), isWanted))
            errors_.add(file, import.path,
                        inQuotes(import.path) + " has no library with this identifier");
    }
}

// Goes down the imports from the definition. A file that leads back to one on the way closes a
// circle.
void Imports::checkCircles() const {
    enum State : unsigned char { unseen, onTheWay, done };
    struct Step {
        const SourceFile* file;
        std::size_t nextImport;
    };
    std::vector<State> states(document_.files().size(), unseen);
    std::vector<Step> way;
    const auto enter = [&](const SourceFile* file) {
        states[file->number] = onTheWay;
        way.push_back({file, 0});
    };
    enter(document_.files().front().get());
    while (!way.empty()) {
        auto& [file, nextImport] = way.back();
        if (nextImport == file->imports.size()) {
            states[file->number] = done;
            way.pop_back();
            continue;
        }
        const Import& import = file->imports[nextImport++];
        if (import.file == nullptr)
            continue;
        if (states[import.file->number] == onTheWay)
            errors_.add(*file, import.path, inQuotes(import.path) + " closes a circle of imports");
        else if (states[import.file->number] == unseen)
            enter(import.file);
    }
}

} // namespace TARVO::idl
