#include "companions/idl-parser/parser.h"

#include "companions/idl-parser/attributes.h"
#include "companions/idl-parser/text.h"

#include <charconv>
#include <optional>
#include <string>

namespace TARVO::idl {
namespace {

constexpr std::size_t kMostTemplateArguments = 32;
constexpr std::uint64_t kLargestValue = 0xFFFFFFFF;

std::optional<std::uint64_t> numberOf(std::string_view text) {
    const bool isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (isHexadecimal)
        text.remove_prefix(2);
    std::uint64_t number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, isHexadecimal ? 16 : 10);
    if (error != std::errc() || end != text.data() + text.size() || number > kLargestValue)
        return std::nullopt;
    return number;
}

} // namespace

Parser::Parser(Document& document, SourceFile& file, Errors& errors, std::vector<TypeUse>& uses)
    : document_(document), file_(file), reader_(file, errors), types_(reader_, document, uses) {}

// Runs `parse` on what ends with the separator. False after an error, when the next statement
// follows.
template <class Parse>
bool Parser::statement(char separator, Parse parse) {
    const std::size_t members = members_.size();
    try {
        parse();
        return true;
    } catch (const SyntaxError&) {
        members_.resize(members);
        reader_.recover(separator);
        return false;
    }
}

// Statements in braces; a semicolon may stand behind them, as C has it.
template <class Parse>
void Parser::block(char separator, Parse parse) {
    reader_.expect('{');
    while (!reader_.token().is('}') && !reader_.atEnd())
        statement(separator, parse);
    reader_.expect('}');
    reader_.takeIf(';');
}

void Parser::parse() {
    while (!reader_.atEnd())
        if (!statement(';', [this] { parseDeclaration(); }))
            reader_.takeIf('}'); // out here it closes nothing, and is part of the error
}

Parser::Header Parser::parseHeader() {
    const std::string_view documentation = reader_.token().documentation;
    return {documentation, parseAttributes(reader_, document_)};
}

void Parser::parseDeclaration() {
    const Header header = parseHeader();
    if (reader_.takeIf("import"))
        parseImport(header);
    else if (reader_.takeIf("library"))
        parseLibrary(header);
    else
        reader_.unexpected("'library' or 'import'");
}

void Parser::parseImport(const Header& header) {
    const Token path = reader_.expect(TokenKind::quoted, "the path of a file in quotes");
    Import& import = file_.imports.emplace_back();
    import.path = path.text;
    if (header.details.hasIdentifier)
        import.library = header.details.uuid;
    reader_.expectSemicolon();
}

void Parser::parseLibrary(const Header& header) {
    library_ = document_.make<Library>(document_, file_);
    library_->name = reader_.expect(TokenKind::name, "the name of the library").text;
    library_->documentation = header.documentation;
    library_->details = keepDetails(header.details);
    requireIdentifier(header.details, "library", library_->name);
    checkVersion(reader_, header.details);
    types_.enterLibrary(*library_);
    file_.libraries.push_back(library_);
    block(';', [this] { parseItem(); });
    library_->categories = keepItems(categories_, 0);
    library_->enumerations = keepItems(enumerations_, 0);
    library_->interfaces = keepItems(interfaces_, 0);
}

void Parser::parseItem() {
    const Header header = parseHeader();
    if (reader_.takeIf("interface"))
        parseInterface(header);
    else if (reader_.takeIf("enum"))
        parseEnumeration(header);
    else if (reader_.takeIf("category"))
        parseCategory(header);
    else
        reader_.unexpected("'category', 'enum' or 'interface'");
}

Item& Parser::startItem(std::int32_t kind, const Header& header) {
    Item* item = document_.make<Item>(*library_, kind);
    item->documentation = header.documentation;
    item->details = keepDetails(header.details);
    return *item;
}

void Parser::parseCategory(const Header& header) {
    Item& category = startItem(TARVO_IDL_CATEGORY, header);
    category.name = reader_.expectName("the name of the category");
    requireIdentifier(header.details, "category", category.name);
    categories_.push_back(&category);
    reader_.expectSemicolon();
}

void Parser::parseEnumeration(const Header& header) {
    Item& enumeration = startItem(TARVO_IDL_ENUMERATION, header);
    enumeration.name = reader_.expectName("the name of the enumeration");
    requireIdentifier(header.details, "enumeration", enumeration.name);
    std::uint64_t nextValue = 0;
    const std::size_t first = members_.size();
    block(',', [&] { parseEnumerator(nextValue); });
    enumeration.members = keepItems(members_, first);
    enumerations_.push_back(&enumeration);
}

