// How a member function becomes a slot of an interface table, with the catching rule around it. No
// exception passes a slot or an export: it leaves as a result code, and where the object keeps a
// last error, the detail is recorded there.
#pragma once

#include "core/link_error.h"
#include "tarvo/base.h"
#include "tarvo/result.h"

#include <cstddef>
#include <exception>
#include <string_view>
#include <type_traits>

namespace TARVO {

// A text as a template argument: the name of the operation that goes into a recorded last error.
template <std::size_t Size>
struct FixedText {
    constexpr FixedText(const char16_t (&text)[Size]) {
        for (std::size_t i = 0; i < Size; ++i)
            units[i] = text[i];
    }
    constexpr std::u16string_view view() const { return {units, Size - 1}; }

    char16_t units[Size] = {};
};

// An object that keeps its last error records it in this way; the service objects don't.
template <class T>
concept KeepsLastError = requires(T& object, std::u16string_view scope,
                                  const vask_link_error& error) {
    object.recordLastError(scope, error);
};

namespace detail {

// The object behind a `me`. A base that hands out its own address as `me` says so by a MeType.
template <class T>
T& objectOf(void* me) noexcept {
    if constexpr (requires { typename T::MeType; })
        return static_cast<T&>(*static_cast<typename T::MeType*>(me));
    else
        return *static_cast<T*>(me);
}

template <class T>
Result failureWithDetail(T& object, std::u16string_view scope,
                         const vask_link_error& error) noexcept {
    try {
        if (error.code() == RC_SEE_LAST_ERROR)
            object.recordLastError(scope, error);
        return error.code();
    } catch (...) {
        return RC_UNSPECIFIED; // not even the detail could be kept
    }
}

// The code for the exception in flight; called from a catch clause.
template <class T>
Result resultOfException(T& object, std::u16string_view scope) noexcept {
    try {
        throw;
    } catch (const vask_link_error& error) {
        return failureWithDetail(object, scope, error);
    } catch (const std::exception& error) {
        try {
            return failureWithDetail(object, scope, vask_link_error(error));
        } catch (...) {
            return RC_UNSPECIFIED;
        }
    } catch (...) {
        return RC_UNSPECIFIED;
    }
}

// The same for what keeps no last error: only the code of a vask_link_error tells more.
inline Result resultOfException() noexcept {
    try {
        throw;
    } catch (const vask_link_error& error) {
        return error.code();
    } catch (...) {
        return RC_UNSPECIFIED;
    }
}

template <class T, auto Member, FixedText Scope, class Signature = decltype(Member)>
struct Slot;

template <class T, auto Member, FixedText Scope, class Base, class... Arguments>
struct Slot<T, Member, Scope, Result (Base::*)(Arguments...)> {
    static Result call(void* me, Arguments... arguments) noexcept {
        T& object = objectOf<T>(me);
        try {
            return (object.*Member)(arguments...);
        } catch (...) {
            if constexpr (KeepsLastError<T>)
                return resultOfException(object, Scope.view());
            else
                return resultOfException();
        }
    }
};

// A slot that can't fail needs no clause.
template <class T, auto Member, FixedText Scope, class Base, class Value, class... Arguments>
struct Slot<T, Member, Scope, Value (Base::*)(Arguments...) noexcept> {
    static Value call(void* me, Arguments... arguments) noexcept {
        return (objectOf<T>(me).*Member)(arguments...);
    }
};

} // namespace detail

// The table entry for a member function of T, or of a base of T.
template <class T, auto Member, FixedText Scope = u"">
constexpr auto* slot = &detail::Slot<T, Member, Scope>::call;

// Runs the body of an export.
template <class Body>
Result guardedCall(Body&& body) noexcept {
    try {
        return body();
    } catch (...) {
        return detail::resultOfException();
    }
}

} // namespace TARVO
