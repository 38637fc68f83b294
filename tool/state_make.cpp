#include "platform/file.h"
#include "tool/failure.h"
#include "tool/json_file.h"
#include "tool/json_member.h"
#include "tool/state.h"
#include "tool/stream_writer.h"
#include "tool/text.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <fmt/format.h>
#include <limits>
#include <span>
#include <utility>
#include <vector>

namespace tool {

namespace {

using nlohmann::json;
using TARVO::TARVOPersistenceNode;
using TARVO::TARVOPersistenceValue;
using TARVO::VaskValueImpl;

// Each reads a value of one type into its place.
void read(const json& value, double& real, const Place& place) {
    using Limits = std::numeric_limits<double>;
    if (value.is_number())
        real = value.get<double>();
    else if (value == "nan")
        real = Limits::quiet_NaN();
    else if (value == "inf")
        real = Limits::infinity();
    else if (value == "-inf")
        real = -Limits::infinity();
    else
        failAt(place, "is no number, nor \"nan\", \"inf\" or \"-inf\"");
}

template <class Number>
requires std::is_integral_v<Number>
void read(const json& value, Number& number, const Place& place) {
    if (!isWhole<Number>(value))
        failAt(place,
               fmt::format("is no whole number from {} to {}", std::numeric_limits<Number>::min(),
                           std::numeric_limits<Number>::max()));
    number = value.get<Number>();
}

void readBoolean(const json& value, std::uint32_t& boolean, const Place& place) {
    if (value.is_boolean())
        boolean = value.get<bool>() ? 1 : 0;
    else
        read(value, boolean, place);
}

void read(const json& value, tarvo::String& string, const Place& place) {
    if (!value.is_string())
        failAt(place, "is no text");
    string.text() = toUtf16(value.get<std::string>());
}

void read(const json& value, VaskValueImpl& target, const Place& place) {
    if (!value.is_object())
        failAt(place, "is no object");
    const auto tag = TARVO::tagOfText(toUtf16(textMember(value, "type", place)));
    if (!tag)
        failAt(place, "\"type\" is none of string, int, bool, real and empty");
    tarvo::String text;
    std::int32_t integer = 0;
    std::uint32_t boolean = 0;
    double real = 0;
    switch (*tag) {
    case TARVO_VALUE_STRING:
        read(member(value, "value", place), text, place);
        return target.setText(text.text());
    case TARVO_VALUE_INTEGER:
        read(member(value, "value", place), integer, place);
        return target.setInteger(integer);
    case TARVO_VALUE_BOOLEAN:
        readBoolean(member(value, "value", place), boolean, place);
        return target.setBoolean(boolean);
    case TARVO_VALUE_REAL:
        read(member(value, "value", place), real, place);
        return target.setReal(real);
    default:
        return;
    }
}

template <class Element>
void resize(tarvo::ScalarArray<Element>& array, std::size_t count) {
    array.elements().resize(count);
}

template <class Element>
void resize(tarvo::ObjectArray<Element>& array, std::size_t count) {
    array.resize(count);
}

constexpr bool isBoolean(std::size_t kind) {
    return kind == TARVO_PERSIST_BOOLEAN || kind == TARVO_PERSIST_BOOLEAN_ARRAY;
}

template <std::size_t Kind>
void readInto(TARVOPersistenceValue& target, const json& value, const Place& place) {
    const auto readOne = [](const json& from, auto& to, const Place& where) {
        if constexpr (isBoolean(Kind))
            readBoolean(from, to, where);
        else
            read(from, to, where);
    };
    auto& content = target.content.emplace<Kind>();
    if constexpr (requires { content.elements(); }) {
        if (!value.is_array())
            failAt(place, "is no array");
        resize(content, value.size());
        for (std::size_t i = 0; i < value.size(); ++i)
            readOne(value[i], content.elements()[i], Place(place, std::to_string(i)));
    } else {
        readOne(value, content, place);
    }
}

// The functions of all kinds, each in the place of its kind.
template <std::size_t... Kinds>
void readKind(std::index_sequence<Kinds...>, std::uint32_t kind, TARVOPersistenceValue& target,
              const json& value, const Place& place) {
    static constexpr decltype(&readInto<0>) kFunctions[] = {&readInto<Kinds>...};
    kFunctions[kind](target, value, place);
}

void readValue(TARVOPersistenceValue& target, const json& value, const Place& place) {
    if (!value.is_object())
        failAt(place, "is no object");
    const auto kind = TARVO::kindOfText(toUtf16(textMember(value, "type", place)));
    if (!kind)
        failAt(place, "\"type\" is no kind of value; docs/saved-state.md lists them");
    readKind(std::make_index_sequence<TARVO::kLastKind + 1>(), *kind, target,
             member(value, "value", place), place);
}

// Nodes stand as deep as the file says, so those that are still to come stand in a list.
void readTree(const json& root, TARVOPersistenceNode& target) {
    struct PendingNode {
        const json* content;
        TARVOPersistenceNode* target;
        const Place* place;
        std::size_t level;
    };
    std::deque<Place> places(1);
    std::vector<PendingNode> pending{{&root, &target, &places.front(), 0}};
    while (!pending.empty()) {
        const PendingNode next = pending.back();
        const Place& place = *next.place;
        pending.pop_back();
        if (!next.content->is_object())
            failAt(place, "is no object");
        if (next.level > TARVO::kMostLevels)
            failAt(place, "is more than 1,000 levels deep, which TARVO doesn't read");
        for (const auto& [name, value] : objectMember(*next.content, "values", place).items())
            readValue(next.target->addValue(toUtf16(name)), value, Place(place, name));
        for (const auto& [name, node] : objectMember(*next.content, "nodes", place).items())
            pending.push_back({&node, &next.target->addNode(toUtf16(name)),
                               &places.emplace_back(place, name), next.level + 1});
    }
}

void writeFile(const std::string& path, std::span<const char> bytes) {
    const std::u16string filePath = toUtf16(path);
    TARVO::platform::OpenedFile opened = TARVO::platform::File::openExclusive(filePath);
    if (opened.error == TARVO::platform::FileError::notFound)
        opened = TARVO::platform::File::createExclusive(filePath);
    if (opened.error != TARVO::platform::FileError::none ||
        opened.file.write(bytes) != bytes.size() || !opened.file.truncateHere())
        throw Failure("cannot write " + path);
}

} // namespace

void makeState(const std::string& treeFile, const std::string& payloadFile) {
    const json tree = readJson(treeFile);
    const auto root = TARVOPersistenceNode::make();
    tellFile(treeFile, [&] { readTree(tree, *root); });
    const std::vector<std::uint8_t> payload = encodeStream(*root);
    writeFile(payloadFile, {reinterpret_cast<const char*>(payload.data()), payload.size()});
}

} // namespace tool
