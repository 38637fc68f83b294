// What the tests of saved state share: a component that takes state, trees as one line of text, and
// a reader that tells of the calls it gets.
#pragma once

#include "persistence/copy_reader.h"
#include "tests/support/rich_values.h"
#include "tests/support/tarvo_library.h"
#include "tool/stream_writer.h"

#include <tarvo/tarvo.hpp>

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace tests {

using tarvo::Reference;
using tarvo::StateReader;
using tarvo::StateTree;
using Bytes = std::vector<std::uint8_t>;

// ---- Trees as text ---------------------------------------------------------------------------

inline std::string shown(double real) {
    return real != real ? "nan"
                        : std::to_string(real).substr(0, std::to_string(real).find('.') + 2);
}
inline std::string shown(std::int32_t number) {
    return std::to_string(number);
}
inline std::string shown(std::uint32_t number) {
    return std::to_string(number);
}
inline std::string shown(std::uint8_t number) {
    return std::to_string(number);
}
inline std::string shown(const tarvo::String& text) {
    return narrow(text.text());
}
inline std::string shown(const TARVO::VaskValueImpl& value) {
    if (value.text())
        return "string:" + narrow(*value.text());
    if (value.integer())
        return "int:" + shown(*value.integer());
    if (value.boolean())
        return "bool:" + shown(*value.boolean());
    return value.real() ? "real:" + shown(*value.real()) : "empty";
}
template <class Array>
requires requires(const Array& array) {
    array.elements();
}
std::string shown(const Array& array) {
    std::string all;
    for (const auto& element : array.elements())
        all.append(all.empty() ? "" : ",").append(shown(element));
    return "[" + all + "]";
}

// "{name=kind value; node={...}}", in the order of the names.
inline std::string shown(const TARVO::TARVOPersistenceNode& node) {
    std::vector<std::string> parts;
    for (const auto& [name, value] : node.values)
        parts.push_back(
            narrow(name) + "=" + narrow(TARVO::textOfKind(value.type())) + " " +
            std::visit([](const auto& content) { return shown(content); }, value.content));
    for (const auto& [name, child] : node.nodes)
        parts.push_back(narrow(name) + "=" + shown(*child));
    std::ranges::sort(parts);
    std::string all;
    for (const std::string& part : parts)
        all.append(all.empty() ? "" : "; ").append(part);
    return "{" + all + "}";
}

inline Reference<TARVO::TARVOPersistenceNode> copied(IVaskPersistReader* reader) {
    auto node = TARVO::TARVOPersistenceNode::make();
    TARVO::copyReader(*node, reader);
    return node;
}

inline std::string shown(IVaskPersistReader* reader) {
    return shown(*copied(reader));
}

inline Bytes payloadOf(const std::shared_ptr<StateTree>& tree) {
    return tool::encodeStream(*copied(tarvo::offerState(tree).get()));
}

// A tree with every kind of value in it.
inline std::shared_ptr<StateTree> richTree() {
    auto tree = std::make_shared<StateTree>();
    tree->values = richValues();
    tree->addNode(u"real").values[u"x"] = 1;
    tree->addNode(u"").addNode(u"deep").values[u""] = std::vector<double>();
    return tree;
}

constexpr const char* kRichText =
    "{={deep={=real[] []}}; bool=bool 1; bools=bool[] [1,0]; bytes=byte[] [0,255]; enum=enum 9; "
    "enums=enum[] [3]; int=int -5; ints=int[] [1,-2]; real=real -1.5; real={x=int 1}; "
    "reals=real[] [1.0,2.0]; string=string text; strings=string[] [one,]; "
    "value=value string:inner; values=value[] [string:inner,bool:7,empty]}";

// ---- A component -----------------------------------------------------------------------------

// An object on the stack that takes state; its references must have been given back when it goes.
class Component {
  public:
    explicit Component(std::function<TarvoResult(IVaskPersistReader*)> load = nullptr)
        : load_(std::move(load)) {}
    ~Component() { EXPECT_EQ(references_, 0); }

    IVaskInterface* pair() { return reinterpret_cast<IVaskInterface*>(&pair_); }
    std::vector<std::string> log;
    bool hasPersist = true;

    // What the last `load` got, held until it is asked for again.
    Reference<IVaskPersistReader> loaded;

  private:
    static Component& of(void* me) { return *static_cast<Component*>(me); }

    static const IVaskPersistTable kTable;

    IVaskPersist pair_{this, &kTable};
    std::function<TarvoResult(IVaskPersistReader*)> load_;
    int references_ = 0;
};

inline constinit const IVaskPersistTable Component::kTable = {
    .addReference = [](void* me) { ++of(me).references_; },
    .release = [](void* me) { --of(me).references_; },
    .queryInterface = [](void* me, const TarvoUUID* id, IVaskInterface** out) -> TarvoResult {
        of(me).log.emplace_back("queryInterface");
        *out = nullptr;
        if (!of(me).hasPersist || tarvo::UUID(*id) != tarvo::UUID(kIVaskPersistId))
            return RC_NO_INTERFACE;
        ++of(me).references_;
        *out = of(me).pair();
        return RC_OK;
    },
    .getLastError = [](void* me, IVaskError**) -> TarvoResult {
        of(me).log.emplace_back("getLastError");
        return RC_NOT_AVAILABLE;
    },
    .reserved4 = [] { ADD_FAILURE() << "reserved4 was called"; },
    .load = [](void* me, IVaskPersistReader* reader) -> TarvoResult {
        of(me).log.emplace_back("load");
        of(me).loaded = Reference<IVaskPersistReader>::share(reader);
        return of(me).load_ ? of(me).load_(reader) : TarvoResult{RC_OK};
    },
};

inline TarvoResult depersist(Component& component, IVaskPersistReader* reader) {
    return TARVO_CALL(tarvoDepersistPMCFromTransitionFormat)(
        component.pair(), reinterpret_cast<IVaskInterface*>(reader), 1, 2);
}

// State in the transition form of a stream.
inline Reference<IVaskPersistReader> streamState(Bytes payload) {
    auto tree = std::make_shared<StateTree>();
    tree->values[u"TransitionFormat"] = u"Stream";
    tree->values[u"data"] = std::move(payload);
    return tarvo::offerState(tree);
}

// The library's own reader on a tree.
inline Reference<IVaskPersistReader> decodedReader(const std::shared_ptr<StateTree>& tree) {
    Component component;
    EXPECT_EQ(depersist(component, streamState(payloadOf(tree)).get()), RC_OK);
    return component.loaded;
}

} // namespace tests
