// Offering saved state: a base for an IVaskPersistReader of a caller's own, and one that shows a
// tree in memory, which is all that most hosts need.
#pragma once

#include "state.hpp"

#include <atomic>
#include <cstring>
#include <map>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace tarvo {

// A node that a derived class tells of. What it raises ends the slot: Error with its result code, a
// lack of memory with RC_OUT_OF_MEMORY, anything else with RC_UNSPECIFIED. An object starts without
// references, is shared by whoever makes it (`Reference<StateSource>::share(new Clicks)`), and is
// deleted with its last. Any thread may add and release references; all else is for one at a time.
//
//     class Clicks : public tarvo::StateSource { // a node with one value, "count"
//         std::vector<std::u16string> valueNames() override { return {u"count"}; }
//         std::vector<std::u16string> nodeNames() override { return {}; }
//         const tarvo::StateValue* findValue(std::u16string_view name) override {
//             return name == u"count" ? &count_ : nullptr;
//         }
//         tarvo::Reference<IVaskPersistReader> openNode(std::u16string_view) override { return {}; }
//
//         tarvo::StateValue count_ = 3;
//     };
class StateSource {
  public:
    StateSource(const StateSource&) = delete;
    StateSource& operator=(const StateSource&) = delete;

    void addReference() noexcept { references_.fetch_add(1); }
    void release() noexcept {
        if (references_.fetch_sub(1) == 1)
            delete this;
    }

    IVaskPersistReader* pair() noexcept { return &pair_; }

  protected:
    StateSource() noexcept = default;
    virtual ~StateSource() = default;

    virtual std::vector<std::u16string> valueNames() = 0;
    virtual std::vector<std::u16string> nodeNames() = 0;

    // The value of a name, valid until the next call; null if there is none.
    virtual const StateValue* findValue(std::u16string_view name) = 0;

    // A reader on a child node; null if there is none.
    virtual Reference<IVaskPersistReader> openNode(std::u16string_view name) = 0;

  private:
    static StateSource& of(void* me) noexcept { return *static_cast<StateSource*>(me); }

    static void addReferenceTo(void* me) { of(me).addReference(); }
    static void releaseFrom(void* me) { of(me).release(); }

    static TarvoResult queryInterface(void* me, const TarvoUUID* interfaceId,
                                      IVaskInterface** interfaceReference) {
        if (interfaceReference == nullptr)
            return RC_NULL_POINTER;
        *interfaceReference = nullptr;
        if (interfaceId == nullptr)
            return RC_NULL_POINTER;
        const auto is = [&](const TarvoUUID& id) {
            return std::memcmp(interfaceId, &id, sizeof id) == 0;
        };
        if (!is(kIVaskInterfaceId) && !is(kIVaskPersistReaderId))
            return RC_NO_INTERFACE;
        of(me).addReference();
        *interfaceReference = reinterpret_cast<IVaskInterface*>(of(me).pair());
        return RC_OK;
    }

    static TarvoResult getLastError(void*, IVaskError** error) {
        return error == nullptr ? RC_NULL_POINTER : RC_NOT_AVAILABLE;
    }

    template <class Body>
    static TarvoResult guarded(Body&& body) noexcept {
        try {
            return body();
        } catch (const std::bad_alloc&) {
            return RC_OUT_OF_MEMORY;
        } catch (const std::system_error& error) {
            return resultOf(error);
        } catch (...) {
            return RC_UNSPECIFIED;
        }
    }

    static std::u16string_view textOf(const IVaskString* name) {
        return name == nullptr ? std::u16string_view() : viewOf(name);
    }

    template <std::vector<std::u16string> (StateSource::*Names)()>
    static TarvoResult giveNames(void* me, IVaskArray* target) {
        if (target == nullptr)
            return RC_NULL_POINTER;
        return guarded([&] { return give((of(me).*Names)(), target); });
    }

    static TarvoResult giveKind(void* me, IVaskString* name, std::uint32_t* kind) {
        if (kind == nullptr)
            return RC_NULL_POINTER;
        return guarded([&]() -> TarvoResult {
            const StateValue* const value = of(me).findValue(textOf(name));
            if (value == nullptr)
                return RC_NOT_AVAILABLE;
            *kind = static_cast<std::uint32_t>(kindOf(*value));
            return RC_OK;
        });
    }

    template <StateKind Kind, class Target>
    static TarvoResult giveValue(void* me, IVaskString* name, Target* target) {
        if (target == nullptr)
            return RC_NULL_POINTER;
        return guarded([&]() -> TarvoResult {
            const StateValue* const value = of(me).findValue(textOf(name));
            if (value == nullptr)
                return RC_NOT_AVAILABLE;
            const auto* const content = std::get_if<static_cast<std::size_t>(Kind)>(value);
            return content == nullptr ? TarvoResult{RC_BAD_DATA} : give(*content, target);
        });
    }

    static TarvoResult giveNode(void* me, IVaskString* name, IVaskPersistReader** node) {
        if (node == nullptr)
            return RC_NULL_POINTER;
        return guarded([&]() -> TarvoResult {
            auto reader = of(me).openNode(textOf(name));
            if (!reader)
                return RC_NOT_AVAILABLE;
            *node = reader.detach();
            return RC_OK;
        });
    }

