// The holders that stand behind an IVaskArray: scalars in a vector, and strings with the array of
// references through which others fill them.
#pragma once

#include "text.hpp"

#include <span>
#include <type_traits>
#include <vector>

namespace tarvo {

// An array of numbers, for slots that take an IVaskArray of the element type.
template <class Element>
requires std::is_trivially_copyable_v<Element>
class ScalarArray {
  public:
    ScalarArray() noexcept : pair_{this, &kTable} {}
    ScalarArray(const ScalarArray&) = delete;
    ScalarArray& operator=(const ScalarArray&) = delete;

    IVaskArray* pair() noexcept { return &pair_; }
    const std::vector<Element>& elements() const noexcept { return elements_; }
    std::vector<Element>& elements() noexcept { return elements_; }

  private:
    static void get(void* me, void** elements, std::uint32_t* count) {
        auto* self = static_cast<ScalarArray*>(me);
        *elements = self->elements_.data();
        *count = static_cast<std::uint32_t>(self->elements_.size());
    }
    static TarvoResult resize(void* me, std::uint32_t count, void** elements) {
        auto* self = static_cast<ScalarArray*>(me);
        try {
            self->elements_.resize(count);
        } catch (...) {
            return RC_OUT_OF_MEMORY;
        }
        *elements = self->elements_.data();
        return RC_OK;
    }
    static constexpr IVaskArrayTable kTable = {.get = &ScalarArray::get,
                                               .resize = &ScalarArray::resize};

    IVaskArray pair_;
    std::vector<Element> elements_;
};

// An array of strings, for slots that fill an IVaskArray of IVaskString.
//
//     tarvo::StringArray names;
//     if (key->table->getKeyNames(key->me, names.pair()) == RC_OK)
//         for (const tarvo::String& name : names.strings())
//             use(name.text());
class StringArray {
  public:
    StringArray() noexcept : pair_{this, &kTable} {}
    StringArray(const StringArray&) = delete;
    StringArray& operator=(const StringArray&) = delete;

    IVaskArray* pair() noexcept { return &pair_; }
    std::span<const String> strings() const noexcept { return strings_; }

  private:
    // Growing moves the strings, so the references are made anew from their addresses of now.
    void rebuildReferences() {
        references_.resize(strings_.size());
        for (std::size_t i = 0; i < strings_.size(); ++i)
            references_[i] = strings_[i].pair();
    }

    static void get(void* me, void** elements, std::uint32_t* count) {
        auto* self = static_cast<StringArray*>(me);
        *elements = self->references_.data();
        *count = static_cast<std::uint32_t>(self->references_.size());
    }
    static TarvoResult resize(void* me, std::uint32_t count, void** elements) {
        auto* self = static_cast<StringArray*>(me);
        try {
            self->references_.reserve(count);
            self->strings_.resize(count);
            self->rebuildReferences();
        } catch (...) {
            return RC_OUT_OF_MEMORY;
        }
        *elements = self->references_.data();
        return RC_OK;
    }
    static constexpr IVaskArrayTable kTable = {.get = &StringArray::get,
                                               .resize = &StringArray::resize};

    IVaskArray pair_;
    std::vector<String> strings_;
    std::vector<IVaskString*> references_;
};

} // namespace tarvo
