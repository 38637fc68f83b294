#include "companions/idl-parser/document.h"

#include "companions/idl-parser/slots.h"
#include "tarvo/text.hpp"

#include <algorithm>
#include <iterator>

namespace TARVO::idl {
namespace {

constexpr IVaskIDLParseResultTable kTable = {
    .addReference = slot<&Document::addReference>,
    .release = slot<&Document::release>,
    .getImportedLibraryCount = slot<&Document::getImportedLibraryCount>,
    .getImportedLibrary = slot<&Document::getImportedLibrary>,
    .reserved4To14 = {},
    .getLibraryCount = slot<&Document::getLibraryCount>,
    .getLibrary = slot<&Document::getLibrary>,
    .getErrorMessage = slot<&Document::getErrorMessage>,
};

struct BuiltInType {
    std::string_view word;
    std::int32_t kind;
};

constexpr BuiltInType kBuiltInTypes[] = {
    {"result", TARVO_IDL_RESULT},
    {"integer", TARVO_IDL_INTEGER},
    {"unsigned", TARVO_IDL_UNSIGNED},
    {"string", TARVO_IDL_STRING},
    {"void", TARVO_IDL_VOID},
    {"boolean", TARVO_IDL_BOOLEAN},
    {"real", TARVO_IDL_REAL},
    {"byte", TARVO_IDL_BYTE},
    {"uuid", TARVO_IDL_UUID},
    {"value", TARVO_IDL_VALUE},
    {"IVaskInterface", TARVO_IDL_VASK_INTERFACE},
    {"ITarvoBase", TARVO_IDL_TARVO_BASE},
};

std::size_t indexOfBuiltIn(std::string_view word) noexcept {
    const auto* found = std::find_if(std::begin(kBuiltInTypes), std::end(kBuiltInTypes),
                                     [=](const BuiltInType& type) { return type.word == word; });
    return static_cast<std::size_t>(found - kBuiltInTypes);
}

Result handOut(std::span<Library* const> libraries, std::uint32_t index, IVaskIDLLibrary** out) {
    if (out == nullptr)
        return RC_NULL_POINTER;
    *out = nullptr;
    if (index >= libraries.size())
        return RC_NOT_AVAILABLE;
    return libraries[index]->handOut(out);
}

} // namespace

bool isBuiltInType(std::string_view word) noexcept {
    return indexOfBuiltIn(word) < std::size(kBuiltInTypes);
}

Document::Document() : pair_{this, &kTable} {
    for (const BuiltInType& type : kBuiltInTypes)
        builtInTypes_.push_back(make<Type>(*this, type.kind));
}

Document::Document(std::u16string errorMessage)
    : pair_{this, &kTable}, errorMessage_(std::move(errorMessage)) {}

std::int32_t Document::getImportedLibraryCount() const noexcept {
    return static_cast<std::int32_t>(importedLibraries_.size());
}

Result Document::getImportedLibrary(std::uint32_t index, IVaskIDLLibrary** library) const {
    return handOut(importedLibraries_, index, library);
}

std::int32_t Document::getLibraryCount() const noexcept {
    return static_cast<std::int32_t>(libraries_.size());
}

Result Document::getLibrary(std::uint32_t index, IVaskIDLLibrary** library) const {
    return handOut(libraries_, index, library);
}

Result Document::getErrorMessage(IVaskString* message) const {
    return message == nullptr ? RC_NULL_POINTER : tarvo::setText(message, errorMessage_);
}

SourceFile& Document::addFile(std::u16string path, std::string text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(kByteOrderMark))
        text.erase(0, kByteOrderMark.size());
    auto file = std::make_unique<SourceFile>();
    file->number = files_.size();
    file->path = std::move(path);
    file->text = std::move(text);
    return *files_.emplace_back(std::move(file));
}

Type* Document::builtInType(std::string_view word) {
    const std::size_t index = indexOfBuiltIn(word);
    return index < builtInTypes_.size() ? builtInTypes_[index] : nullptr;
}

void Document::showLibraries() {
    for (const auto& file : files_) {
        auto& libraries = file == files_.front() ? libraries_ : importedLibraries_;
        libraries.insert(libraries.end(), file->libraries.begin(), file->libraries.end());
    }
}

} // namespace TARVO::idl
