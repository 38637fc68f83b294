#include "persistence/tree.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace TARVO {

namespace {

constexpr std::array<std::u16string_view, kLastKind + 1> kKindTexts = {
    u"real",  u"int",    u"bool",     u"string", u"enum",    u"value", u"real[]",
    u"int[]", u"bool[]", u"string[]", u"enum[]", u"value[]", u"byte[]"};

constexpr std::array<std::u16string_view, TARVO_VALUE_EMPTY + 1> kTagTexts = {
    u"string", u"int", u"bool", u"real", u"empty"};

// The place of a text in a table. With so few texts a walk is as fast as any map.
template <std::size_t Size>
std::optional<std::uint32_t> placeOf(std::u16string_view text,
                                     const std::array<std::u16string_view, Size>& texts) {
    const auto found = std::ranges::find(texts, text);
    if (found == texts.end())
        return std::nullopt;
    return static_cast<std::uint32_t>(std::distance(texts.begin(), found));
}

} // namespace

std::u16string_view textOfKind(std::uint32_t kind) {
    return kKindTexts.at(kind);
}

std::optional<std::uint32_t> kindOfText(std::u16string_view text) {
    return placeOf(text, kKindTexts);
}

std::u16string_view textOfTag(std::uint32_t tag) {
    return kTagTexts.at(tag);
}

std::optional<std::uint32_t> tagOfText(std::u16string_view text) {
    return placeOf(text, kTagTexts);
}

TARVOPersistenceValue& TARVOPersistenceNode::addValue(std::u16string_view name) {
    return values[Name(name, &memory_)];
}

TARVOPersistenceNode& TARVOPersistenceNode::addNode(std::u16string_view name) {
    auto& child = nodes[Name(name, &memory_)];
    child = make();
    return *child;
}

// Nodes are torn down from a list of those that have lost their last reference, and not by one
// destructor inside the other, so that no depth of a tree endangers the stack.
void TARVOPersistenceNode::release() noexcept {
    const auto dropReference = [](TARVOPersistenceNode& node) {
        return node.references_.fetch_sub(1, std::memory_order_acq_rel) == 1;
    };
    if (!dropReference(*this))
        return;
    TARVOPersistenceNode* pending = this;
    while (pending != nullptr) {
        TARVOPersistenceNode* const node = pending;
        pending = node->nextToDestroy_;
        for (auto& [name, child] : node->nodes) {
            TARVOPersistenceNode* const below = child.detach();
            if (below != nullptr && dropReference(*below)) {
                below->nextToDestroy_ = pending;
                pending = below;
            }
        }
        delete node;
    }
}

} // namespace TARVO
