// The bases of the library's objects: a reference count, the interface pair or pairs that callers
// see, and, for objects with several interfaces, the map by which they are found. The language's
// own virtual table holds the destructor alone; callers see nothing of it.
#pragma once

#include "core/slot.h"
#include "tarvo/base.h"
#include "tarvo/error.h"
#include "tarvo/identification.h"
#include "tarvo/identifiers.h"
#include "tarvo/reference.hpp"
#include "tarvo/text.hpp"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <utility>

namespace TARVO {

using tarvo::Reference;

// An object with one interface, I, derived from ITarvoBase. It starts with no reference: whoever
// makes it and hands it out adds the first.
template <class T, class I>
class TarvoBaseImpl {
  public:
    using MeType = TarvoBaseImpl;
    using Table = std::remove_pointer_t<decltype(I::table)>;

    TarvoBaseImpl(const TarvoBaseImpl&) = delete;
    TarvoBaseImpl& operator=(const TarvoBaseImpl&) = delete;

    void addReference() noexcept { references_.fetch_add(1); }
    void release() noexcept {
        if (references_.fetch_sub(1) == 1)
            delete this;
    }

    // Whether the caller's reference is the only one. One thread at a time.
    bool isSoleReference() const noexcept { return references_.load() == 1; }

    I* pair() noexcept { return &pair_; }

  protected:
    explicit TarvoBaseImpl(Table* table) noexcept : pair_{this, table} {}
    virtual ~TarvoBaseImpl() = default;

  private:
    std::atomic<std::uint32_t> references_ = 0;
    I pair_;
};

// Makes an object and holds its first reference.
template <class T, class... Arguments>
Reference<T> makeObject(Arguments&&... arguments) {
    return Reference<T>::share(new T(std::forward<Arguments>(arguments)...));
}

// Gives the reference on an object to the caller's out-address.
template <class T, class I>
void handOut(Reference<T> object, I** out) noexcept {
    *out = object.detach()->pair();
}

// An object that is found through IVaskInterface and may have further interfaces, which derived
// classes enter into the map. All of them share one count.
template <class T>
class VaskBaseImpl {
  public:
    using MeType = VaskBaseImpl;

    VaskBaseImpl(const VaskBaseImpl&) = delete;
    VaskBaseImpl& operator=(const VaskBaseImpl&) = delete;

    void addReference() noexcept { references_.fetch_add(1); }
    void release() noexcept {
        if (references_.fetch_sub(1) == 1)
            delete this;
    }

    Result queryInterface(const UUID* interfaceId, IVaskInterface** interfaceReference) noexcept {
        if (interfaceReference == nullptr)
            return RC_NULL_POINTER;
        *interfaceReference = nullptr;
        if (interfaceId == nullptr)
            return RC_NULL_POINTER;
        for (const auto& [id, interfacePair] : std::span(interfaces_.data(), interfaceCount_))
            if (std::memcmp(id->bytes, interfaceId->bytes, sizeof id->bytes) == 0) {
                addReference();
                *interfaceReference = interfacePair;
                return RC_OK;
            }
        return RC_NO_INTERFACE;
    }

    Result getLastError(IVaskError** error) noexcept {
        if (error == nullptr)
            return RC_NULL_POINTER;
        if (!lastError_)
            return RC_NOT_AVAILABLE;
        *error = Reference(lastError_).detach();
        return RC_OK;
    }

    IVaskInterface* pair() noexcept { return &pair_; }

  protected:
    VaskBaseImpl() : pair_{me(), &kTable} { enterInterface(kIVaskInterfaceId, &pair_); }
    virtual ~VaskBaseImpl() = default;

    // What all interface pairs of the object hold as `me`.
    void* me() noexcept { return this; }

    // Every interface begins with the slots of IVaskInterface, so its pair serves as one. The
    // identifier is a constant.
    template <class I>
    void enterInterface(const UUID& interfaceId, I* interfacePair) {
        interfaces_.at(interfaceCount_) = {&interfaceId,
                                           reinterpret_cast<IVaskInterface*>(interfacePair)};
        ++interfaceCount_;
    }

  private:
    static constexpr IVaskInterfaceTable kTable = {
        .addReference = slot<T, &VaskBaseImpl::addReference>,
        .release = slot<T, &VaskBaseImpl::release>,
        .queryInterface = slot<T, &VaskBaseImpl::queryInterface>,
        .getLastError = slot<T, &VaskBaseImpl::getLastError>,
    };

    IVaskInterface pair_;
    std::atomic<std::uint32_t> references_ = 0;
    Reference<IVaskError> lastError_;
    std::array<std::pair<const UUID*, IVaskInterface*>, 4> interfaces_{}; // no object has more
    std::size_t interfaceCount_ = 0;
};

// An object with a name and a description of its own, which callers can read and not change. Name
// is what holds the name.
template <class T, class Name = std::u16string>
class ReadOnlyNamedVaskBaseImpl : public VaskBaseImpl<T> {
  public:
    Result getComponentName(IVaskString* name) {
        return name == nullptr ? RC_NULL_POINTER : tarvo::setText(name, name_);
    }
    Result getComponentDescription(IVaskString* description) {
        return description == nullptr ? RC_NULL_POINTER : tarvo::setText(description, description_);
    }
    Result refuseText(IVaskString*) noexcept { return RC_READ_ONLY; }

  protected:
    template <class Source>
    explicit ReadOnlyNamedVaskBaseImpl(const Source& name, std::u16string_view description = {})
        : identification_{this->me(), &kTable}, name_(name), description_(description) {
        this->enterInterface(kITarvoIdentificationId, &identification_);
    }

  private:
    static constexpr ITarvoIdentificationTable kTable = {
        .addReference = slot<T, &ReadOnlyNamedVaskBaseImpl::addReference>,
        .release = slot<T, &ReadOnlyNamedVaskBaseImpl::release>,
        .queryInterface = slot<T, &ReadOnlyNamedVaskBaseImpl::queryInterface>,
        .getLastError = slot<T, &ReadOnlyNamedVaskBaseImpl::getLastError>,
        .getComponentName = slot<T, &ReadOnlyNamedVaskBaseImpl::getComponentName>,
        .setComponentName = slot<T, &ReadOnlyNamedVaskBaseImpl::refuseText>,
        .getComponentDescription = slot<T, &ReadOnlyNamedVaskBaseImpl::getComponentDescription>,
        .setComponentDescription = slot<T, &ReadOnlyNamedVaskBaseImpl::refuseText>,
    };

    ITarvoIdentification identification_;
    Name name_;
    std::u16string description_;
};

} // namespace TARVO
