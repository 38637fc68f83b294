#include "companions/idl-parser/types.h"

#include "companions/idl-parser/text.h"

#include <string>
#include <unordered_map>

namespace TARVO::idl {
namespace {

// A name that was not found is an error by itself, and stands for any type.
bool isUnknown(const Type& type) {
    return type.kind == TARVO_IDL_INTERFACE_TYPE && type.item == nullptr;
}

bool isElement(const Type& type) {
    switch (type.kind) {
    case TARVO_IDL_REAL:
    case TARVO_IDL_INTEGER:
    case TARVO_IDL_BYTE:
    case TARVO_IDL_BOOLEAN:
    case TARVO_IDL_ENUMERATION_TYPE:
    case TARVO_IDL_STRING:
    case TARVO_IDL_VALUE:
        return true;
    default:
        return isUnknown(type);
    }
}

bool isMethodResult(const Type& type) {
    switch (type.kind) {
    case TARVO_IDL_VOID:
    case TARVO_IDL_RESULT:
    case TARVO_IDL_INTEGER:
    case TARVO_IDL_UNSIGNED:
    case TARVO_IDL_BYTE:
    case TARVO_IDL_BOOLEAN:
    case TARVO_IDL_REAL:
    case TARVO_IDL_ENUMERATION_TYPE:
        return true;
    default:
        return isUnknown(type);
    }
}

void resolveName(const TypeUse& use, const Declarations& declarations, Errors& errors) {
    Item* item = declarations.find(*use.library, use.text);
    if (item == nullptr)
        return;
    Type& type = *use.type;
    type.item = item;
    const SourceFile& file = *use.library->file;
    if (item->kind == TARVO_IDL_CATEGORY)
        errors.add(file, use.text, inQuotes(use.text) + " is a category and no type");
    else if (item->kind == TARVO_IDL_ENUMERATION)
        type.kind = TARVO_IDL_ENUMERATION_TYPE;
    const std::int32_t expected = item->getNumberOfTemplateArguments();
    if (type.getArgumentCount() != expected)
        errors.add(file, use.text,
                   inQuotes(use.text) + " takes " + std::to_string(expected) +
                       " template arguments and not " + std::to_string(type.getArgumentCount()));
}

void checkArray(const TypeUse& use, Errors& errors) {
    if (!isElement(*use.type->arguments.front()))
        errors.add(*use.library->file, use.text,
                   "there are arrays of real, integer, byte, boolean, string, value and of "
                   "enumerations alone");
}

void checkMethod(const Item& method, Errors& errors) {
    const SourceFile& file = *method.library->file;
    if (!isMethodResult(*method.type))
        errors.add(file, method.name,
                   inQuotes(method.name) + " can't have such a result: it is void, result, a "
                                           "number or of an enumeration, and all else goes out "
                                           "through parameters");
    for (const Item* parameter : method.members)
        if (parameter->value == TARVO_IDL_INOUT && parameter->type->isInterface() &&
            !isUnknown(*parameter->type))
            errors.add(file, parameter->name,
                       inQuotes(parameter->name) + " is an interface, which goes in or out");
}

void checkInterface(const Item& interface, Errors& errors) {
    if (interface.type != nullptr && !interface.type->isInterface())
        errors.add(*interface.library->file, interface.name,
                   "the base of " + inQuotes(interface.name) + " is no interface");
    for (const Item* method : interface.members)
        checkMethod(*method, errors);
}

// Walks from each interface to its bases, over ground that no walk has covered before. One that
// comes to its own steps is in a circle.
class BaseWalk {
  public:
    explicit BaseWalk(Errors& errors) noexcept : errors_(errors) {}

    void walkFrom(const Item& interface) {
        ++walk_;
        for (const Item* item = &interface; item != nullptr; item = baseOf(*item)) {
            const auto [place, isNew] = walkOf_.emplace(item, walk_);
            if (isNew)
                continue;
            if (place->second == walk_)
                errors_.add(*item->library->file, item->name,
                            inQuotes(item->name) + " is among its own bases");
            return;
        }
    }

  private:
    static const Item* baseOf(const Item& item) {
        return item.type == nullptr ? nullptr : item.type->item;
    }

    Errors& errors_;
    std::size_t walk_ = 0;
    std::unordered_map<const Item*, std::size_t> walkOf_;
};

} // namespace

void resolveTypes(std::span<const TypeUse> uses, const Declarations& declarations, Errors& errors) {
    for (const TypeUse& use : uses)
        if (use.type->kind == TARVO_IDL_ARRAY)
            checkArray(use, errors);
        else
            resolveName(use, declarations, errors);
}

void checkInterfaces(const Document& document, Errors& errors) {
    BaseWalk walk(errors);
    for (const auto& file : document.files())
        for (const Library* library : file->libraries)
            for (const Item* interface : library->interfaces) {
                checkInterface(*interface, errors);
                walk.walkFrom(*interface);
            }
}

} // namespace TARVO::idl
