#include "tool/tree_text.h"

#include "tool/text.h"

#include <algorithm>
#include <cstddef>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

namespace tool {

namespace {

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

const char* scopeName(const ShownValue& value) {
    return value.allUsers ? "machine" : "user";
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

class TextWriter {
  public:
    void values(const std::vector<ShownValue>& values) {
        for (const ShownValue& value : values)
            writeValue(value);
        ++depth_;
    }
    void beginKey(std::string_view name) {
        text_.append(indent(depth_ - 1)).append(printable(name)).append("/\n");
    }
    void endKey() { --depth_; }
    std::string take() { return text_.empty() ? "(empty)\n" : std::move(text_); }

  private:
    // A line of 79 columns: what the value is, and on the right its type and scope.
    static constexpr std::size_t kLeft = 62;

    // Deep trees stop moving to the right: the text would grow with the square of the depth.
    static std::string indent(std::size_t depth) {
        constexpr std::size_t kMostLevels = 20;
        return std::string(2 * std::min(depth, kMostLevels), ' ');
    }

    static std::string content(const ShownValue& value) {
        switch (value.type) {
        case RegistryValueType::string:
            return '"' + printable(value.text) + '"';
        case RegistryValueType::integer:
            return std::to_string(value.integer);
        default:
            return value.text;
        }
    }

    void writeValue(const ShownValue& value) {
        const std::string name = indent(depth_) + printable(value.name);
        if (value.type == RegistryValueType::empty)
            return writeLine(name, value);
        const std::string shown = content(value);
        const std::string whole = name + " = " + shown;
        if (fits(whole))
            return writeLine(whole, value);
        writeLine(name + " =", value);
        text_.append(indent(depth_ + 1)).append(shown).push_back('\n');
    }

    void writeLine(const std::string& left, const ShownValue& value) {
        fmt::format_to(std::back_inserter(text_), "{:<{}} {:<7}  {}\n", left, kLeft,
                       typeName(value.type), scopeName(value));
    }

    // Padding goes by the columns that characters take up, so it tells whether there was room.
    static bool fits(const std::string& left) {
        return fmt::formatted_size("{:<{}}", left, kLeft + 1) > left.size();
    }

    std::string text_;
    std::size_t depth_ = 0;
};

// Writes the objects one into the other itself: nlohmann's own writer recurses into them.
class JsonWriter {
  public:
    void values(const std::vector<ShownValue>& values) {
        nlohmann::ordered_json object = nlohmann::ordered_json::object();
        for (const ShownValue& value : values)
            object[value.name] = {{"type", typeName(value.type)},
                                  {"value", content(value)},
                                  {"scope", scopeName(value)}};
        text_.append(R"({"values":)").append(object.dump()).append(R"(,"keys":{)");
        isFirst_ = true;
    }
    void beginKey(const std::string& name) {
        if (!isFirst_)
            text_.push_back(',');
        text_.append(nlohmann::json(name).dump()).push_back(':');
    }
    void endKey() {
        text_.append("}}");
        isFirst_ = false;
    }
    std::string take() { return std::move(text_.append("\n")); }

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

    std::string text_;
    bool isFirst_ = true; // of the sub-keys of the key that was begun last
};

} // namespace

std::string treeAsText(std::unique_ptr<KeySource> root) {
    TextWriter writer;
    walk(std::move(root), writer);
    return writer.take();
}

std::string treeAsJson(std::unique_ptr<KeySource> root) {
    JsonWriter writer;
    walk(std::move(root), writer);
    return writer.take();
}

} // namespace tool
