// The one holder of counted references, for callers and for the library itself: it releases what it
// holds when it is destroyed or overwritten, so that no path of a program has to.
#pragma once

#include <concepts>
#include <cstddef>
#include <utility>

namespace tarvo {

// An interface pair whose table begins with addReference and release.
template <class T>
concept CountedPair = requires(T* pair) {
    pair->table->addReference(pair->me);
    pair->table->release(pair->me);
};

// Holds one reference on an interface pair, or on an object that counts its own references.
// A moved-from or default-made holder is null. Used by one thread at a time.
//
//     tarvo::Reference<IVaskRegistryKey> root;
//     if (tarvo::functions().vaskGetRegistryKey(nullptr, root.out()) == RC_OK) {
//         const tarvo::Reference<IVaskRegistryKey> second = root; // a reference of its own
//         std::cout << (second == root) << '\n';
//     } // both are released
template <class T>
class Reference {
  public:
    Reference() noexcept = default;
    Reference(std::nullptr_t) noexcept {}

    Reference(const Reference& other) noexcept : target_(other.target_) { addReference(); }
    Reference(Reference&& other) noexcept : target_(std::exchange(other.target_, nullptr)) {}

    Reference& operator=(Reference other) noexcept {
        std::swap(target_, other.target_);
        return *this;
    }

    ~Reference() { release(); }

    // Takes over a reference that the caller owns.
    static Reference adopt(T* target) noexcept {
        Reference holder;
        holder.target_ = target;
        return holder;
    }

    // Adds a reference of its own to one that is borrowed.
    static Reference share(T* target) noexcept {
        Reference holder = adopt(target);
        holder.addReference();
        return holder;
    }

    T* get() const noexcept { return target_; }
    T* operator->() const noexcept { return target_; }
    T& operator*() const noexcept { return *target_; }
    explicit operator bool() const noexcept { return target_ != nullptr; }

    // The address to pass as an out-argument. What was held before is released first.
    T** out() noexcept {
        *this = nullptr;
        return &target_;
    }

    // Hands the reference over to the caller, who owes its release.
    [[nodiscard]] T* detach() noexcept { return std::exchange(target_, nullptr); }

    friend bool operator==(const Reference& left, const Reference& right) noexcept {
        return left.target_ == right.target_;
    }

  private:
    void addReference() noexcept {
        if (target_ == nullptr)
            return;
        if constexpr (CountedPair<T>)
            target_->table->addReference(target_->me);
        else
            target_->addReference();
    }

    void release() noexcept {
        if (target_ == nullptr)
            return;
        if constexpr (CountedPair<T>)
            target_->table->release(target_->me);
        else
            target_->release();
    }

    T* target_ = nullptr;
};

} // namespace tarvo