    // How a value goes out, by its type and that of its target.
    template <class Held, class Number>
    requires std::is_arithmetic_v<Number>
    static TarvoResult give(const Held& held, Number* target) {
        *target = static_cast<Number>(held);
        return RC_OK;
    }
    static TarvoResult give(const std::u16string& text, IVaskString* target) {
        return setText(target, text);
    }
    static TarvoResult give(const Value& value, IVaskValue* target) {
        return setValue(target, value);
    }
    template <class Element>
    static TarvoResult give(const std::vector<Element>& elements, IVaskArray* target) {
        return setElements(target, std::span<const Element>(elements));
    }
    static TarvoResult give(const std::vector<bool>& booleans, IVaskArray* target) {
        return give(std::vector<std::uint32_t>(booleans.begin(), booleans.end()), target);
    }
    static TarvoResult give(const std::vector<std::u16string>& texts, IVaskArray* target) {
        return setItems<IVaskString>(
            target, texts,
            [](IVaskString* item, const std::u16string& text) { return give(text, item); });
    }
    static TarvoResult give(const std::vector<Value>& values, IVaskArray* target) {
        return setItems<IVaskValue>(
            target, values, [](IVaskValue* item, const Value& value) { return give(value, item); });
    }

    static constexpr IVaskPersistReaderTable kTable = {
        .addReference = &StateSource::addReferenceTo,
        .release = &StateSource::releaseFrom,
        .queryInterface = &StateSource::queryInterface,
        .getLastError = &StateSource::getLastError,
        .ValueNames = &StateSource::giveNames<&StateSource::valueNames>,
        .GetValueType = &StateSource::giveKind,
        .GetReal = &StateSource::giveValue<StateKind::real>,
        .GetInteger = &StateSource::giveValue<StateKind::integer>,
        .GetBoolean = &StateSource::giveValue<StateKind::boolean>,
        .GetString = &StateSource::giveValue<StateKind::string>,
        .GetEnumeration = &StateSource::giveValue<StateKind::enumeration>,
        .GetValue = &StateSource::giveValue<StateKind::value>,
        .GetArrayReal = &StateSource::giveValue<StateKind::realArray>,
        .GetArrayInteger = &StateSource::giveValue<StateKind::integerArray>,
        .GetArrayBoolean = &StateSource::giveValue<StateKind::booleanArray>,
        .GetArrayString = &StateSource::giveValue<StateKind::stringArray>,
        .GetArrayEnumeration = &StateSource::giveValue<StateKind::enumerationArray>,
        .GetArrayValue = &StateSource::giveValue<StateKind::valueArray>,
        .GetArrayByte = &StateSource::giveValue<StateKind::byteArray>,
        .NodeNames = &StateSource::giveNames<&StateSource::nodeNames>,
        .GetNode = &StateSource::giveNode,
    };

    IVaskPersistReader pair_{this, &kTable};
    std::atomic<std::uint32_t> references_ = 0;
};

// A tree of state in memory.
//
//     auto state = std::make_shared<tarvo::StateTree>();
//     state->values[u"TransitionFormat"] = u"Stream";
//     state->values[u"data"] = savedBytes;
//     const auto offered = tarvo::offerState(state);
struct StateTree {
    std::map<std::u16string, StateValue, std::less<>> values;
    std::map<std::u16string, std::shared_ptr<StateTree>, std::less<>> nodes;

    // A new child node, in the place of the one that has its name if there is one.
    StateTree& addNode(const std::u16string& name) {
        return *(nodes[name] = std::make_shared<StateTree>());
    }
};

Reference<IVaskPersistReader> offerState(std::shared_ptr<const StateTree> tree);

namespace detail {

class StateTreeSource final : public StateSource {
  public:
    explicit StateTreeSource(std::shared_ptr<const StateTree> tree) : tree_(std::move(tree)) {}

  private:
    std::vector<std::u16string> valueNames() override { return namesOf(tree_->values); }
    std::vector<std::u16string> nodeNames() override { return namesOf(tree_->nodes); }

    const StateValue* findValue(std::u16string_view name) override {
        const auto found = tree_->values.find(name);
        return found == tree_->values.end() ? nullptr : &found->second;
    }

    Reference<IVaskPersistReader> openNode(std::u16string_view name) override {
        const auto found = tree_->nodes.find(name);
        return found == tree_->nodes.end() ? nullptr : offerState(found->second);
    }

    template <class Map>
    static std::vector<std::u16string> namesOf(const Map& entries) {
        std::vector<std::u16string> names;
        names.reserve(entries.size());
        for (const auto& [name, entry] : entries)
            names.push_back(name);
        return names;
    }

    std::shared_ptr<const StateTree> tree_;
};

} // namespace detail

// Gives a reader on a tree, which must not be changed from then on.
inline Reference<IVaskPersistReader> offerState(std::shared_ptr<const StateTree> tree) {
    auto source = Reference<StateSource>::share(new detail::StateTreeSource(std::move(tree)));
    return Reference<IVaskPersistReader>::adopt(source.detach()->pair());
}

} // namespace tarvo
