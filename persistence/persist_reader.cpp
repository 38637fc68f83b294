#include "persistence/persist_reader.h"

#include "core/error_object.h"
#include "core/slot.h"
#include "tarvo/identifiers.h"

#include <cstring>
#include <span>
#include <utility>
#include <variant>

namespace TARVO {

namespace {

std::u16string_view textOf(const IVaskString* name) {
    return name == nullptr ? std::u16string_view() : tarvo::viewOf(name);
}

// The value of a name, or null.
const TARVOPersistenceValue* find(const TARVOPersistenceNode& node, const IVaskString* name) {
    const auto found = node.values.find(textOf(name));
    return found == node.values.end() ? nullptr : &found->second;
}

// How what a value holds goes out, by the kind of its target.
template <class Number>
Result give(Number number, Number* target) {
    *target = number;
    return RC_OK;
}

Result give(const tarvo::String& text, IVaskString* target) {
    return tarvo::setText(target, text.text());
}

Result give(const VaskValueImpl& value, IVaskValue* target) {
    return tarvo::setValue(target, value);
}

template <class Element>
Result give(const tarvo::ScalarArray<Element>& array, IVaskArray* target) {
    return tarvo::setElements<Element>(target, array.elements());
}

Result give(const tarvo::StringArray& array, IVaskArray* target) {
    return tarvo::setItems<IVaskString>(
        target, array.strings(),
        [](IVaskString* item, const tarvo::String& string) { return give(string, item); });
}

Result give(const tarvo::ObjectArray<VaskValueImpl>& array, IVaskArray* target) {
    return tarvo::setItems<IVaskValue>(
        target, array.elements(),
        [](IVaskValue* item, const VaskValueImpl& value) { return give(value, item); });
}

template <class Map>
Result giveNames(const Map& entries, IVaskArray* target) {
    if (target == nullptr)
        return RC_NULL_POINTER;
    // Targets are used to being asked for what they hold before they are filled.
    void* ignoredElements = nullptr;
    std::uint32_t ignoredCount = 0;
    target->table->get(target->me, &ignoredElements, &ignoredCount);
    require(tarvo::setItems<IVaskString>(target, entries, [](IVaskString* item, const auto& entry) {
        return tarvo::setText(item, entry.first);
    }));
    return RC_OK;
}

} // namespace

constinit const IVaskInterfaceTable TarvoPersistReader::kTable = {
    .addReference = slot<TarvoPersistReader, &TarvoPersistReader::addReference>,
    .release = slot<TarvoPersistReader, &TarvoPersistReader::release>,
    .queryInterface = slot<TarvoPersistReader, &TarvoPersistReader::queryInterface>,
    .getLastError = slot<TarvoPersistReader, &TarvoPersistReader::getLastError>,
};

constinit const IVaskPersistReaderTable TarvoPersistReader::kReaderTable = {
    .addReference = slot<TarvoPersistReader, &TarvoPersistReader::addReference>,
    .release = slot<TarvoPersistReader, &TarvoPersistReader::release>,
    .queryInterface = slot<TarvoPersistReader, &TarvoPersistReader::queryInterface>,
    .getLastError = slot<TarvoPersistReader, &TarvoPersistReader::getLastError>,
    .ValueNames = slot<TarvoPersistReader, &TarvoPersistReader::valueNames,
                       u"IVaskPersistReader::ValueNames">,
    .GetValueType = slot<TarvoPersistReader, &TarvoPersistReader::getValueType,
                         u"IVaskPersistReader::GetValueType">,
    .GetReal = slot<TarvoPersistReader, &TarvoPersistReader::getValue<TARVO_PERSIST_REAL, double>,
                    u"IVaskPersistReader::GetReal">,
    .GetInteger =
        slot<TarvoPersistReader, &TarvoPersistReader::getValue<TARVO_PERSIST_INTEGER, std::int32_t>,
             u"IVaskPersistReader::GetInteger">,
    .GetBoolean = slot<TarvoPersistReader,
                       &TarvoPersistReader::getValue<TARVO_PERSIST_BOOLEAN, std::uint32_t>,
                       u"IVaskPersistReader::GetBoolean">,
    .GetString =
        slot<TarvoPersistReader, &TarvoPersistReader::getValue<TARVO_PERSIST_STRING, IVaskString>,
             u"IVaskPersistReader::GetString">,
    .GetEnumeration = slot<TarvoPersistReader,
                           &TarvoPersistReader::getValue<TARVO_PERSIST_ENUMERATION, std::uint32_t>,
                           u"IVaskPersistReader::GetEnumeration">,
    .GetValue =
        slot<TarvoPersistReader, &TarvoPersistReader::getValue<TARVO_PERSIST_VALUE, IVaskValue>,
             u"IVaskPersistReader::GetValue">,
    .GetArrayReal = slot<TarvoPersistReader,
                         &TarvoPersistReader::getValue<TARVO_PERSIST_REAL_ARRAY, IVaskArray>,
                         u"IVaskPersistReader::GetArrayReal">,
    .GetArrayInteger = slot<TarvoPersistReader,
                            &TarvoPersistReader::getValue<TARVO_PERSIST_INTEGER_ARRAY, IVaskArray>,
                            u"IVaskPersistReader::GetArrayInteger">,
    .GetArrayBoolean = slot<TarvoPersistReader,
                            &TarvoPersistReader::getValue<TARVO_PERSIST_BOOLEAN_ARRAY, IVaskArray>,
                            u"IVaskPersistReader::GetArrayBoolean">,
    .GetArrayString = slot<TarvoPersistReader,
                           &TarvoPersistReader::getValue<TARVO_PERSIST_STRING_ARRAY, IVaskArray>,
                           u"IVaskPersistReader::GetArrayString">,
    .GetArrayEnumeration =
        slot<TarvoPersistReader,
             &TarvoPersistReader::getValue<TARVO_PERSIST_ENUMERATION_ARRAY, IVaskArray>,
             u"IVaskPersistReader::GetArrayEnumeration">,
    .GetArrayValue = slot<TarvoPersistReader,
                          &TarvoPersistReader::getValue<TARVO_PERSIST_VALUE_ARRAY, IVaskArray>,
                          u"IVaskPersistReader::GetArrayValue">,
    .GetArrayByte = slot<TarvoPersistReader,
                         &TarvoPersistReader::getValue<TARVO_PERSIST_BYTE_ARRAY, IVaskArray>,
                         u"IVaskPersistReader::GetArrayByte">,
    .NodeNames =
        slot<TarvoPersistReader, &TarvoPersistReader::nodeNames, u"IVaskPersistReader::NodeNames">,
    .GetNode =
        slot<TarvoPersistReader, &TarvoPersistReader::getNode, u"IVaskPersistReader::GetNode">,
};

constinit const IVaskIdentificationTable TarvoPersistReader::kIdentificationTable = {
    .addReference = slot<TarvoPersistReader, &TarvoPersistReader::addReference>,
    .release = slot<TarvoPersistReader, &TarvoPersistReader::release>,
    .queryInterface = slot<TarvoPersistReader, &TarvoPersistReader::queryInterface>,
    .getLastError = slot<TarvoPersistReader, &TarvoPersistReader::getLastError>,
    .getComponentName = slot<TarvoPersistReader, &TarvoPersistReader::getComponentName,
                             u"IVaskIdentification::ComponentName">,
    .setComponentName = slot<TarvoPersistReader, &TarvoPersistReader::refuseText>,
    .getComponentDescription =
        slot<TarvoPersistReader, &TarvoPersistReader::getComponentDescription,
             u"IVaskIdentification::ComponentDescription">,
    .setComponentDescription = slot<TarvoPersistReader, &TarvoPersistReader::refuseText>,
};

tarvo::Reference<TarvoPersistReader>
TarvoPersistReader::make(std::u16string_view name, tarvo::Reference<TARVOPersistenceNode> node) {
    return tarvo::Reference<TarvoPersistReader>::share(
        new TarvoPersistReader(name, std::move(node)));
}

void TarvoPersistReader::recordLastError(std::u16string_view scope,
                                         const vask_link_error& exception) {
    recordError(lastError_, description(), scope, exception);
}

Result TarvoPersistReader::queryInterface(const UUID* interfaceId,
                                          IVaskInterface** interfaceReference) noexcept {
    if (interfaceReference == nullptr)
        return RC_NULL_POINTER;
    *interfaceReference = nullptr;
    if (interfaceId == nullptr)
        return RC_NULL_POINTER;
    const auto is = [&](const UUID& id) {
        return std::memcmp(interfaceId, &id, sizeof id) == 0;
    };
    if (is(kIVaskInterfaceId))
        *interfaceReference = &pair_;
    else if (is(kIVaskPersistReaderId))
        *interfaceReference = reinterpret_cast<IVaskInterface*>(&reader_);
    else if (is(kIVaskIdentificationId))
        *interfaceReference = reinterpret_cast<IVaskInterface*>(&identification_);
    else
        return RC_NO_INTERFACE;
    addReference();
    return RC_OK;
}

Result TarvoPersistReader::getLastError(IVaskError** error) noexcept {
    if (error == nullptr)
        return RC_NULL_POINTER;
    if (!lastError_)
        return RC_NOT_AVAILABLE;
    *error = lastError_.detach();
    return RC_OK;
}

Result TarvoPersistReader::valueNames(IVaskArray* names) {
    return giveNames(node_->values, names);
}

Result TarvoPersistReader::getValueType(IVaskString* name, std::uint32_t* kind) {
    if (kind == nullptr)
        return RC_NULL_POINTER;
    const TARVOPersistenceValue* const value = find(*node_, name);
    if (value == nullptr)
        return RC_NOT_AVAILABLE;
    *kind = value->type();
    return RC_OK;
}

template <std::size_t Kind, class Target>
Result TarvoPersistReader::getValue(IVaskString* name, Target* target) {
    if (target == nullptr)
        return RC_NULL_POINTER;
    const TARVOPersistenceValue* const value = find(*node_, name);
    if (value == nullptr)
        return RC_NOT_AVAILABLE;
    const auto* const content = std::get_if<Kind>(&value->content);
    if (content == nullptr)
        return RC_BAD_DATA;
    require(give(*content, target));
    return RC_OK;
}

Result TarvoPersistReader::nodeNames(IVaskArray* names) {
    return giveNames(node_->nodes, names);
}

Result TarvoPersistReader::getNode(IVaskString* name, IVaskPersistReader** node) {
    if (node == nullptr)
        return RC_NULL_POINTER;
    const auto child = node_->nodes.find(textOf(name));
    if (child == node_->nodes.end())
        return RC_NOT_AVAILABLE;
    *node = make(child->first, child->second).detach()->readerPair();
    return RC_OK;
}

Result TarvoPersistReader::getComponentName(IVaskString* name) {
    if (name == nullptr)
        return RC_NULL_POINTER;
    require(tarvo::setText(name, name_));
    return RC_OK;
}

Result TarvoPersistReader::getComponentDescription(IVaskString* description) {
    if (description == nullptr)
        return RC_NULL_POINTER;
    require(tarvo::setText(description, this->description()));
    return RC_OK;
}

// It is also what a last error tells as its source.
std::u16string TarvoPersistReader::description() const {
    return u"Persistence reader node \"" + name_ + u'"';
}

} // namespace TARVO
