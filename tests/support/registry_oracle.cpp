#include "tests/support/registry_oracle.h"

#include "platform/text.h"

#include <tarvo/result.h>

#include <algorithm>
#include <limits>
#include <regex>
#include <stack>
#include <utility>

namespace tests {
namespace {

constexpr std::int32_t kSameId = -1;

constexpr std::uint32_t kString = 0;
constexpr std::uint32_t kInteger = 1;
constexpr std::uint32_t kUuid = 2;
constexpr std::uint32_t kEmpty = 3;

std::regex compile(const char* expression) {
    return std::regex(expression, std::regex::ECMAScript | std::regex::optimize);
}

const std::regex kTag = compile(
    R"(<(/|)\s*([A-Za-z][A-Za-z0-9-_]*)([^>]*?)(>|/>)|(<!--\s*([^>]*)\s*-->)|(<\?[^>]*\?>))");
const std::regex kAttribute = compile(R"re(\s+([A-Za-z][A-Za-z0-9-_]*)\s*=\s*"([^">]*)")re");
const std::regex kReference =
    compile(R"(&((amp)|(lt)|(gt)|(quot)|(apos)|(#[0-9]{1,4})|(#x[A-Fa-f0-9]{1,4}));)");
const std::regex kUuidText = compile(R"(^\{[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}\}$)");

// Calls `visit` for each match, searching always from the end of the last one. Gives the bytes that
// are left over.
template <class Visit>
std::string_view forEachMatch(std::string_view bytes, const std::regex& expression, Visit visit) {
    const char* const end = bytes.data() + bytes.size();
    const char* position = bytes.data();
    for (std::cmatch match; std::regex_search(position, end, match, expression);) {
        visit(match);
        position = match[0].second;
    }
    return std::string_view(position, static_cast<std::size_t>(end - position));
}

std::string_view viewOf(const std::csub_match& group) {
    return std::string_view(group.first, static_cast<std::size_t>(group.length()));
}

std::string utf8Of(unsigned codePoint) {
    const auto byte = [](unsigned bits) {
        return static_cast<char>(bits);
    };
    if (codePoint < 0x80) {
        return {byte(codePoint)};
    }
    if (codePoint < 0x800) {
        return {byte(0xC0 | codePoint >> 6), byte(0x80 | (codePoint & 0x3F))};
    }
    return {byte(0xE0 | codePoint >> 12), byte(0x80 | (codePoint >> 6 & 0x3F)),
            byte(0x80 | (codePoint & 0x3F))};
}

// What stands for a reference; `reference` is what is between `&` and `;`.
std::string characterOf(std::string_view reference) {
    static const std::map<std::string_view, std::string> named = {
        {"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"apos", "'"}};
    if (const auto found = named.find(reference); found != named.end()) {
        return found->second;
    }
    constexpr unsigned long firstCharacter = 9;
    const bool isHexadecimal = reference[1] == 'x';
    const std::string digits(reference.substr(isHexadecimal ? 2 : 1));
    const unsigned long codePoint = std::stoul(digits, nullptr, isHexadecimal ? 16 : 10);
    return codePoint < firstCharacter ? "" : utf8Of(static_cast<unsigned>(codePoint));
}

std::u16string wideTextOf(std::string_view bytes) {
    std::u16string text;
    TARVO::platform::appendUtf16(decodeEntitiesByExpression(bytes), text);
    return text.substr(0, text.find(u'\0'));
}

// The number that takes up the whole text, if one does.
std::optional<std::int32_t> integerOf(std::u16string_view text) {
    constexpr std::int64_t lowest = std::numeric_limits<std::int32_t>::min();
    constexpr std::int64_t highest = std::numeric_limits<std::int32_t>::max();
    text.remove_prefix(std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size()));
    const bool isNegative = text.starts_with(u'-');
    if (isNegative || text.starts_with(u'+')) {
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return std::nullopt;
    }
    std::int64_t number = 0;
    for (const char16_t unit : text) {
        if (unit < u'0' || unit > u'9') {
            return std::nullopt;
        }
        number = std::min(number * 10 + (unit - u'0'), highest + 1);
    }
    return static_cast<std::int32_t>(std::clamp(isNegative ? -number : number, lowest, highest));
}

bool isUuidText(std::u16string_view text) {
    // The expression can match ASCII alone; so one byte stands for each unit.
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += unit < 0x80 ? static_cast<char>(unit) : '?';
    }
    return std::regex_search(bytes, kUuidText);
}

bool isAllowedName(std::u16string_view name) {
    return std::ranges::none_of(name, [](char16_t unit) {
        return unit < 32 || (unit >= u'A' && unit <= u'Z') || unit == u'/' || unit == u'\\';
    });
}

struct Element {
    std::string name;
    bool isOpen;
    bool isClose;
    std::map<std::string, std::u16string> attributes;
};

Element elementOf(const std::cmatch& match) {
    Element element;
    element.name = match[2].str();
    element.isOpen = match[1].length() == 0;
    element.isClose = match[1].length() != 0 || match[4] == "/>";
    for (const OracleAttribute& attribute : attributesByExpression(viewOf(match[3]))) {
        element.attributes[std::string(attribute.name)] = wideTextOf(attribute.value);
    }
    return element;
}

class ExpressionParser {
  public:
    explicit ExpressionParser(std::u16string_view knownId) : id_(knownId) { nodes_.push(root_); }

    OracleResult parse(std::string_view bytes) {
        const std::int32_t result = parseMatches(bytes);
        return {result, root_, id_, idSeen_};
    }

  private:
    std::int32_t parseMatches(std::string_view bytes) {
        const char* const end = bytes.data() + bytes.size();
        const char* position = bytes.data();
        for (std::cmatch match; std::regex_search(position, end, match, kTag);) {
            if (match.prefix().length() != 0) {
                handleText(wideTextOf(viewOf(match.prefix())));
            }
            position = match[0].second;
            if (match[7].matched || match[5].matched) {
                continue;
            }
            const Element element = elementOf(match);
            if (element.isOpen) {
                if (const std::int32_t result = startStep(element)) {
                    return result;
                }
            }
            if (element.isClose) {
                if (const std::int32_t result = endStep(element.name)) {
                    return result;
                }
            }
        }
        if (position != end) {
            handleText(wideTextOf({position, end}));
        }
        return RC_OK;
    }

    void handleText(const std::u16string& text) {
        if (!inValue_) {
            return;
        }
        if (value_.type == kString) {
            value_.text = text;
        } else if (value_.type == kInteger) {
            const std::optional<std::int32_t> number = integerOf(text);
            value_.integer = number.value_or(0);
            valueValid_ = number.has_value();
        } else if (value_.type == kUuid && isUuidText(text)) {
            value_.text = text;
            valueValid_ = true;
        }
    }

    std::int32_t startStep(const Element& element) {
        elements_.push(element.name);
        if (element.name == "registry") {
            return startRegistry(element);
        }
        if (inValue_ || skipDepth_ > 0 || !inRegistry_) {
            ++skipDepth_;
            return RC_OK;
        }
        if (element.name == "key") {
            return startKey(element);
        }
        if (element.name == "value") {
            return startValue(element);
        }
        ++skipDepth_;
        return RC_OK;
    }

    std::int32_t startRegistry(const Element& element) {
        if (inRegistry_ || idSeen_) {
            return RC_BAD_REGISTRY_FILE;
        }
        if (const auto found = element.attributes.find("id"); found != element.attributes.end()) {
            idSeen_ = true;
            // An empty id is no id that a file could have in common with a cached tree.
            if (found->second == id_ && !id_.empty()) {
                return kSameId;
            }
            id_ = found->second;
        }
        inRegistry_ = true;
        return RC_OK;
    }

    std::int32_t startKey(const Element& element) {
        const auto name = element.attributes.find("name");
        if (name == element.attributes.end() || name->second.empty() ||
            !isAllowedName(name->second)) {
            return RC_BAD_REGISTRY_FILE;
        }
        if (nodes_.top()->subKeys.contains(name->second)) {
            return RC_BAD_REGISTRY_FILE;
        }
        const auto node = std::make_shared<OracleNode>();
        nodes_.top()->subKeys[name->second] = node;
        nodes_.push(node);
        return RC_OK;
    }

    std::int32_t startValue(const Element& element) {
        static const std::map<std::u16string, std::uint32_t> types = {
            {u"string", kString}, {u"integer", kInteger}, {u"uuid", kUuid}, {u"empty", kEmpty}};
        const auto name = element.attributes.find("name");
        if (name == element.attributes.end() || name->second.empty() ||
            !isAllowedName(name->second)) {
            return RC_BAD_REGISTRY_FILE;
        }
        if (nodes_.top()->values.contains(name->second)) {
            return RC_BAD_REGISTRY_FILE;
        }
        const auto typeName = element.attributes.find("type");
        if (typeName == element.attributes.end()) {
            return RC_BAD_REGISTRY_FILE;
        }
        value_ = OracleValue();
        valueValid_ = false;
        valueName_ = name->second;
        const auto type = types.find(typeName->second);
        if (type == types.end()) {
            return RC_BAD_REGISTRY_FILE;
        }
        value_.type = type->second;
        valueValid_ = value_.type == kString || value_.type == kEmpty;
        inValue_ = true;
        return RC_OK;
    }

    std::int32_t endStep(const std::string& name) {
        if (elements_.empty() || elements_.top() != name) {
            return RC_BAD_REGISTRY_FILE;
        }
        elements_.pop();
        if (skipDepth_ > 0) {
            --skipDepth_;
            return RC_OK;
        }
        if (name == "value") {
            inValue_ = false;
            if (!valueValid_) {
                return RC_BAD_REGISTRY_FILE;
            }
            nodes_.top()->values[valueName_] = value_;
        } else if (name == "key") {
            // A `registry` tag in a skipped element takes one off `skipDepth_`, so that the end of
            // a skipped key can come here with no key open.
            if (nodes_.size() > 1) {
                nodes_.pop();
            }
        } else if (name == "registry") {
            inRegistry_ = false;
        }
        return RC_OK;
    }

    const std::shared_ptr<OracleNode> root_ = std::make_shared<OracleNode>();
    std::stack<std::shared_ptr<OracleNode>> nodes_;
    std::stack<std::string> elements_;
    OracleValue value_;
    std::u16string valueName_;
    bool inRegistry_ = false;
    bool inValue_ = false;
    bool valueValid_ = false;
    std::u16string id_;
    bool idSeen_ = false;
    std::int32_t skipDepth_ = 0;
};

} // namespace

OracleResult parseByExpressions(std::string_view bytes, std::u16string_view knownId) {
    return ExpressionParser(knownId).parse(bytes);
}

std::vector<OracleTag> tagsByExpression(std::string_view bytes) {
    std::vector<OracleTag> tags;
    forEachMatch(bytes, kTag, [&](const std::cmatch& match) {
        OracleTag& tag = tags.emplace_back();
        tag.begin = static_cast<std::size_t>(match[0].first - bytes.data());
        tag.end = static_cast<std::size_t>(match[0].second - bytes.data());
        for (std::size_t i = 0; i < tag.groups.size(); ++i) {
            if (match[i].matched) {
                tag.groups[i] = viewOf(match[i]);
            }
        }
    });
    return tags;
}

std::vector<OracleAttribute> attributesByExpression(std::string_view text) {
    std::vector<OracleAttribute> attributes;
    forEachMatch(text, kAttribute, [&](const std::cmatch& match) {
        attributes.push_back({viewOf(match[1]), viewOf(match[2])});
    });
    return attributes;
}

std::string decodeEntitiesByExpression(std::string_view bytes) {
    std::string decoded;
    const std::string_view rest = forEachMatch(bytes, kReference, [&](const std::cmatch& match) {
        decoded += viewOf(match.prefix());
        decoded += characterOf(viewOf(match[1]));
    });
    return decoded.append(rest);
}

} // namespace tests
