#include "registry/tree.h"

#include <new>
#include <utility>

namespace TARVO {

namespace {

constexpr bool isSeparator(char16_t unit) {
    return unit == u'/' || unit == u'\\';
}

char16_t* putUnits(char16_t* target, std::u16string_view text) noexcept {
    text.copy(target, text.size());
    return target + text.size();
}

char16_t* putUnits(char16_t* target, PlainText text) noexcept {
    static_assert(TreeMemory::kSlack >= kBlock * sizeof(char16_t));
    copyBlocks(text, target);
    return target + text.size();
}

// Takes one reference away and tells whether it was the last. The only holder need not ask others.
bool dropReference(std::atomic<std::uint32_t>& references) noexcept {
    return references.load(std::memory_order_acquire) == 1 ||
           references.fetch_sub(1, std::memory_order_acq_rel) == 1;
}

} // namespace

template <class Text>
NamedValue* NamedValue::makeOf(TreeMemory& memory, Text name, RegistryValueType type, Text text) {
    const std::size_t units = name.size() + 1 + text.size() + 1;
    const auto block = memory.allocate(sizeof(NamedValue) + units * sizeof(char16_t));
    auto* value = new (block.address) NamedValue;
    char16_t* end = putUnits(reinterpret_cast<char16_t*>(value + 1), name);
    *end++ = u'\0';
    *putUnits(end, text) = u'\0';
    value->place_ = block.place;
    value->nameLength_ = static_cast<std::uint32_t>(name.size());
    value->textLength_ = static_cast<std::uint32_t>(text.size());
    value->hash_ = hashOfFoldedName(value->name());
    value->type_ = type;
    return value;
}

tarvo::Reference<NamedValue> NamedValue::make(TreeMemory& memory, std::u16string_view name,
                                              RegistryValueType type, std::int32_t integer,
                                              std::u16string_view text) {
    NamedValue* value = makeOf(memory, name, type, text);
    value->integer_ = integer;
    return tarvo::Reference<NamedValue>::adopt(value);
}

tarvo::Reference<NamedValue> NamedValue::make(TreeMemory& memory, PlainText name,
                                              RegistryValueType type, PlainText text) {
    return tarvo::Reference<NamedValue>::adopt(makeOf(memory, name, type, text));
}

void NamedValue::release() noexcept {
    if (!dropReference(references_))
        return;
    const TreeMemory::Place place = place_;
    this->~NamedValue();
    TreeMemory::free(this, place);
}

template <class Text>
tarvo::Reference<TarvoRegistry> TarvoRegistry::makeOf(TreeMemory& memory, Text name,
                                                      Edition edition) {
    const auto block =
        memory.allocate(sizeof(TarvoRegistry) + (name.size() + 1) * sizeof(char16_t));
    auto* node = new (block.address) TarvoRegistry;
    *putUnits(reinterpret_cast<char16_t*>(node + 1), name) = u'\0';
    node->place_ = block.place;
    node->nameLength_ = static_cast<std::uint32_t>(name.size());
    node->hash_ = hashOfFoldedName(node->name());
    node->edition_ = edition;
    return tarvo::Reference<TarvoRegistry>::adopt(node);
}

tarvo::Reference<TarvoRegistry> TarvoRegistry::make(TreeMemory& memory, std::u16string_view name,
                                                    Edition edition) {
    return makeOf(memory, name, edition);
}

tarvo::Reference<TarvoRegistry> TarvoRegistry::make(TreeMemory& memory, PlainText name,
                                                    Edition edition) {
    return makeOf(memory, name, edition);
}

tarvo::Reference<TarvoRegistry> TarvoRegistry::makeRoot(Edition edition) {
    TreeMemory memory;
    return make(memory, std::u16string_view(), edition);
}

tarvo::Reference<TarvoRegistry> TarvoRegistry::copy(TreeMemory& memory, Edition edition) const {
    auto node = make(memory, name(), edition);
    node->subKeys.copyFrom(memory, subKeys);
    node->values.copyFrom(memory, values);
    return node;
}

// A tree can be as deep as its file says, so its nodes are torn down from a list of those that have
// lost their last reference, and not by one destructor inside the other.
void TarvoRegistry::release() noexcept {
    if (!dropReference(references_))
        return;
    TarvoRegistry* pending = this;
    while (pending != nullptr) {
        TarvoRegistry* node = pending;
        pending = node->nextToDestroy_;
        node->subKeys.handOverEach([&](TarvoRegistry* child) {
            if (dropReference(child->references_)) {
                child->nextToDestroy_ = pending;
                pending = child;
            }
        });
        const TreeMemory::Place place = node->place_;
        node->~TarvoRegistry();
        TreeMemory::free(node, place);
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
