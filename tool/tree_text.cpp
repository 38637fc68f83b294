#include "tool/tree_text.h"

#include "tool/scope.h"
#include "tool/text.h"
#include "tool/tree_form.h"

#include <cstddef>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>
#include <utility>

namespace tool {

namespace {

using nlohmann::ordered_json;
using TARVO::RegistryValueType;

const char* typeName(RegistryValueType type) {
    switch (type) {
    case RegistryValueType::string:
        return "string";
    case RegistryValueType::integer:
        return "integer";
    case RegistryValueType::uuid:
        return "uuid";
    case RegistryValueType::empty:
        break;
    }
    return "empty";
}

// Calls the writer with what is in the key, each key's values before its sub-keys.
template <class Writer>
void walk(std::unique_ptr<KeySource> root, Writer& writer) {
    struct OpenKey {
        std::unique_ptr<KeySource> key;
        std::vector<std::u16string> subKeys;
        std::size_t next = 0;
    };
    std::vector<OpenKey> open;
    const auto enter = [&](std::unique_ptr<KeySource> key) {
        writer.values(key->values());
        std::vector<std::u16string> subKeys = key->subKeyNames();
        open.push_back({std::move(key), std::move(subKeys)});
    };
    enter(std::move(root));
    while (!open.empty()) {
        OpenKey& last = open.back();
        if (last.next < last.subKeys.size()) {
            const std::u16string& name = last.subKeys[last.next++];
            writer.beginKey(toUtf8(name));
            enter(last.key->open(name));
        } else {
            open.pop_back();
            writer.endKey();
        }
    }
}

class RegistryText {
  public:
    void values(const std::vector<ShownValue>& values) {
        for (const ShownValue& value : values)
            lines_.addValue(
                value.name, content(value),
                fmt::format("{:<7}  {}", typeName(value.type), scopeName(value.allUsers)));
    }
    void beginKey(std::string_view name) { lines_.beginNode(name); }
    void endKey() { lines_.endNode(); }
    std::string take() { return lines_.take(); }

  private:
    static std::optional<std::string> content(const ShownValue& value) {
        switch (value.type) {
        case RegistryValueType::string:
            return '"' + printable(value.text) + '"';
        case RegistryValueType::integer:
            return std::to_string(value.integer);
        case RegistryValueType::empty:
            return std::nullopt;
        default:
            return value.text;
        }
    }

    TreeLines lines_;
};

class RegistryJson {
  public:
    void values(const std::vector<ShownValue>& values) {
        ordered_json::object_t object;
        for (const ShownValue& value : values)
            object.emplace_back(value.name, ordered_json{{"type", typeName(value.type)},
                                                         {"value", content(value)},
                                                         {"scope", scopeName(value.allUsers)}});
        json_.setValues(std::move(object));
    }
    void beginKey(const std::string& name) { json_.beginNode(name); }
    void endKey() { json_.endNode(); }
    std::string take() { return json_.take(); }

  private:
    static nlohmann::json content(const ShownValue& value) {
        switch (value.type) {
        case RegistryValueType::integer:
            return value.integer;
        case RegistryValueType::empty:
            return nullptr;
        default:
            return value.text;
        }
    }

    TreeJson json_{"keys"};
};

} // namespace

std::string treeAsText(std::unique_ptr<KeySource> root) {
    RegistryText writer;
    walk(std::move(root), writer);
    return writer.take();
}

std::string treeAsJson(std::unique_ptr<KeySource> root) {
    RegistryJson writer;
    walk(std::move(root), writer);
    return writer.take();
}

} // namespace tool
