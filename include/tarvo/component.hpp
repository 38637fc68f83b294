// What a component in C++ is built from: a base that counts references and answers for the
// interfaces of the object, and the way from a member function to a slot of a table.
#pragma once

#include "identifiers.h"
#include "query.hpp"
#include "reference.hpp"
#include "result.hpp"
#include "uuid.hpp"

#include <atomic>
#include <cstdint>
#include <new>
#include <system_error>

namespace tarvo {

namespace detail {

template <class T, auto Member, class Signature = decltype(Member)>
struct ComponentSlot;

template <class T, auto Member, class Base, class Value, class... Arguments>
struct ComponentSlot<T, Member, Value (Base::*)(Arguments...) noexcept> {
    static Value call(void* me, Arguments... arguments) noexcept {
        return (static_cast<T*>(me)->*Member)(arguments...);
    }
};

template <class T, auto Member, class Base, class... Arguments>
struct ComponentSlot<T, Member, TarvoResult (Base::*)(Arguments...)> {
    static TarvoResult call(void* me, Arguments... arguments) noexcept {
        try {
            return (static_cast<T*>(me)->*Member)(arguments...);
        } catch (const std::bad_alloc&) {
            return RC_OUT_OF_MEMORY;
        } catch (const std::system_error& error) {
            return resultOf(error);
        } catch (...) {
            return RC_UNSPECIFIED;
        }
    }
};

} // namespace detail

// The table entry for a member function of T, or of a base of T; the pair's `me` is the T. A
// function that isn't noexcept returns a TarvoResult: what it throws goes no further than this, and
// becomes its code if it is an Error, otherwise RC_OUT_OF_MEMORY or RC_UNSPECIFIED.
template <class T, auto Member>
constexpr auto* slot = &detail::ComponentSlot<T, Member>::call;

// The base of a component T, which has a member `void* find(const TarvoUUID&)`. An object starts
// with one reference, for whoever made it, and is deleted with its last. Any thread may add and
// release references.
//
//     class Greeter : public tarvo::Component<Greeter> {
//       public:
//         // A pair of this object by its identifier, or null; IVaskInterface is seen to by the base.
//         void* find(const TarvoUUID& id) {
//             return tarvo::UUID(id) == kIGreeterId ? &greeter_ : nullptr;
//         }
//
//         TarvoResult greet(const char16_t* name, IVaskString* greeting) {
//             return tarvo::setText(greeting, u"Hello, " + std::u16string(name) + u"!");
//         }
//
//       private:
//         static constexpr IGreeterTable kGreeterTable = {
//             .addReference = tarvo::slot<Greeter, &Greeter::addReference>,
//             .release = tarvo::slot<Greeter, &Greeter::release>,
//             .queryInterface = tarvo::slot<Greeter, &Greeter::queryInterface>,
//             .getLastError = tarvo::slot<Greeter, &Greeter::getLastError>,
//             .greet = tarvo::slot<Greeter, &Greeter::greet>,
//         };
//         IGreeter greeter_{this, &kGreeterTable};
//     };
template <class T>
class Component {
  public:
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    void addReference() noexcept { references_.fetch_add(1, std::memory_order_relaxed); }
    void release() noexcept {
        if (references_.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete static_cast<T*>(this);
    }

    TarvoResult queryInterface(const TarvoUUID* interfaceId, IVaskInterface** found) noexcept {
        if (found == nullptr)
            return RC_NULL_POINTER;
        *found = nullptr;
        if (interfaceId == nullptr)
            return RC_NULL_POINTER;
        *found = interfaceOf(*interfaceId);
        if (*found == nullptr)
            return RC_NO_INTERFACE;
        addReference();
        return RC_OK;
    }

    // For a component that keeps no last error.
    TarvoResult getLastError(IVaskError** error) noexcept {
        return error == nullptr ? RC_NULL_POINTER : RC_NOT_AVAILABLE;
    }

    IVaskInterface* pair() noexcept { return &pair_; }

  protected:
    Component() noexcept : pair_{static_cast<T*>(this), &kTable} {}
    ~Component() = default;

  private:
    // Every interface begins with the slots of IVaskInterface, so its pair serves as one.
    IVaskInterface* interfaceOf(const TarvoUUID& id) noexcept {
        if (UUID(id) == UUID(kIVaskInterfaceId))
            return &pair_;
        return static_cast<IVaskInterface*>(static_cast<T*>(this)->find(id));
    }

    static constexpr IVaskInterfaceTable kTable = {
        .addReference = slot<T, &Component::addReference>,
        .release = slot<T, &Component::release>,
        .queryInterface = slot<T, &Component::queryInterface>,
        .getLastError = slot<T, &Component::getLastError>,
    };

    IVaskInterface pair_;
    std::atomic<std::uint32_t> references_ = 1;
};

// The work of a component library's entry point for a component T with the given identifier.
//
//     tarvo::Reference<IVaskInterface> made;
//     tarvo::createComponent<Greeter>(kGreeterComponentId, &kGreeterComponentId, made.out());
//
// RC_OK, RC_NULL_POINTER, RC_CANNOT_CREATE (asked for another component), RC_OUT_OF_MEMORY, or
// RC_UNSPECIFIED if T's constructor throws.
template <class T>
TarvoResult createComponent(const TarvoUUID& id, const TarvoUUID* wanted,
                            IVaskInterface** instance) noexcept {
    if (wanted == nullptr || instance == nullptr)
        return RC_NULL_POINTER;
    *instance = nullptr;
    if (UUID(*wanted) != UUID(id))
        return RC_CANNOT_CREATE;
    try {
        *instance = (new T)->pair();
        return RC_OK;
    } catch (const std::bad_alloc&) {
        return RC_OUT_OF_MEMORY;
    } catch (...) {
        return RC_UNSPECIFIED;
    }
}

} // namespace tarvo