void Parser::parseEnumerator(std::uint64_t& nextValue) {
    const Header header = parseHeader();
    Item& enumerator = startItem(TARVO_IDL_ENUMERATOR, header);
    enumerator.name = reader_.expectName("a name or '}'");
    if (reader_.takeIf('=')) {
        const std::string_view text = reader_.expect(TokenKind::number, "a number").text;
        const auto value = numberOf(text);
        if (!value)
            reader_.report(text, inQuotes(text) + " is no whole number from 0 to 4294967295");
        nextValue = value.value_or(0);
    } else if (nextValue > kLargestValue) {
        reader_.report(enumerator.name,
                       "the value of " + inQuotes(enumerator.name) + " would be beyond 4294967295");
    }
    enumerator.value = static_cast<std::uint32_t>(nextValue++);
    members_.push_back(&enumerator);
    if (!reader_.token().is('}') && !reader_.takeIf(','))
        reader_.unexpected("',' or '}'");
}

void Parser::parseInterface(Header header) {
    const std::string_view name = reader_.expectName("the name of the interface");
    requireIdentifier(header.details, "interface", name);
    if (reader_.takeIf('<'))
        header.details.templateArguments = parseTemplateArguments();
    types_.enterInterface(header.details.templateArguments);
    Item& interface = startItem(TARVO_IDL_INTERFACE, header);
    interface.name = name;
    if (reader_.takeIf(':'))
        interface.type = types_.parse();
    const std::size_t first = members_.size();
    block(';', [this] { parseMethod(); });
    interface.members = keepItems(members_, first);
    interfaces_.push_back(&interface);
}

std::span<const std::string_view> Parser::parseTemplateArguments() {
    std::vector<std::string_view> names;
    do {
        if (names.size() == kMostTemplateArguments)
            reader_.unexpected("no more template arguments than 32");
        names.push_back(reader_.expectName("the name of a template argument"));
    } while (reader_.takeIf(','));
    if (!reader_.takeIf('>'))
        reader_.unexpected("',' or '>'");
    return document_.keep<std::string_view>(names);
}

void Parser::parseMethod() {
    const Header header = parseHeader();
    Item& method = startItem(TARVO_IDL_METHOD, header);
    method.type = types_.parseMethodResult();
    method.name = reader_.expectName("the name of the method");
    reader_.expect('(');
    const std::size_t first = members_.size();
    if (!reader_.takeIf(')')) {
        do
            parseParameter();
        while (reader_.takeIf(','));
        if (!reader_.takeIf(')'))
            reader_.unexpected("',' or ')'");
    }
    method.members = keepItems(members_, first);
    members_.push_back(&method);
    reader_.expectSemicolon();
}

void Parser::parseParameter() {
    const Header header = parseHeader();
    Item& parameter = startItem(TARVO_IDL_PARAMETER, header);
    parameter.value = parseDirection();
    parameter.type = types_.parse();
    parameter.name = reader_.expectName("the name of the parameter");
    members_.push_back(&parameter);
}

std::uint32_t Parser::parseDirection() {
    if (reader_.takeIf("in"))
        return TARVO_IDL_IN;
    if (reader_.takeIf("out"))
        return TARVO_IDL_OUT;
    if (reader_.takeIf("inout"))
        return TARVO_IDL_INOUT;
    reader_.unexpected("'in', 'out' or 'inout'");
}

// Most methods and parameters have none, and share one.
const Details* Parser::keepDetails(const Details& details) {
    const bool hasNone =
        !details.hasIdentifier && details.attributes.empty() && details.templateArguments.empty();
    return hasNone ? &kNoDetails : document_.make<Details>(details);
}

void Parser::requireIdentifier(const Details& details, std::string_view kind,
                               std::string_view name) {
    if (!details.hasIdentifier)
        reader_.report(name, "the " + std::string(kind) + " " + inQuotes(name) +
                                 " needs an identifier: [uuid(...)] before '" +
                                 (kind == "enumeration" ? "enum" : std::string(kind)) + "'");
}

// Moves the items from the first on to the document's memory.
std::span<Item* const> Parser::keepItems(std::vector<Item*>& items, std::size_t first) {
    const auto kept = document_.keep<Item*>(std::span<Item* const>(items).subspan(first));
    items.resize(first);
    return kept;
}

} // namespace TARVO::idl
