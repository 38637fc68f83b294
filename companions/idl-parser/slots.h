// How a member function of the parser's objects becomes a slot of an interface table. No exception
// passes a slot: a lack of memory, which is all that can go wrong in one, leaves as a code.
#pragma once

#include "tarvo/base.h"
#include "tarvo/result.h"

#include <new>

namespace TARVO::idl {

namespace detail {

template <auto Member, class Signature = decltype(Member)>
struct Slot;

template <auto Member, class T, class... Arguments>
struct Slot<Member, Result (T::*)(Arguments...) const> {
    static Result call(void* me, Arguments... arguments) noexcept {
        try {
            return (static_cast<const T*>(me)->*Member)(arguments...);
        } catch (const std::bad_alloc&) {
            return RC_OUT_OF_MEMORY;
        } catch (...) {
            return RC_UNSPECIFIED;
        }
    }
};

// A slot that can't fail needs no clause.
template <auto Member, class T, class Value, class... Arguments>
struct Slot<Member, Value (T::*)(Arguments...) const noexcept> {
    static Value call(void* me, Arguments... arguments) noexcept {
        return (static_cast<const T*>(me)->*Member)(arguments...);
    }
};

} // namespace detail

// The table entry for a member function.
template <auto Member>
constexpr auto* slot = &detail::Slot<Member>::call;

} // namespace TARVO::idl
