#include "registry/registry_parser.h"

#include "core/uuid.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <utility>

namespace TARVO {

namespace {

// What the elements of the language are allowed to say of themselves.
struct ElementAttributes {
    std::optional<std::string_view> id;
    std::optional<std::string_view> name;
    std::optional<std::string_view> type;
};

// Of two attributes of one name the last counts.
ElementAttributes readAttributes(std::string_view text) {
    ElementAttributes found;
    AttributeScanner scanner(text);
    std::string_view name;
    std::string_view value;
    while (scanner.next(name, value)) {
        if (name == "name")
            found.name = value;
        else if (name == "type")
            found.type = value;
        else if (name == "id")
            found.id = value;
    }
    return found;
}

// A decimal number that takes up the whole text: white space, a sign, digits. Out of range it
// becomes the nearest number that there is.
bool readInteger(std::u16string_view text, std::int32_t& number) noexcept {
    std::size_t position = std::min(text.find_first_not_of(u" \t\n\v\f\r"), text.size());
    bool negative = false;
    if (position < text.size() && (text[position] == u'-' || text[position] == u'+'))
        negative = text[position++] == u'-';
    if (position == text.size())
        return false;

    constexpr std::int64_t kBeyondRange = std::int64_t{1} << 32;
    std::int64_t magnitude = 0;
    for (; position < text.size(); ++position) {
        if (text[position] < u'0' || text[position] > u'9')
            return false;
        magnitude = std::min(magnitude * 10 + (text[position] - u'0'), kBeyondRange);
    }
    using Limits = std::numeric_limits<std::int32_t>;
    number = static_cast<std::int32_t>(
        std::clamp<std::int64_t>(negative ? -magnitude : magnitude, Limits::min(), Limits::max()));
    return true;
}

constexpr const char* kSecondValue = "a value of this name stands in its key already";
constexpr const char* kWrongContent = "a value's content isn't of its type";

std::optional<RegistryValueType> typeNamed(std::string_view text) {
    constexpr std::pair<std::string_view, RegistryValueType> kTypes[] = {
        {"string", RegistryValueType::string},
        {"empty", RegistryValueType::empty},
        {"integer", RegistryValueType::integer},
        {"uuid", RegistryValueType::uuid},
    };
    for (const auto& [name, type] : kTypes)
        if (text == name)
            return type;
    return std::nullopt;
}

// The names of the types are ASCII, so that their bytes can be compared once references are
// replaced.
std::optional<RegistryValueType> readType(std::string_view bytes) {
    if (const auto type = typeNamed(bytes))
        return type;
    std::string replaced;
    decodeEntities(bytes, replaced);
    return typeNamed(std::string_view(replaced).substr(0, replaced.find('\0')));
}

} // namespace

RegistryParser::RegistryParser(tarvo::Reference<TarvoRegistry> root, std::u16string knownId)
    : root_(std::move(root)), nodes_{root_.get()}, id_(std::move(knownId)) {}

// A tag ends at the first > behind its start, so the tags that a piece shows are the file's own.
ParseOutcome RegistryParser::parse(std::string_view bytes) {
    MarkupScanner scanner(bytes);
    WrittenElement written;
    MarkupTag tag;
    ParseOutcome outcome = ParseOutcome::complete;
    while (outcome == ParseOutcome::complete) {
        if (fillsTree() && scanner.nextWritten(written)) {
            outcome = takeWritten(written);
        } else if (scanner.next(tag)) {
            takeText(tag.textBefore);
            if (tag.isElement)
                outcome = takeElement(tag);
        } else {
            break;
        }
    }
    taken_ += bytes.size() - scanner.rest().size();
    return outcome;
}

// What needs no conversion goes straight into the tree.
ParseOutcome RegistryParser::takeWritten(const WrittenElement& element) {
    const std::size_t place = taken_ + element.position;
    if (element.isKey) {
        elements_.emplace_back("key");
        return addKey(TarvoRegistry::make(memory_, element.name, root_->edition()), place);
    }
    if (element.type == RegistryValueType::empty)
        return addValue(NamedValue::make(memory_, element.name, element.type, PlainText()), place);
    if (element.type == RegistryValueType::string && element.isPlain)
        return addValue(
            NamedValue::make(memory_, element.name, element.type, PlainText(element.text)), place);
    scratch_.decodeName(element.name.bytes());
    const ParseOutcome outcome = openValue(element.type, place);
    if (outcome != ParseOutcome::complete)
        return outcome;
    takeText(element.text);
    return endValue(place);
}

ParseOutcome RegistryParser::takeElement(const MarkupTag& tag) {
    ParseOutcome outcome = ParseOutcome::complete;
    if (!tag.isEnd)
        outcome = start(tag);
    if (outcome == ParseOutcome::complete && (tag.isEnd || tag.isSelfClosed))
        outcome = end(tag);
    return outcome;
}

// A text takes the place of the one before it: a comment inside a value cuts it, and so does an
// element.
void RegistryParser::takeText(std::string_view bytes) {
    if (!inValue_ || bytes.empty())
        return;
    switch (valueType_) {
    case RegistryValueType::string:
        valueText_.decode(bytes);
        break;
    case RegistryValueType::integer:
        scratch_.decode(bytes);
        valueValid_ = readInteger(scratch_.view(), valueInteger_);
        break;
    case RegistryValueType::uuid:
        scratch_.decode(bytes);
        if (isUUIDText(scratch_.view())) {
            valueText_.swap(scratch_);
            valueValid_ = true;
        }
        break;
    case RegistryValueType::empty:
        break;
    }
}

ParseOutcome RegistryParser::start(const MarkupTag& tag) {
    elements_.emplace_back(tag.name);
    if (tag.name == "registry")
        return startRegistry(tag);
    if (!fillsTree()) {
        ++skipDepth_;
        return ParseOutcome::complete;
    }
    if (tag.name == "key")
        return startKey(tag);
    if (tag.name == "value")
        return startValue(tag);
    ++skipDepth_;
    return ParseOutcome::complete;
}

ParseOutcome RegistryParser::startRegistry(const MarkupTag& tag) {
    if (inRegistry_ || idSeen_)
        return fail(placeOf(tag), "there is a second 'registry' element");
    if (const auto id = readAttributes(tag.attributes).id) {
        idSeen_ = true;
        scratch_.decode(*id);
        if (!id_.empty() && scratch_.view() == id_)
            return ParseOutcome::unchanged;
        id_ = scratch_.view();
    }
    inRegistry_ = true;
    return ParseOutcome::complete;
}

ParseOutcome RegistryParser::startKey(const MarkupTag& tag) {
    const auto name = readAttributes(tag.attributes).name;
    if (!name)
        return fail(placeOf(tag), "a key has no 'name' attribute");
    if (!scratch_.decodeName(*name))
        return fail(placeOf(tag), "a key's name is empty or holds a capital letter, a separator or "
                                  "a control character");
    return addKey(TarvoRegistry::make(memory_, scratch_.view(), root_->edition()), placeOf(tag));
}

ParseOutcome RegistryParser::addKey(tarvo::Reference<TarvoRegistry> key, std::size_t place) {
    TarvoRegistry* const node = key.get();
    if (!nodes_.back()->subKeys.insertNew(memory_, std::move(key)))
        return fail(place, "a key of this name stands here already");
    nodes_.push_back(node);
    return ParseOutcome::complete;
}

ParseOutcome RegistryParser::startValue(const MarkupTag& tag) {
    const ElementAttributes attributes = readAttributes(tag.attributes);
    if (!attributes.name)
        return fail(placeOf(tag), "a value has no 'name' attribute");
    if (!scratch_.decodeName(*attributes.name))
        return fail(placeOf(tag), "a value's name is empty or holds a capital letter, a separator "
                                  "or a control character");
    if (!attributes.type)
        return fail(placeOf(tag), "a value has no 'type' attribute");
    const auto type = readType(*attributes.type);
    if (!type)
        return fail(placeOf(tag), "a value's type is none of string, integer, uuid and empty");
    return openValue(*type, placeOf(tag));
}

// The name is that in `scratch_`.
ParseOutcome RegistryParser::openValue(RegistryValueType type, std::size_t place) {
    if (nodes_.back()->values.find(scratch_.view()) != nullptr)
        return fail(place, kSecondValue);
    beginValue(type);
    valueName_.swap(scratch_);
    valuePlace_ = place;
    inValue_ = true;
    return ParseOutcome::complete;
}

ParseOutcome RegistryParser::addValue(tarvo::Reference<NamedValue> value, std::size_t place) {
    lastValue_ = value.get();
    if (!nodes_.back()->values.insertNew(memory_, std::move(value)))
        return fail(place, kSecondValue);
    return ParseOutcome::complete;
}

// A string and an empty value need no content to be valid.
void RegistryParser::beginValue(RegistryValueType type) noexcept {
    valueType_ = type;
    valueInteger_ = 0;
    valueText_.clear();
    valueValid_ = type == RegistryValueType::string || type == RegistryValueType::empty;
}

// An ignored element's end is told by the depth alone. A `registry` element inside an ignored one
// lowers it too, so an end tag of an ignored key or value can come to be treated as one of the
// tree's: the root then stays where it is, and a value is stored once more as it was.
ParseOutcome RegistryParser::end(const MarkupTag& tag) {
    if (elements_.empty() || elements_.back() != tag.name)
        return fail(placeOf(tag), "an end tag doesn't match the last open tag");
    elements_.pop_back();
    if (skipDepth_ > 0) {
        --skipDepth_;
        return ParseOutcome::complete;
    }
    if (tag.name == "value")
        return endValue(placeOf(tag));
    if (tag.name == "key") {
        if (nodes_.size() > 1)
            nodes_.pop_back();
    } else if (tag.name == "registry") {
        inRegistry_ = false;
    }
    return ParseOutcome::complete;
}

ParseOutcome RegistryParser::endValue(std::size_t place) {
    if (std::exchange(inValue_, false)) {
        if (!valueValid_)
            return fail(valuePlace_, kWrongContent);
        return addValue(NamedValue::make(memory_, valueName_.view(), valueType_, valueInteger_,
                                         valueText_.view()),
                        valuePlace_);
    }
    if (lastValue_ == nullptr)
        return fail(place, kWrongContent);
    nodes_.back()->values.insert(memory_, tarvo::Reference<NamedValue>::share(lastValue_));
    return ParseOutcome::complete;
}

ParseOutcome RegistryParser::fail(std::size_t offset, const char* reason) {
    fault_ = {offset, reason};
    return ParseOutcome::malformed;
}

} // namespace TARVO
