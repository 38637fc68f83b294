#include "registry/tree.h"

#include <new>

namespace TARVO {

namespace {

constexpr bool isSeparator(char16_t unit) {
    return unit == u'/' || unit == u'\\';
}

// Room for an object and, behind it, for units of text.
template <class T>
void* allocateWithUnits(std::size_t units) {
    static_assert(alignof(T) >= alignof(char16_t) && sizeof(T) % alignof(char16_t) == 0);
    return ::operator new(sizeof(T) + units * sizeof(char16_t));
}

struct FreeMemory {
    void operator()(void* memory) const noexcept { ::operator delete(memory); }
};

char16_t* putUnits(char16_t* target, std::u16string_view text) noexcept {
    text.copy(target, text.size());
    return target + text.size();
}

} // namespace

NamedValue::NamedValue(std::u16string_view name, std::uint32_t hash,
                       const RegistryValue& value) noexcept
    : hash_(hash), nameLength_(static_cast<std::uint32_t>(name.size())),
      textLength_(static_cast<std::uint32_t>(value.text.size())), type_(value.type),
      integer_(value.integer) {
    char16_t* end = putUnits(reinterpret_cast<char16_t*>(this + 1), name);
    *putUnits(end, value.text) = u'\0';
}

tarvo::Reference<NamedValue> NamedValue::make(std::u16string_view name, std::uint32_t hash,
                                              const RegistryValue& value) {
    void* memory = allocateWithUnits<NamedValue>(name.size() + value.text.size() + 1);
    return tarvo::Reference<NamedValue>::share(new (memory) NamedValue(name, hash, value));
}

void NamedValue::release() noexcept {
    if (references_.fetch_sub(1, std::memory_order_acq_rel) != 1)
        return;
    this->~NamedValue();
    ::operator delete(this);
}

TarvoRegistry::TarvoRegistry(std::u16string_view name, std::uint32_t hash) noexcept : hash_(hash) {
    storeName(name);
}

TarvoRegistry::TarvoRegistry(const TarvoRegistry& other)
    : subKeys(other.subKeys), values(other.values), hash_(other.hash_) {
    storeName(other.name());
}

void TarvoRegistry::storeName(std::u16string_view name) noexcept {
    nameLength_ = static_cast<std::uint32_t>(name.size());
    putUnits(reinterpret_cast<char16_t*>(this + 1), name);
}

tarvo::Reference<TarvoRegistry> TarvoRegistry::make(std::u16string_view name, std::uint32_t hash) {
    void* memory = allocateWithUnits<TarvoRegistry>(name.size());
    return tarvo::Reference<TarvoRegistry>::share(new (memory) TarvoRegistry(name, hash));
}

tarvo::Reference<TarvoRegistry> TarvoRegistry::makeRoot() {
    return make({}, hashOfName({}));
}

tarvo::Reference<TarvoRegistry> TarvoRegistry::copy() const {
    std::unique_ptr<void, FreeMemory> memory(allocateWithUnits<TarvoRegistry>(nameLength_));
    auto* node = new (memory.get()) TarvoRegistry(*this);
    static_cast<void>(memory.release()); // the node's own from here on
    return tarvo::Reference<TarvoRegistry>::share(node);
}

// A tree can be as deep as its file says, so its nodes are torn down from a list of those that have
// lost their last reference, and not by one destructor inside the other.
void TarvoRegistry::release() noexcept {
    if (!dropReference())
        return;
    TarvoRegistry* pending = this;
    while (pending != nullptr) {
        TarvoRegistry* node = pending;
        pending = node->nextToDestroy_;
        node->subKeys.handOverEach([&](TarvoRegistry* child) {
            if (child->dropReference()) {
                child->nextToDestroy_ = pending;
                pending = child;
            }
        });
        node->~TarvoRegistry();
        ::operator delete(node);
    }
}

TarvoRegistry* findKey(TarvoRegistry* node, const char16_t* path) noexcept {
    if (path == nullptr)
        return node;
    while (node != nullptr) {
        const char16_t* end = path;
        while (*end != u'\0' && !isSeparator(*end))
            ++end;
        node = node->subKeys.find({path, static_cast<std::size_t>(end - path)});
        if (*end == u'\0' || end[1] == u'\0')
            return node;
        path = end + 1;
    }
    return nullptr;
}

} // namespace TARVO
