#include "persistence/stream_decoder.h"
#include "tool/failure.h"
#include "tool/json_file.h"
#include "tool/output.h"
#include "tool/state.h"
#include "tool/state_walk.h"
#include "tool/text.h"
#include "tool/tree_form.h"

#include <cmath>
#include <fmt/format.h>
#include <span>
#include <string>
#include <variant>

namespace tool {

namespace {

using nlohmann::ordered_json;
using TARVO::TARVOPersistenceValue;

// JSON has no word for the reals that aren't numbers.
ordered_json jsonOf(double real) {
    if (std::isnan(real))
        return "nan";
    if (std::isinf(real))
        return real > 0 ? "inf" : "-inf";
    return real;
}

ordered_json jsonOf(std::int32_t integer) {
    return integer;
}

ordered_json jsonOf(std::uint32_t number) {
    return number;
}

ordered_json jsonOf(std::uint8_t byte) {
    return byte;
}

ordered_json jsonOf(const tarvo::String& string) {
    return toUtf8(string.text());
}

// A boolean that is neither of the two is worth to be seen as it is.
ordered_json jsonOfBoolean(std::uint32_t boolean) {
    return boolean <= 1 ? ordered_json(boolean == 1) : ordered_json(boolean);
}

ordered_json contentOf(const TARVO::VaskValueImpl& value) {
    if (const auto text = value.text())
        return toUtf8(*text);
    if (const auto integer = value.integer())
        return *integer;
    if (const auto boolean = value.boolean())
        return jsonOfBoolean(*boolean);
    return value.real() ? jsonOf(*value.real()) : ordered_json();
}

ordered_json jsonOf(const TARVO::VaskValueImpl& value) {
    return {{"type", toUtf8(TARVO::textOfTag(value.type()))}, {"value", contentOf(value)}};
}

template <class Array>
requires requires(const Array& array) {
    array.elements();
}
ordered_json jsonOf(const Array& array) {
    ordered_json elements = ordered_json::array();
    for (const auto& element : array.elements())
        elements.push_back(jsonOf(element));
    return elements;
}

ordered_json contentOf(const TARVOPersistenceValue& value) {
    if (value.type() == TARVO_PERSIST_BOOLEAN)
        return jsonOfBoolean(std::get<TARVO_PERSIST_BOOLEAN>(value.content));
    if (value.type() == TARVO_PERSIST_BOOLEAN_ARRAY) {
        ordered_json booleans = ordered_json::array();
        for (const std::uint32_t boolean :
             std::get<TARVO_PERSIST_BOOLEAN_ARRAY>(value.content).elements())
            booleans.push_back(jsonOfBoolean(boolean));
        return booleans;
    }
    return std::visit([](const auto& content) { return jsonOf(content); }, value.content);
}

class StateText {
  public:
    void values(const NodeValues& values, std::size_t) {
        for (const auto& [name, value] : values)
            writeValue(toUtf8(name), *value);
    }
    void beginNode(std::u16string_view name) { lines_.beginNode(toUtf8(name)); }
    void endNode() { lines_.endNode(); }
    std::string take() { return lines_.take(); }

  private:
    void writeValue(const std::string& name, const TARVOPersistenceValue& value) {
        const std::string kind = toUtf8(TARVO::textOfKind(value.type()));
        const auto* const tagged = std::get_if<TARVO_PERSIST_VALUE>(&value.content);
        if (tagged == nullptr)
            return lines_.addValue(name, shown(contentOf(value)), kind);
        lines_.addValue(name, shown(contentOf(*tagged)),
                        kind + " " + toUtf8(TARVO::textOfTag(tagged->type())));
    }

    // Nobody reads more of an array than its beginning.
    static std::optional<std::string> shown(ordered_json content) {
        constexpr std::size_t kMostElements = 100;
        if (content.is_null())
            return std::nullopt;
        const std::size_t size = content.size();
        if (!content.is_array() || size <= kMostElements)
            return printable(content.dump());
        content.erase(content.begin() + kMostElements, content.end());
        std::string text = printable(content.dump());
        text.pop_back();
        return text + fmt::format(",…] ({} elements)", size);
    }

    TreeLines lines_;
};

class StateJson {
  public:
    void values(const NodeValues& values, std::size_t) {
        ordered_json::object_t object;
        for (const auto& [name, value] : values)
            object.emplace_back(toUtf8(name),
                                ordered_json{{"type", toUtf8(TARVO::textOfKind(value->type()))},
                                             {"value", contentOf(*value)}});
        json_.setValues(std::move(object));
    }
    void beginNode(std::u16string_view name) { json_.beginNode(toUtf8(name)); }
    void endNode() { json_.endNode(); }
    std::string take() { return json_.take(); }

  private:
    TreeJson json_{"nodes"};
};

template <class Writer>
void print(const TARVO::TARVOPersistenceNode& root) {
    Writer writer;
    walkState(root, writer);
    printOut("{}", writer.take());
}

[[noreturn]] void failOn(const std::string& file, const TARVO::StreamError& error,
                         std::size_t start) {
    throw Failure(
        fmt::format("{}: damaged at byte {}: {}", file, start + error.offset(), error.reason()),
        error.code());
}

// The record of the root in the bytes of a file.
std::span<const std::uint8_t> recordIn(const std::string& file,
                                       std::span<const std::uint8_t> payload) {
    try {
        if (const auto record = TARVO::nodeRecordOf(payload))
            return *record;
    } catch (const TARVO::StreamError& error) {
        failOn(file, error, 0);
    }
    throw Failure(file + ": no stream payload that TARVO decodes, but bytes of a component's own");
}

} // namespace

void showState(const std::string& file, bool asJson) {
    const std::string bytes = readFile(file);
    const auto record =
        recordIn(file, {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    const auto root = TARVO::TARVOPersistenceNode::make();
    const auto print = asJson ? tool::print<StateJson> : tool::print<StateText>;
    try {
        TARVO::decodeStreamUpToDamage(record, *root);
        print(*root);
    } catch (const TARVO::StreamError& error) {
        print(*root);
        failOn(file, error, TARVO::kStreamHeaderSize);
    }
}

} // namespace tool
