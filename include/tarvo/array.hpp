// The holders that stand behind an IVaskArray: scalars in a vector, and strings or values with the
// array of references through which others fill them.
#pragma once

#include "text.hpp"
#include "value.hpp"

#include <cstdint>
#include <cstring>
#include <iterator>
#include <span>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace tarvo {

namespace detail {

// Numbers behind a pair: an IVaskArray, or a pair whose table begins like its table. The table is
// the derived class's.
template <class Pair, class Element>
requires std::is_trivially_copyable_v<Element>
class BasicScalarArray {
  public:
    BasicScalarArray(const BasicScalarArray&) = delete;
    BasicScalarArray& operator=(const BasicScalarArray&) = delete;

    Pair* pair() noexcept { return &pair_; }
    const std::vector<Element>& elements() const noexcept { return elements_; }
    std::vector<Element>& elements() noexcept { return elements_; }

  protected:
    using Table = std::remove_pointer_t<decltype(Pair::table)>;

    explicit BasicScalarArray(Table* table) noexcept : pair_{this, table} {}
    ~BasicScalarArray() = default;

    static void get(void* me, void** elements, std::uint32_t* count) {
        auto* self = static_cast<BasicScalarArray*>(me);
        *elements = self->elements_.data();
        *count = static_cast<std::uint32_t>(self->elements_.size());
    }
    static TarvoResult resize(void* me, std::uint32_t count, void** elements) {
        auto* self = static_cast<BasicScalarArray*>(me);
        try {
            self->elements_.resize(count);
        } catch (...) {
            return RC_OUT_OF_MEMORY;
        }
        *elements = self->elements_.data();
        return RC_OK;
    }

  private:
    Pair pair_;
    std::vector<Element> elements_;
};

// Objects with pairs of their own behind a pair as above. Others see the references to them.
template <class Pair, class Element>
class BasicObjectArray {
  public:
    BasicObjectArray(const BasicObjectArray&) = delete;
    BasicObjectArray& operator=(const BasicObjectArray&) = delete;

    Pair* pair() noexcept { return &pair_; }
    std::span<const Element> elements() const noexcept { return elements_; }
    std::span<Element> elements() noexcept { return elements_; }

    // Raises what the allocator raises; the array is as it was then.
    void resize(std::size_t count) {
        references_.reserve(count);
        elements_.resize(count);
        references_.resize(count);
        // Growing moves the elements, so the references are made anew from their addresses of now.
        for (std::size_t i = 0; i < count; ++i)
            references_[i] = elements_[i].pair();
    }

  protected:
    using Table = std::remove_pointer_t<decltype(Pair::table)>;
    using Item = decltype(std::declval<Element&>().pair());

    explicit BasicObjectArray(Table* table) noexcept : pair_{this, table} {}
    ~BasicObjectArray() = default;

    static void getItems(void* me, void** items, std::uint32_t* count) {
        auto* self = static_cast<BasicObjectArray*>(me);
        *items = self->references_.data();
        *count = static_cast<std::uint32_t>(self->references_.size());
    }
    static TarvoResult resizeItems(void* me, std::uint32_t count, void** items) {
        auto* self = static_cast<BasicObjectArray*>(me);
        try {
            self->resize(count);
        } catch (...) {
            return RC_OUT_OF_MEMORY;
        }
        *items = self->references_.data();
        return RC_OK;
    }

  private:
    Pair pair_;
    std::vector<Element> elements_;
    std::vector<Item> references_;
};

} // namespace detail

// An array of numbers, for slots that take an IVaskArray of the element type.
//
//     tarvo::ConstantString name(u"gains");
//     tarvo::ScalarArray<double> gains;
//     if (reader->table->GetArrayReal(reader->me, name.pair(), gains.pair()) == RC_OK)
//         for (const double gain : gains.elements())
//             std::cout << gain << '\n';
template <class Element>
class ScalarArray : public detail::BasicScalarArray<IVaskArray, Element> {
    using Base = detail::BasicScalarArray<IVaskArray, Element>;

  public:
    ScalarArray() noexcept : Base(&kTable) {}

  private:
    static constexpr IVaskArrayTable kTable = {.get = &Base::get, .resize = &Base::resize};
};

// An array of strings or of values, for slots that fill an IVaskArray of their references.
//
//     tarvo::ObjectArray<tarvo::String> names;
//     if (reader->table->NodeNames(reader->me, names.pair()) == RC_OK)
//         std::cout << names.elements().size() << " nodes\n";
template <class Element>
class ObjectArray : public detail::BasicObjectArray<IVaskArray, Element> {
    using Base = detail::BasicObjectArray<IVaskArray, Element>;

  public:
    ObjectArray() noexcept : Base(&kTable) {}

  private:
    static constexpr IVaskArrayTable kTable = {.get = &Base::getItems,
                                               .resize = &Base::resizeItems};
};

//     tarvo::StringArray names;
//     if (reader->table->ValueNames(reader->me, names.pair()) == RC_OK)
//         for (const tarvo::String& name : names.strings())
//             std::cout << tarvo::toUtf8(name.text()) << '\n';
class StringArray : public ObjectArray<String> {
  public:
    std::span<const String> strings() const noexcept { return elements(); }
};

// Moves the texts out of an array.
inline std::vector<std::u16string> takeTexts(StringArray& array) {
    std::vector<std::u16string> texts;
    texts.reserve(array.elements().size());
    for (String& string : array.elements())
        texts.push_back(std::move(string.text()));
    return texts;
}

//     tarvo::ConstantString name(u"tunings");
//     tarvo::ValueArray tunings;
//     if (reader->table->GetArrayValue(reader->me, name.pair(), tunings.pair()) == RC_OK)
//         std::cout << tunings.values().size() << " tunings\n";
class ValueArray : public ObjectArray<Value> {
  public:
    std::span<const Value> values() const noexcept { return elements(); }
};

// Gives numbers to an array reference. The result is that of its `resize`, or RC_NULL_POINTER if
// that gave no place for them.
template <class Element>
TarvoResult setElements(IVaskArray* target, std::span<const Element> elements) {
    void* place = nullptr;
    const TarvoResult result =
        target->table->resize(target->me, static_cast<std::uint32_t>(elements.size()), &place);
    if (result != RC_OK || elements.empty())
        return result;
    if (place == nullptr)
        return RC_NULL_POINTER;
    std::memcpy(place, elements.data(), elements.size_bytes());
    return RC_OK;
}

// Gives objects to an array of references, each by `set(Item*, object)`. The result is that of its
// `resize`, of the first `set` that fails, or RC_NULL_POINTER if the array lacks an item.
template <class Item, class Objects, class Set>
TarvoResult setItems(IVaskArray* target, const Objects& objects, Set&& set) {
    void* place = nullptr;
    const TarvoResult result =
        target->table->resize(target->me, static_cast<std::uint32_t>(std::size(objects)), &place);
    if (result != RC_OK || std::empty(objects))
        return result;
    if (place == nullptr)
        return RC_NULL_POINTER;
    auto* const* item = static_cast<Item**>(place);
    for (const auto& object : objects) {
        const TarvoResult setResult = *item == nullptr ? RC_NULL_POINTER : set(*item, object);
        if (setResult != RC_OK)
            return setResult;
        ++item;
    }
    return RC_OK;
}

} // namespace tarvo
