#include "registry/written_element.h"

namespace TARVO {

namespace {

ByteBlock tagStart(ByteBlock bytes) noexcept {
    return whereEqual(bytes, '<');
}

bool skip(std::string_view& rest, std::string_view expected) noexcept {
    if (!rest.starts_with(expected))
        return false;
    rest.remove_prefix(expected.size());
    return true;
}

bool readName(std::string_view& rest, WrittenElement& element) noexcept {
    std::string_view name;
    if (!takeUntil<notPlainInName>(rest, name) || name.empty())
        return false;
    element.name = PlainText(name);
    return true;
}

bool readText(std::string_view& rest, WrittenElement& element) noexcept {
    const std::string_view start = rest;
    if (!takeUntil<notPlain>(rest, element.text))
        return false;
    element.isPlain = rest.front() == '<';
    if (element.isPlain)
        return true;
    const std::size_t size = start.find('<', element.text.size());
    if (size == std::string_view::npos)
        return false;
    element.text = start.substr(0, size);
    rest = start.substr(size);
    return true;
}

// Of a value that has a text.
bool skipType(std::string_view& rest, RegistryValueType& type) noexcept {
    if (skip(rest, "\" type=\"string\">"))
        type = RegistryValueType::string;
    else if (skip(rest, "\" type=\"integer\">"))
        type = RegistryValueType::integer;
    else if (skip(rest, "\" type=\"uuid\">"))
        type = RegistryValueType::uuid;
    else
        return false;
    return true;
}

// `rest` begins behind the name of a value.
bool readTypeAndText(std::string_view& rest, WrittenElement& element) noexcept {
    if (skipType(rest, element.type))
        return readText(rest, element) && skip(rest, "</value>");
    element.type = RegistryValueType::empty;
    return skip(rest, "\" type=\"empty\"/>");
}

} // namespace

bool readWritten(std::string_view bytes, std::size_t& position, WrittenElement& element) noexcept {
    std::string_view rest = bytes.substr(position);
    std::string_view ignored;
    if (!takeUntil<tagStart>(rest, ignored))
        return false;
    element.position = position + ignored.size();
    element.isKey = skip(rest, "<key name=\"");
    if (!element.isKey && !skip(rest, "<value name=\""))
        return false;
    if (!readName(rest, element))
        return false;
    if (element.isKey ? !skip(rest, "\">") : !readTypeAndText(rest, element))
        return false;
    position = bytes.size() - rest.size();
    return true;
}

} // namespace TARVO
