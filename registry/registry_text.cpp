#include "registry/registry_text.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <vector>

namespace TARVO {

namespace {

// Bytes that stand for themselves in the file; those of sequences for characters beyond ASCII too.
constexpr auto kPlain = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = ' '; byte < plain.size(); ++byte)
        plain[byte] =
            std::string_view("\"&'<>").find(static_cast<char>(byte)) == std::string_view::npos;
    return plain;
}();

std::size_t plainFront(std::string_view bytes) {
    const auto isPlain = [](char byte) {
        return kPlain[static_cast<unsigned char>(byte)];
    };
    return static_cast<std::size_t>(std::ranges::find_if_not(bytes, isPlain) - bytes.begin());
}

void appendReference(char byte, std::string& out) {
    constexpr char kFirstKept = 9;
    switch (byte) {
    case '"':
        out.append("&quot;");
        break;
    case '&':
        out.append("&amp;");
        break;
    case '\'':
        out.append("&apos;");
        break;
    case '<':
        out.append("&lt;");
        break;
    case '>':
        out.append("&gt;");
        break;
    default:
        if (byte >= kFirstKept)
            out.append("&#").append(std::to_string(byte)).append(";");
    }
}

// One blank a level, so that people can read a file. A tree as deep as no person makes one isn't
// indented to its full depth: its file would grow with the square of it.
void indent(std::size_t depth, std::string& out) {
    constexpr std::size_t kDeepest = 200;
    out.append(std::min(depth, kDeepest), ' ');
}

void appendNumber(std::int32_t number, std::string& out) {
    char digits[12];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    out.append(digits, end);
}

void writeValue(const NamedValue& value, std::size_t depth, std::string& out) {
    indent(depth, out);
    out.append("<value name=\"");
    escapeText(value.name(), out);
    switch (value.type()) {
    case RegistryValueType::string:
        out.append("\" type=\"string\">");
        escapeText(value.text(), out);
        break;
    case RegistryValueType::integer:
        out.append("\" type=\"integer\">");
        appendNumber(value.integer(), out);
        break;
    case RegistryValueType::uuid:
        out.append("\" type=\"uuid\">");
        escapeText(value.text(), out);
        break;
    case RegistryValueType::empty:
        out.append("\" type=\"empty\"/>\n");
        return;
    }
    out.append("</value>\n");
}

} // namespace

void escapeText(std::u16string_view text, std::string& out) {
    const std::size_t start = out.size();
    platform::appendUtf8(text, out);
    const std::size_t plain = plainFront(std::string_view(out).substr(start));
    if (start + plain == out.size())
        return; // nearly always
    const std::string copy = out.substr(start + plain);
    out.resize(start + plain);
    for (std::string_view rest = copy; !rest.empty();) {
        appendReference(rest.front(), out);
        rest.remove_prefix(1);
        const std::string_view run = rest.substr(0, plainFront(rest));
        out.append(run);
        rest.remove_prefix(run.size());
    }
}

// A tree can be as deep as a file says, so the keys that are open stand in a list of their own. An
// entry without a key closes the one that was opened before its sub-keys.
void writeKey(const TarvoRegistry& key, std::size_t depth, std::string& out) {
    struct Pending {
        const TarvoRegistry* key;
        std::size_t depth; // of its own line
    };
    std::vector<Pending> pending;
    const auto writeContent = [&](const TarvoRegistry& node, std::size_t contentDepth) {
        node.values.forEach([&](const NamedValue& value) { writeValue(value, contentDepth, out); });
        node.subKeys.forEach([&](const TarvoRegistry& child) {
            pending.push_back({&child, contentDepth});
        });
    };
    writeContent(key, depth);
    while (!pending.empty()) {
        const Pending next = pending.back();
        pending.pop_back();
        indent(next.depth, out);
        if (next.key == nullptr) {
            out.append("</key>\n");
            continue;
        }
        out.append("<key name=\"");
        escapeText(next.key->name(), out);
        out.append("\">\n");
        pending.push_back({nullptr, next.depth});
        writeContent(*next.key, next.depth + 1);
    }
}

std::string registryText(const TarvoRegistry& root, std::u16string_view id) {
    std::string text = "<registry id=\"";
    escapeText(id, text);
    text.append("\">\n");
    writeKey(root, 1, text);
    text.append("</registry>\n");
    return text;
}

} // namespace TARVO
