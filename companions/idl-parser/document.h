// The owner of all that one parse gives, and the one count of references on it.
#pragma once

#include "companions/idl-parser/model.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace TARVO::idl {

class Document {
  public:
    // It starts with one reference, which is the caller's. One with an error message holds nothing
    // else.
    Document();
    explicit Document(std::u16string errorMessage);
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    // ---- the slots ----

    void addReference() const noexcept { references_.fetch_add(1); }
    void release() const noexcept {
        if (references_.fetch_sub(1) == 1)
            delete this;
    }
    std::int32_t getImportedLibraryCount() const noexcept;
    Result getImportedLibrary(std::uint32_t index, IVaskIDLLibrary** library) const;
    std::int32_t getLibraryCount() const noexcept;
    Result getLibrary(std::uint32_t index, IVaskIDLLibrary** library) const;
    Result getErrorMessage(IVaskString* message) const;

    IVaskIDLParseResult* pair() noexcept { return &pair_; }

    // ---- for those who fill it ----

    template <class T, class... Arguments>
    T* make(Arguments&&... arguments) {
        static_assert(std::is_trivially_destructible_v<T>);
        return new (memory_.allocate(sizeof(T), alignof(T)))
            T(std::forward<Arguments>(arguments)...);
    }

    // A copy of elements in the document's memory.
    template <class T>
    std::span<const T> keep(std::span<const T> elements) {
        static_assert(std::is_trivially_destructible_v<T>);
        if (elements.empty())
            return {};
        auto* copy = static_cast<T*>(memory_.allocate(elements.size_bytes(), alignof(T)));
        std::uninitialized_copy(elements.begin(), elements.end(), copy);
        return {copy, elements.size()};
    }

    SourceFile& addFile(std::u16string path, std::string text);
    std::span<const std::unique_ptr<SourceFile>> files() const noexcept { return files_; }

    // The type that a word of the language names, one for the whole document; null if it names
    // none.
    Type* builtInType(std::string_view word);

    // Shows the libraries of the files, the first of which is the definition itself, to callers.
    void showLibraries();

  private:
    ~Document() = default;

    IVaskIDLParseResult pair_;
    mutable std::atomic<std::uint32_t> references_ = 1;
    std::pmr::monotonic_buffer_resource memory_;
    std::vector<std::unique_ptr<SourceFile>> files_;
    std::vector<Type*> builtInTypes_;
    std::vector<Library*> libraries_;
    std::vector<Library*> importedLibraries_;
    std::u16string errorMessage_;
};

// Whether a word names a type of the language's own.
bool isBuiltInType(std::string_view word) noexcept;

} // namespace TARVO::idl
