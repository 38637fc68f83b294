// The slots of types, items and libraries.
#include "companions/idl-parser/document.h"
#include "companions/idl-parser/model.h"
#include "companions/idl-parser/slots.h"
#include "companions/idl-parser/text.h"
#include "platform/text.h"
#include "tarvo/result.h"
#include "tarvo/text.hpp"

#include <algorithm>

namespace TARVO::idl {
namespace {

template <class Elements>
std::int32_t countOf(const Elements& elements) noexcept {
    return static_cast<std::int32_t>(elements.size()); // a file is too small for more
}

// Gives the pair of one of some types or items, which stay the document's.
template <class T, class Pair>
Result give(std::span<T* const> objects, std::uint32_t index, Pair** out) {
    if (out == nullptr)
        return RC_NULL_POINTER;
    *out = nullptr;
    if (index >= objects.size())
        return RC_NOT_AVAILABLE;
    *out = &objects[index]->pair;
    return RC_OK;
}

Result giveName(std::string_view name, IVaskString* out) {
    if (out == nullptr)
        return RC_NULL_POINTER;
    std::u16string text;
    platform::appendUtf16(name, text);
    return tarvo::setText(out, text);
}

Result giveDocumentation(std::string_view comment, IVaskString* out) {
    if (out == nullptr)
        return RC_NULL_POINTER;
    return tarvo::setText(out, comment.empty() ? std::u16string() : documentationText(comment));
}

} // namespace

constexpr IVaskIDLTypeTable kTypeTable = {
    .addReference = slot<&Type::addReference>,
    .release = slot<&Type::release>,
    .getKind = slot<&Type::getKind>,
    .getItem = slot<&Type::getItem>,
    .getArgumentCount = slot<&Type::getArgumentCount>,
    .getArgument = slot<&Type::getArgument>,
    .getTemplateArgumentIndex = slot<&Type::getTemplateArgumentIndex>,
};

constexpr IVaskIDLItemTable kItemTable = {
    .addReference = slot<&Item::addReference>,
    .release = slot<&Item::release>,
    .getKind = slot<&Item::getKind>,
    .getDocumentation = slot<&Item::getDocumentation>,
    .getAttribute = slot<&Item::getAttribute>,
    .getName = slot<&Item::getName>,
    .getUUID = slot<&Item::getUUID>,
    .getMemberCount = slot<&Item::getMemberCount>,
    .getMember = slot<&Item::getMember>,
    .getType = slot<&Item::getType>,
    .getValue = slot<&Item::getValue>,
    .getNumberOfTemplateArguments = slot<&Item::getNumberOfTemplateArguments>,
    .getTemplateArgumentName = slot<&Item::getTemplateArgumentName>,
    .getAttributeCount = slot<&Item::getAttributeCount>,
    .getAttributeName = slot<&Item::getAttributeName>,
    .getLibrary = slot<&Item::getLibrary>,
};

constexpr IVaskIDLLibraryTable kLibraryTable = {
    .addReference = slot<&Library::addReference>,
    .release = slot<&Library::release>,
    .getDocumentation = slot<&Library::getDocumentation>,
    .getAttributeCount = slot<&Library::getAttributeCount>,
    .getAttributeName = slot<&Library::getAttributeName>,
    .getAttribute = slot<&Library::getAttribute>,
    .reserved6 = nullptr,
    .getCategoryCount = slot<&Library::getCategoryCount>,
    .getCategory = slot<&Library::getCategory>,
    .reserved9To10 = {},
    .getEnumerationCount = slot<&Library::getEnumerationCount>,
    .getEnumeration = slot<&Library::getEnumeration>,
    .reserved13To14 = {},
    .getInterfaceCount = slot<&Library::getInterfaceCount>,
    .getInterface = slot<&Library::getInterface>,
    .reserved17To19 = {},
    .getName = slot<&Library::getName>,
    .getUUID = slot<&Library::getUUID>,
    .getSourcePath = slot<&Library::getSourcePath>,
};

// ---- attributes ----

Result Details::attributeName(std::uint32_t index, IVaskString* name) const {
    if (name == nullptr)
        return RC_NULL_POINTER;
    return index < attributes.size() ? giveName(attributes[index].name, name) : RC_NOT_AVAILABLE;
}

Result Details::attribute(IVaskString* name, IVaskString* value) const {
    if (name == nullptr || value == nullptr)
        return RC_NULL_POINTER;
    const std::u16string_view wanted = tarvo::viewOf(name);
    const auto found =
        std::find_if(attributes.begin(), attributes.end(), [=](const Attribute& attribute) {
            return std::equal(wanted.begin(), wanted.end(), attribute.name.begin(),
                              attribute.name.end());
        });
    if (found == attributes.end())
        return RC_NOT_AVAILABLE;
    return tarvo::setText(value, plainText(found->value));
}

// ---- types ----

void Type::addReference() const noexcept {
    document->addReference();
}

void Type::release() const noexcept {
    document->release();
}

Result Type::getItem(IVaskIDLItem** out) const {
    return give(std::span(&item, item == nullptr ? 0 : 1), 0, out);
}

std::int32_t Type::getArgumentCount() const noexcept {
    return countOf(arguments);
}

Result Type::getArgument(std::uint32_t index, IVaskIDLType** argument) const {
    return give(arguments, index, argument);
}

// ---- items ----

void Item::addReference() const noexcept {
    library->addReference();
}

void Item::release() const noexcept {
    library->release();
}

Result Item::getDocumentation(IVaskString* text) const {
    return giveDocumentation(documentation, text);
}

Result Item::getAttribute(IVaskString* attribute, IVaskString* out) const {
    return details->attribute(attribute, out);
}

Result Item::getName(IVaskString* out) const {
    return giveName(name, out);
}

std::int32_t Item::getMemberCount() const noexcept {
    return countOf(members);
}

Result Item::getMember(std::uint32_t index, IVaskIDLItem** member) const {
    return give(members, index, member);
}

Result Item::getType(IVaskIDLType** out) const {
    return give(std::span(&type, type == nullptr ? 0 : 1), 0, out);
}

std::int32_t Item::getNumberOfTemplateArguments() const noexcept {
    return countOf(details->templateArguments);
}

Result Item::getTemplateArgumentName(std::uint32_t index, IVaskString* out) const {
    if (out == nullptr)
        return RC_NULL_POINTER;
    const auto& names = details->templateArguments;
    return index < names.size() ? giveName(names[index], out) : RC_NOT_AVAILABLE;
}

std::int32_t Item::getAttributeCount() const noexcept {
    return countOf(details->attributes);
}

Result Item::getAttributeName(std::uint32_t index, IVaskString* out) const {
    return details->attributeName(index, out);
}

Result Item::getLibrary(IVaskIDLLibrary** out) const {
    return out == nullptr ? RC_NULL_POINTER : library->handOut(out);
}

// ---- libraries ----

Result Library::handOut(IVaskIDLLibrary** out) noexcept {
    addReference();
    *out = &pair;
    return RC_OK;
}

void Library::addReference() const noexcept {
    document->addReference();
}

void Library::release() const noexcept {
    document->release();
}

Result Library::getDocumentation(IVaskString* text) const {
    return giveDocumentation(documentation, text);
}

std::int32_t Library::getAttributeCount() const noexcept {
    return countOf(details->attributes);
}

Result Library::getAttributeName(std::uint32_t index, IVaskString* out) const {
    return details->attributeName(index, out);
}

Result Library::getAttribute(IVaskString* attribute, IVaskString* out) const {
    return details->attribute(attribute, out);
}

std::int32_t Library::getCategoryCount() const noexcept {
    return countOf(categories);
}

Result Library::getCategory(std::uint32_t index, IVaskIDLItem** item) const {
    return give(categories, index, item);
}

std::int32_t Library::getEnumerationCount() const noexcept {
    return countOf(enumerations);
}

Result Library::getEnumeration(std::uint32_t index, IVaskIDLItem** item) const {
    return give(enumerations, index, item);
}

std::int32_t Library::getInterfaceCount() const noexcept {
    return countOf(interfaces);
}

Result Library::getInterface(std::uint32_t index, IVaskIDLItem** item) const {
    return give(interfaces, index, item);
}

Result Library::getName(IVaskString* out) const {
    return giveName(name, out);
}

Result Library::getSourcePath(IVaskString* path) const {
    return path == nullptr ? RC_NULL_POINTER : tarvo::setText(path, file->path);
}

} // namespace TARVO::idl
