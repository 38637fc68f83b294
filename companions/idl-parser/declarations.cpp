#include "companions/idl-parser/declarations.h"

#include "companions/idl-parser/text.h"

#include <algorithm>
#include <string>

namespace TARVO::idl {
namespace {

// Of names of one file, reports those that another before them is equal to.
void reportDuplicates(std::vector<std::string_view>& names, const SourceFile& file,
                      Errors& errors) {
    if (names.size() < 2)
        return;
    std::sort(names.begin(), names.end(), [](std::string_view left, std::string_view right) {
        const int order = left.compare(right);
        return order == 0 ? left.data() < right.data() : order < 0;
    });
    for (std::size_t i = 1; i < names.size(); ++i)
        if (names[i] == names[i - 1])
            errors.add(file, names[i], inQuotes(names[i]) + " is defined before in this list");
}

} // namespace

Declarations::Declarations(const Document& document, Errors& errors) : errors_(errors) {
    for (const auto& file : document.files())
        for (Library* library : file->libraries)
            enter(*library);
}

void Declarations::enter(Library& library) {
    if (!libraries_.emplace(library.name, &library).second)
        errors_.add(*library.file, library.name,
                    "there is another library " + inQuotes(library.name));
    enterIdentifier(*library.file, library.details->uuid, library.name);
    for (const auto items : {library.categories, library.enumerations, library.interfaces})
        for (Item* item : items)
            enter(*item);
}

void Declarations::enter(Item& item) {
    const SourceFile& file = *item.library->file;
    if (isBuiltInType(item.name))
        errors_.add(file, item.name, inQuotes(item.name) + " is a type of the language's own");
    if (!items_.emplace(Key{item.library, item.name}, &item).second)
        errors_.add(file, item.name,
                    inQuotes(item.name) + " is the name of something else in this library");
    itemsByName_.emplace(item.name, &item);
    enterIdentifier(file, item.details->uuid, item.name);
    checkMembers(item);
}

void Declarations::enterIdentifier(const SourceFile& file, const UUID& uuid,
                                   std::string_view name) {
    const auto [place, isNew] = names_.emplace(uuid, name);
    if (!isNew)
        errors_.add(file, name,
                    inQuotes(name) + " has the identifier of " + inQuotes(place->second));
}

void Declarations::checkMembers(const Item& item) {
    const SourceFile& file = *item.library->file;
    const auto& arguments = item.details->templateArguments;
    scratch_.assign(arguments.begin(), arguments.end());
    reportDuplicates(scratch_, file, errors_);
    for (const std::string_view argument : arguments)
        if (isBuiltInType(argument))
            errors_.add(file, argument, inQuotes(argument) + " is a type of the language's own");

    scratch_.clear();
    for (const Item* member : item.members)
        scratch_.push_back(member->name);
    reportDuplicates(scratch_, file, errors_);

    for (const Item* method : item.members) {
        scratch_.clear();
        for (const Item* parameter : method->members)
            scratch_.push_back(parameter->name);
        reportDuplicates(scratch_, file, errors_);
    }
}

Item* Declarations::find(const Library& user, std::string_view name) const {
    const std::size_t point = name.rfind('.');
    if (point != std::string_view::npos)
        return findQualified(user, name.substr(0, point), name.substr(point + 1));
    const auto own = items_.find({&user, name});
    return own != items_.end() ? own->second : findAround(user, name);
}

Item* Declarations::findQualified(const Library& user, std::string_view library,
                                  std::string_view name) const {
    const auto found = libraries_.find(library);
    if (found == libraries_.end() || !user.file->sees(*found->second)) {
        errors_.add(*user.file, library,
                    "there is no library " + inQuotes(library) +
                        " in this file or in those that it imports");
        return nullptr;
    }
    const auto item = items_.find({found->second, name});
    if (item != items_.end())
        return item->second;
    errors_.add(*user.file, name, "the library " + inQuotes(library) + " has no " + inQuotes(name));
    return nullptr;
}

Item* Declarations::findAround(const Library& user, std::string_view name) const {
    Item* found = nullptr;
    const auto [first, last] = itemsByName_.equal_range(name);
    for (auto candidate = first; candidate != last; ++candidate) {
        Item* item = candidate->second;
        if (!user.file->sees(*item->library))
            continue;
        if (found != nullptr) {
            errors_.add(*user.file, name,
                        inQuotes(name) + " is in more than one library: write " +
                            std::string(found->library->name) + "." + std::string(name) + " or " +
                            std::string(item->library->name) + "." + std::string(name));
            return nullptr;
        }
        found = item;
    }
    if (found == nullptr)
        errors_.add(*user.file, name,
                    "there is no " + inQuotes(name) + " in this file or in those that it imports");
    return found;
}

} // namespace TARVO::idl
