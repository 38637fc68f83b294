// What is defined in all files of a definition, and where it can be seen: a name belongs to its
// library, and can be used in the library itself, in the others of its file, and in files that
// import this one.
#pragma once

#include "companions/idl-parser/document.h"
#include "companions/idl-parser/errors.h"

#include <cstddef>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace TARVO::idl {

class Declarations {
  public:
    // Enters all there is, and reports names and identifiers that are taken.
    Declarations(const Document& document, Errors& errors);

    // Finds an item by its name, which may have that of its library before it. Null if there is
    // none, or too many, which is reported.
    Item* find(const Library& user, std::string_view name) const;

  private:
    struct Key {
        bool operator==(const Key&) const = default;

        const Library* library;
        std::string_view name;
    };
    struct HashOfKey {
        std::size_t operator()(const Key& key) const noexcept {
            return std::hash<std::string_view>()(key.name) ^
                   std::hash<const void*>()(key.library) * 31;
        }
    };

    void enter(Library& library);
    void enter(Item& item);
    void enterIdentifier(const SourceFile& file, const UUID& uuid, std::string_view name);
    void checkMembers(const Item& item);
    Item* findQualified(const Library& user, std::string_view library, std::string_view name) const;
    Item* findAround(const Library& user, std::string_view name) const;

    Errors& errors_;
    std::unordered_map<std::string_view, const Library*> libraries_;
    std::unordered_map<Key, Item*, HashOfKey> items_;
    std::unordered_multimap<std::string_view, Item*> itemsByName_;
    std::unordered_map<tarvo::UUID, std::string_view> names_; // of what has an identifier
    std::vector<std::string_view> scratch_;
};

} // namespace TARVO::idl
