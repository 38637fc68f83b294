// The three kinds of holder that stand behind an IVaskString, for callers and for the library
// itself. `set` never lets an exception out: what can't be stored gives RC_OUT_OF_MEMORY.
#pragma once

#include "base.h"
#include "result.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace tarvo {

namespace detail {

inline void getText(const std::u16string& text, const char16_t** pointer, std::uint32_t* length) {
    *pointer = text.c_str();
    *length = static_cast<std::uint32_t>(text.size());
}

inline TarvoResult assignText(std::u16string& target, const char16_t* text, std::uint32_t length) {
    try {
        if (length == 0)
            target.clear();
        else
            target.assign(text, length);
        return RC_OK;
    } catch (...) {
        return RC_OUT_OF_MEMORY;
    }
}

// A text of its own behind a pair: an IVaskString, or a pair whose table begins like its table. The
// table is the derived class's; a copy keeps it and gets a pair on itself.
template <class Pair>
class BasicString {
  public:
    Pair* pair() noexcept { return &pair_; }
    const std::u16string& text() const noexcept { return text_; }
    std::u16string& text() noexcept { return text_; }

  protected:
    using Table = std::remove_pointer_t<decltype(Pair::table)>;

    explicit BasicString(Table* table) noexcept : pair_{this, table} {}
    BasicString(Table* table, std::u16string_view text) : pair_{this, table}, text_(text) {}
    BasicString(const BasicString& other) : pair_{this, other.pair_.table}, text_(other.text_) {}
    BasicString(BasicString&& other) noexcept
        : pair_{this, other.pair_.table}, text_(std::move(other.text_)) {}
    BasicString& operator=(BasicString&& other) noexcept {
        text_ = std::move(other.text_);
        return *this;
    }
    ~BasicString() = default;

    static void get(void* me, const char16_t** text, std::uint32_t* length) {
        getText(static_cast<BasicString*>(me)->text_, text, length);
    }
    static TarvoResult set(void* me, const char16_t* text, std::uint32_t length) {
        return assignText(static_cast<BasicString*>(me)->text_, text, length);
    }

  private:
    Pair pair_;
    std::u16string text_;
};

} // namespace detail

// The text that a string reference gives. The view is valid until the string is next changed.
inline std::u16string_view viewOf(const IVaskString* string) {
    const char16_t* text = nullptr;
    std::uint32_t length = 0;
    string->table->get(string->me, &text, &length);
    return length == 0 ? std::u16string_view() : std::u16string_view(text, length);
}

// Gives a text to a string reference; the result is that of its `set`.
inline TarvoResult setText(IVaskString* string, std::u16string_view text) {
    return string->table->set(string->me, text.data(), static_cast<std::uint32_t>(text.size()));
}

// A string of its own: the pair and the text in one object, which may stand on the stack.
//
//     tarvo::String folder;
//     if (tarvo::functions().getTarvoFolder(folder.pair()) == RC_OK)
//         std::cout << tarvo::toUtf8(folder.text()) << '\n';
class String : public detail::BasicString<IVaskString> {
  public:
    String() noexcept : BasicString(&kTable) {}
    explicit String(std::u16string_view text) : BasicString(&kTable, text) {}

  private:
    static constexpr IVaskStringTable kTable = {.get = &String::get, .set = &String::set};
};

// A view that lets others read and write a string which lives elsewhere and outlives the wrapper.
//
//     std::u16string folder;
//     tarvo::functions().getTarvoFolder(tarvo::StringWrapper(folder).pair());
class StringWrapper {
  public:
    explicit StringWrapper(std::u16string& text) noexcept : pair_{&text, &kTable} {}

    IVaskString* pair() noexcept { return &pair_; }

  private:
    static void get(void* me, const char16_t** text, std::uint32_t* length) {
        detail::getText(*static_cast<std::u16string*>(me), text, length);
    }
    static TarvoResult set(void* me, const char16_t* text, std::uint32_t length) {
        return detail::assignText(*static_cast<std::u16string*>(me), text, length);
    }
    static constexpr IVaskStringTable kTable = {.get = &StringWrapper::get,
                                                .set = &StringWrapper::set};

    IVaskString pair_;
};

// A fixed text that answers every `set` with RC_READ_ONLY. The text must outlive the holder, as a
// literal does.
//
//     tarvo::ConstantString name(u"volume");
//     double volume = 0;
//     if (reader->table->GetReal(reader->me, name.pair(), &volume) == RC_OK)
//         std::cout << volume << '\n';
class ConstantString {
  public:
    constexpr explicit ConstantString(const char16_t* text) noexcept
        : pair_{this, &kTable}, text_(text),
          length_(static_cast<std::uint32_t>(std::u16string_view(text).size())) {}
    explicit ConstantString(const std::u16string& text) noexcept
        : pair_{this, &kTable}, text_(text.c_str()),
          length_(static_cast<std::uint32_t>(text.size())) {}
    ConstantString(const ConstantString&) = delete;
    ConstantString& operator=(const ConstantString&) = delete;

    IVaskString* pair() noexcept { return &pair_; }
    std::u16string_view text() const noexcept { return {text_, length_}; }

  private:
    static void get(void* me, const char16_t** text, std::uint32_t* length) {
        const auto* self = static_cast<const ConstantString*>(me);
        *text = self->text_;
        *length = self->length_;
    }
    static TarvoResult set(void*, const char16_t*, std::uint32_t) { return RC_READ_ONLY; }
    static constexpr IVaskStringTable kTable = {.get = &ConstantString::get,
                                                .set = &ConstantString::set};

    IVaskString pair_;
    const char16_t* text_;
    std::uint32_t length_;
};

// A text as an argument: a literal, a string, or null where that is allowed. It isn't copied, and
// ends with its first null character.
//
//     const std::u16string path = u"/example";
//     const tarvo::CText argument = path;
class CText {
  public:
    constexpr CText(std::nullptr_t) noexcept {}
    constexpr CText(const char16_t* text) noexcept : text_(text) {}
    CText(const std::u16string& text) noexcept : text_(text.c_str()) {}

    constexpr const char16_t* get() const noexcept { return text_; }

  private:
    const char16_t* text_ = nullptr;
};

} // namespace tarvo
