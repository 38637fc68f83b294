#include "tests/support/definition_text.h"

#include "platform/text.h"

#include <tarvo/reference.hpp>
#include <tarvo/result.h>
#include <tarvo/text.hpp>
#include <tarvo/uuid.hpp>

#include <cstdlib>
#include <iterator>
#include <vector>

namespace tests {
namespace {

void require(bool holds) {
    if (!holds)
        std::abort();
}

// What a slot that fills a text gives.
template <class Object, class Slot, class... Arguments>
std::string textOf(Object* object, Slot slot, Arguments... arguments) {
    tarvo::String text;
    require(slot(object->me, arguments..., text.pair()) == RC_OK);
    std::string narrow;
    TARVO::platform::appendUtf8(text.text(), narrow);
    return narrow;
}

// What a slot with an index gives, and nothing behind the last one.
template <class Part, class Object, class Count, class Slot>
std::vector<Part*> partsOf(Object* object, Count count, Slot slot) {
    std::vector<Part*> parts(static_cast<std::size_t>(count(object->me)));
    for (std::uint32_t i = 0; i < parts.size(); ++i)
        require(slot(object->me, i, &parts[i]) == RC_OK);
    Part* none = nullptr;
    require(slot(object->me, static_cast<std::uint32_t>(parts.size()), &none) == RC_NOT_AVAILABLE);
    return parts;
}

class Writer {
  public:
    void write(IVaskIDLLibrary* library) {
        library_ = library;
        const auto* table = library->table;
        writeHeader(library, "");
        text_ += "library " + textOf(library, table->getName) + " {\n";
        writeItems(table->getCategoryCount, table->getCategory);
        writeItems(table->getEnumerationCount, table->getEnumeration);
        writeItems(table->getInterfaceCount, table->getInterface);
        text_ += "}\n";
    }

    std::string& text() { return text_; }

  private:
    // The documentation and the attributes, each with a line feed or a blank behind it.
    template <class Object>
    void writeHeader(Object* object, const std::string& indent) {
        const auto* table = object->table;
        std::string documentation = textOf(object, table->getDocumentation);
        for (std::size_t start = 0; !documentation.empty() && start != std::string::npos;) {
            const std::size_t end = documentation.find('\n', start);
            text_ += indent + "/// " + documentation.substr(start, end - start) + "\n";
            start = end == std::string::npos ? end : end + 1;
        }
        text_ += indent;
        const tarvo::UUID uuid = *table->getUUID(object->me);
        std::string list;
        if (!uuid.isNil())
            TARVO::platform::appendUtf8(u", uuid(" + uuid.string().substr(1, 36) + u")", list);
        for (std::int32_t i = 0; i < table->getAttributeCount(object->me); ++i)
            list += ", " + attribute(object, static_cast<std::uint32_t>(i));
        if (!list.empty())
            text_ += "[" + list.substr(2) + "] ";
    }

    template <class Object>
    std::string attribute(Object* object, std::uint32_t index) {
        tarvo::String name;
        require(object->table->getAttributeName(object->me, index, name.pair()) == RC_OK);
        const std::string value = textOf(object, object->table->getAttribute, name.pair());
        std::string result = textOf(object, object->table->getAttributeName, index);
        if (value.empty())
            return result;
        result += "(\"";
        for (const char c : value)
            (c == '"' || c == '\\' ? result.append(1, '\\') : result).push_back(c);
        return result + "\")";
    }

    template <class Count, class Slot>
    void writeItems(Count count, Slot slot) {
        for (IVaskIDLItem* item : partsOf<IVaskIDLItem>(library_, count, slot)) {
            writeHeader(item, " ");
            switch (item->table->getKind(item->me)) {
            case TARVO_IDL_CATEGORY:
                text_ += "category " + textOf(item, item->table->getName) + ";\n";
                break;
            case TARVO_IDL_ENUMERATION:
                text_ += "enum " + textOf(item, item->table->getName);
                writeMembers(item, &Writer::writeEnumerator);
                break;
            default:
                require(item->table->getKind(item->me) == TARVO_IDL_INTERFACE);
                text_ += "interface " + textOf(item, item->table->getName) + argumentNames(item);
                writeBase(item);
                writeMembers(item, &Writer::writeMethod);
            }
        }
    }

    void writeMembers(IVaskIDLItem* item, void (Writer::*writeMember)(IVaskIDLItem*)) {
        text_ += " {\n";
        for (IVaskIDLItem* member : membersOf(item))
            (this->*writeMember)(member);
        text_ += " }\n";
    }

