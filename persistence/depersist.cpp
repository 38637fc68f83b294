// The two exports that bring state that was saved through COM into a component. State that bears
// the marks of the transition form is decoded here; any other reaches the component as it is.
#include "core/slot.h"
#include "persistence/bag_decoder.h"
#include "persistence/copy_reader.h"
#include "persistence/format_names.h"
#include "persistence/persist_reader.h"
#include "persistence/source_reader.h"
#include "persistence/stream_decoder.h"
#include "tarvo/identifiers.h"
#include "tarvo/query.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace TARVO {

namespace {

using Node = TARVOPersistenceNode;
using Table = IVaskPersistReaderTable;
using tarvo::Reference;

bool isKnownTransition(std::uint32_t sourceKind, std::uint32_t targetKind) {
    return sourceKind == TARVO_PERSIST_SOURCE_COM && targetKind == TARVO_PERSIST_TARGET_PMC;
}

bool isForm(std::u16string_view text) {
    return text == kStreamForm || text == kBagForm;
}

// Another interface of an object from outside; null if it hasn't got it, or if there is no object.
template <class Interface>
Reference<Interface> query(IVaskInterface* object, const UUID& interfaceId) {
    return object != nullptr ? tarvo::query<Interface>(object, interfaceId) : nullptr;
}

std::u16string readText(IVaskPersistReader* reader, tarvo::ConstantString& name) {
    tarvo::String text;
    callReader(reader, &Table::GetString, name.pair(), text.pair());
    return std::move(text.text());
}

bool contains(const tarvo::StringArray& names, const tarvo::ConstantString& wanted) {
    return std::ranges::any_of(
        names.strings(), [&](const tarvo::String& name) { return name.text() == wanted.text(); });
}

Reference<IVaskInterface> readerOn(Reference<Node> root) {
    auto reader = TarvoPersistReader::make({}, std::move(root));
    return Reference<IVaskInterface>::adopt(reader.detach()->pair());
}

void setForm(Node& root, std::u16string_view form) {
    root.addValue(transitionFormatName.text()).content.emplace<TARVO_PERSIST_STRING>(form);
}

// Whether the reader says by itself that it shows the transition form.
bool isInTransitionForm(IVaskPersistReader* reader) {
    tarvo::StringArray names;
    callReader(reader, &Table::ValueNames, names.pair());
    return std::ranges::any_of(names.strings(), [&](const tarvo::String& name) {
        return name.text() == transitionFormatName.text() &&
               isForm(readText(reader, transitionFormatName));
    });
}

// What the state was saved as, or an empty text if it doesn't say.
std::u16string comTypeOf(IVaskPersistReader* reader) {
    tarvo::StringArray names;
    callReader(reader, &Table::NodeNames, names.pair());
    if (!contains(names, markerNodeName))
        return {};
    const auto marker = nodeOf(reader, markerNodeName.pair());
    tarvo::StringArray valueNames;
    callReader(marker.get(), &Table::ValueNames, valueNames.pair());
    return contains(valueNames, comTypeName) ? readText(marker.get(), comTypeName)
                                             : std::u16string();
}

Reference<Node> streamInTransitionForm(IVaskPersistReader* reader) {
    auto root = Node::make();
    setForm(*root, kStreamForm);
    auto& data =
        root->addValue(transitionDataName.text()).content.emplace<TARVO_PERSIST_BYTE_ARRAY>();
    callReader(reader, &Table::GetArrayByte, dataName.pair(), data.pair());
    return root;
}

Reference<Node> bagInTransitionForm(IVaskPersistReader* reader) {
    auto root = Node::make();
    copyReader(*root, reader);
    root->nodes.clear();
    setForm(*root, kBagForm);
    return root;
}

// The state in transition form; null for state of no known form.
Reference<IVaskInterface> toTransitionForm(IVaskInterface* state) {
    const auto reader = query<IVaskPersistReader>(state, kIVaskPersistReaderId);
    if (isInTransitionForm(reader.get()))
        return Reference<IVaskInterface>::share(state);
    const std::u16string comType = comTypeOf(reader.get());
    if (comType == kStreamForm)
        return readerOn(streamInTransitionForm(reader.get()));
    if (comType == kBagForm)
        return readerOn(bagInTransitionForm(reader.get()));
    return nullptr;
}

// Runs what must not fail; whatever it raises means that the state isn't in the transition form.
template <class Read>
void requireTransitionForm(Read&& read) {
    try {
        read();
    } catch (...) {
        throw vask_link_error(RC_INVALID_ARGUMENT);
    }
}

Reference<Node> decodeStreamState(IVaskPersistReader* reader) {
    tarvo::ScalarArray<std::uint8_t> data;
    requireTransitionForm(
        [&] { callReader(reader, &Table::GetArrayByte, transitionDataName.pair(), data.pair()); });
    const auto record = nodeRecordOf(data.elements());
    return record ? decodeStream(*record) : nullptr;
}

bool isDecodableBag(IVaskPersistReader* bag) {
    try {
        std::int32_t version = 0;
        callReader(bag, &Table::GetInteger, bagVersionName.pair(), &version);
        return version > 0;
    } catch (...) {
        return false;
    }
}

Reference<Node> decodeBagState(IVaskPersistReader* reader) {
    Reference<IVaskPersistReader> bag;
    requireTransitionForm([&] { bag = nodeOf(reader, dataName.pair()); });
    return isDecodableBag(bag.get()) ? decodeBag(bag.get()) : nullptr;
}

// The tree that the state holds; null if it is the component's own.
Reference<Node> decodeState(IVaskPersistReader* reader) {
    std::u16string form;
    requireTransitionForm([&] { form = readText(reader, transitionFormatName); });
    if (form == kStreamForm)
        return decodeStreamState(reader);
    if (form == kBagForm)
        return decodeBagState(reader);
    throw vask_link_error(RC_INVALID_ARGUMENT);
}

Result loadInto(IVaskInterface* pmc, IVaskInterface* state) {
    const auto source = query<IVaskPersistReader>(state, kIVaskPersistReaderId);
    if (!source)
        return RC_NO_INTERFACE;
    Reference<TarvoPersistReader> decoded;
    if (auto root = decodeState(source.get()))
        decoded = TarvoPersistReader::make({}, std::move(root));
    const auto component = query<IVaskPersist>(pmc, kIVaskPersistId);
    if (!component)
        return RC_NO_INTERFACE;
    require(component->table->load(component->me, decoded ? decoded->readerPair() : source.get()),
            reinterpret_cast<IVaskInterface*>(component.get()));
    return RC_OK;
}

} // namespace

} // namespace TARVO

TarvoResult tarvoDepersistFromTransitionFormat(IVaskInterface* reader, IVaskInterface** out,
                                               uint32_t sourceKind, uint32_t targetKind) {
    if (!TARVO::isKnownTransition(sourceKind, targetKind) || reader == nullptr)
        return RC_OK;
    try {
        if (auto transition = TARVO::toTransitionForm(reader))
            *out = transition.detach();
    } catch (...) { // a failure shows in `out` alone
    }
    return RC_OK;
}

TarvoResult tarvoDepersistPMCFromTransitionFormat(IVaskInterface* pmc, IVaskInterface* reader,
                                                  uint32_t sourceKind, uint32_t targetKind) {
    if (!TARVO::isKnownTransition(sourceKind, targetKind))
        return RC_INVALID_ARGUMENT;
    return TARVO::guardedCall([=] { return TARVO::loadInto(pmc, reader); });
}
