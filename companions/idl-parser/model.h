// What a definition says once it has been read, and at the same time the objects that callers see:
// each struct begins with its interface pair, and its member functions are the slots. All of it is
// made by the parser, completed by the checks behind it, and never changes after that. It stands in
// the memory of one document, which goes as a whole: no destructor walks through it, however deep
// it is.
#pragma once

#include "companions/idl-parser/source_file.h"
#include "tarvo/base.h"
#include "tarvo/idl_parser.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace TARVO::idl {

class Document;
struct Item;

extern const IVaskIDLTypeTable kTypeTable;
extern const IVaskIDLItemTable kItemTable;
extern const IVaskIDLLibraryTable kLibraryTable;

struct Attribute {
    std::string_view name;
    std::string_view value; // as it is written, without quotes; empty if there is none
};

// What stands before and behind the name of a declaration, and most declarations have not.
struct Details {
    Result attributeName(std::uint32_t index, IVaskString* name) const;
    Result attribute(IVaskString* name, IVaskString* value) const;

    UUID uuid = {};
    bool hasIdentifier = false;            // whether one is written, be it right or wrong
    std::span<const Attribute> attributes; // but for the identifier
    std::span<const std::string_view> templateArguments;
};

inline constexpr Details kNoDetails = {};

struct Type {
    Type(Document& owner, std::int32_t kindOfType) noexcept
        : pair{this, &kTypeTable}, document(&owner), kind(kindOfType) {}
    Type(const Type&) = delete;
    Type& operator=(const Type&) = delete;
    ~Type() = default;

    bool isInterface() const noexcept {
        return kind == TARVO_IDL_INTERFACE_TYPE || kind == TARVO_IDL_TARVO_BASE ||
               kind == TARVO_IDL_VASK_INTERFACE;
    }

    void addReference() const noexcept;
    void release() const noexcept;
    std::int32_t getKind() const noexcept { return kind; }
    Result getItem(IVaskIDLItem** out) const;
    std::int32_t getArgumentCount() const noexcept;
    Result getArgument(std::uint32_t index, IVaskIDLType** argument) const;
    std::int32_t getTemplateArgumentIndex() const noexcept { return templateArgumentIndex; }

    IVaskIDLType pair;
    Document* document;
    std::int32_t kind;
    std::int32_t templateArgumentIndex = -1;
    Item* item = nullptr; // what it names
    std::span<Type* const> arguments;
};

struct Item {
    Item(Library& owner, std::int32_t kindOfItem) noexcept
        : pair{this, &kItemTable}, library(&owner), kind(kindOfItem) {}
    Item(const Item&) = delete;
    Item& operator=(const Item&) = delete;
    ~Item() = default;

    void addReference() const noexcept;
    void release() const noexcept;
    std::int32_t getKind() const noexcept { return kind; }
    Result getDocumentation(IVaskString* text) const;
    Result getAttribute(IVaskString* attribute, IVaskString* out) const;
    Result getName(IVaskString* out) const;
    const UUID* getUUID() const noexcept { return &details->uuid; }
    std::int32_t getMemberCount() const noexcept;
    Result getMember(std::uint32_t index, IVaskIDLItem** member) const;
    Result getType(IVaskIDLType** out) const;
    std::uint32_t getValue() const noexcept { return value; }
    std::int32_t getNumberOfTemplateArguments() const noexcept;
    Result getTemplateArgumentName(std::uint32_t index, IVaskString* out) const;
    std::int32_t getAttributeCount() const noexcept;
    Result getAttributeName(std::uint32_t index, IVaskString* out) const;
    Result getLibrary(IVaskIDLLibrary** out) const;

    IVaskIDLItem pair;
    Library* library;
    std::string_view name;
    std::string_view documentation; // the comment as it is written
    const Details* details = &kNoDetails;
    std::span<Item* const> members;
    Type* type = nullptr;
    std::int32_t kind;
    std::uint32_t value = 0; // of an enumerator; of a parameter, which way it goes
};

struct Library {
    Library(Document& owner, const SourceFile& source) noexcept
        : pair{this, &kLibraryTable}, document(&owner), file(&source) {}
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() = default;

    // With one reference for the caller.
    Result handOut(IVaskIDLLibrary** out) noexcept;

    void addReference() const noexcept;
    void release() const noexcept;
    Result getDocumentation(IVaskString* text) const;
    std::int32_t getAttributeCount() const noexcept;
    Result getAttributeName(std::uint32_t index, IVaskString* out) const;
    Result getAttribute(IVaskString* attribute, IVaskString* out) const;
    std::int32_t getCategoryCount() const noexcept;
    Result getCategory(std::uint32_t index, IVaskIDLItem** item) const;
    std::int32_t getEnumerationCount() const noexcept;
    Result getEnumeration(std::uint32_t index, IVaskIDLItem** item) const;
    std::int32_t getInterfaceCount() const noexcept;
    Result getInterface(std::uint32_t index, IVaskIDLItem** item) const;
    Result getName(IVaskString* out) const;
    const UUID* getUUID() const noexcept { return &details->uuid; }
    Result getSourcePath(IVaskString* path) const;

    IVaskIDLLibrary pair;
    Document* document;
    const SourceFile* file;
    std::string_view name;
    std::string_view documentation;
    const Details* details = &kNoDetails;
    std::span<Item* const> categories;
    std::span<Item* const> enumerations;
    std::span<Item* const> interfaces;
};

} // namespace TARVO::idl