    static std::vector<IVaskIDLItem*> membersOf(IVaskIDLItem* item) {
        return partsOf<IVaskIDLItem>(item, item->table->getMemberCount, item->table->getMember);
    }

    std::string argumentNames(IVaskIDLItem* item) {
        std::string names;
        const auto count = item->table->getNumberOfTemplateArguments(item->me);
        for (std::int32_t i = 0; i < count; ++i)
            names += (i == 0 ? "" : ", ") + textOf(item, item->table->getTemplateArgumentName,
                                                   static_cast<std::uint32_t>(i));
        interface_ = item;
        return names.empty() ? "" : "<" + names + ">";
    }

    void writeBase(IVaskIDLItem* item) {
        IVaskIDLType* base = nullptr;
        if (item->table->getType(item->me, &base) == RC_OK)
            text_ += " : " + typeText(base);
    }

    void writeEnumerator(IVaskIDLItem* item) {
        writeHeader(item, "  ");
        text_ += textOf(item, item->table->getName) + " = " +
                 std::to_string(item->table->getValue(item->me)) + ",\n";
    }

    void writeMethod(IVaskIDLItem* item) {
        writeHeader(item, "  ");
        text_ += typeOf(item) + " " + textOf(item, item->table->getName) + "(";
        const auto parameters = membersOf(item);
        for (IVaskIDLItem* parameter : parameters) {
            constexpr const char* kDirections[] = {"", "in ", "out ", "inout "};
            const bool isFirst = parameter == parameters.front();
            text_ += isFirst ? "" : ",";
            const std::size_t before = text_.size();
            writeHeader(parameter, isFirst ? "" : " ");
            if (text_.find('\n', before) != std::string::npos)
                text_.insert(before, "\n");
            text_ += kDirections[parameter->table->getValue(parameter->me)] + typeOf(parameter) +
                     " " + textOf(parameter, parameter->table->getName);
        }
        text_ += ");\n";
    }

    std::string typeOf(IVaskIDLItem* item) {
        IVaskIDLType* type = nullptr;
        require(item->table->getType(item->me, &type) == RC_OK);
        return typeText(type);
    }

    std::string typeText(IVaskIDLType* type) {
        constexpr const char* kWords[] = {"void",   "result",  "integer",    "unsigned",
                                          "byte",   "boolean", "real",       "uuid",
                                          "string", "value",   "ITarvoBase", "IVaskInterface"};
        const auto* table = type->table;
        const auto kind = static_cast<std::size_t>(table->getKind(type->me));
        if (kind < std::size(kWords))
            return kWords[kind];
        if (kind == TARVO_IDL_TEMPLATE_ARGUMENT)
            return textOf(interface_, interface_->table->getTemplateArgumentName,
                          static_cast<std::uint32_t>(table->getTemplateArgumentIndex(type->me)));
        std::string arguments;
        for (auto* argument :
             partsOf<IVaskIDLType>(type, table->getArgumentCount, table->getArgument))
            arguments += (arguments.empty() ? "" : ", ") + typeText(argument);
        if (kind == TARVO_IDL_ARRAY)
            return arguments + "[]";
        return nameOf(type) + (arguments.empty() ? "" : "<" + arguments + ">");
    }

    // With the library, if that is another one.
    std::string nameOf(IVaskIDLType* type) {
        IVaskIDLItem* item = nullptr;
        require(type->table->getItem(type->me, &item) == RC_OK);
        tarvo::Reference<IVaskIDLLibrary> library;
        require(item->table->getLibrary(item->me, library.out()) == RC_OK);
        const std::string name = textOf(item, item->table->getName);
        return library.get() == library_
                   ? name
                   : textOf(library.get(), library->table->getName) + "." + name;
    }

    IVaskIDLLibrary* library_ = nullptr;
    IVaskIDLItem* interface_ = nullptr;
    std::string text_;
};

} // namespace

std::string definitionText(IVaskIDLParseResult* result) {
    Writer writer;
    writer.text() = textOf(result, result->table->getErrorMessage);
    for (auto* library : partsOf<IVaskIDLLibrary>(result, result->table->getLibraryCount,
                                                  result->table->getLibrary)) {
        writer.write(tarvo::Reference<IVaskIDLLibrary>::adopt(library).get());
    }
    return writer.text();
}

} // namespace tests
