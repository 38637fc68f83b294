#include "tool/stream_writer.h"

#include "persistence/stream_decoder.h"
#include "tool/state_walk.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <utility>
#include <variant>

namespace tool {

namespace {

using TARVO::TARVOPersistenceNode;
using TARVO::VaskValueImpl;

class StreamWriter {
  public:
    StreamWriter() {
        put(std::span<const std::uint8_t>(TARVO::kStreamMark));
        putNumber(TARVO::kStreamVersion);
        putCount(0); // nobody reads it
    }

    void values(const NodeValues& values, std::size_t nodeCount) {
        putCount(values.size());
        for (const auto& [name, value] : values) {
            putText(name);
            putNumber(value->type());
            std::visit([this](const auto& content) { putContent(content); }, value->content);
        }
        putCount(nodeCount);
    }
    void beginNode(std::u16string_view name) { putText(name); }
    void endNode() {}

    std::vector<std::uint8_t> take() { return std::move(bytes_); }

  private:
    template <class Element>
    void put(std::span<const Element> elements) {
        const auto bytes = std::as_bytes(elements);
        const auto* const first = reinterpret_cast<const std::uint8_t*>(bytes.data());
        bytes_.insert(bytes_.end(), first, first + bytes.size());
    }

    template <class Number>
    void putNumber(Number number) {
        put(std::span<const Number>(&number, 1));
    }
    void putCount(std::size_t count) { putNumber(static_cast<std::uint32_t>(count)); }
    void putText(std::u16string_view text) {
        putCount(text.size());
        put(std::span<const char16_t>(text));
    }

    void putContent(double real) { putNumber(real); }
    void putContent(std::int32_t integer) { putNumber(integer); }
    void putContent(std::uint32_t number) { putNumber(number); }
    void putContent(const tarvo::String& string) { putText(string.text()); }
    void putContent(const VaskValueImpl& value) {
        putNumber(value.type());
        if (const auto text = value.text())
            putText(*text);
        else if (const auto integer = value.integer())
            putNumber(*integer);
        else if (const auto boolean = value.boolean())
            putNumber(*boolean);
        else if (const auto real = value.real())
            putNumber(*real);
    }
    template <class Element>
    void putContent(const tarvo::ScalarArray<Element>& array) {
        putCount(array.elements().size());
        put(std::span<const Element>(array.elements()));
    }
    template <class Element>
    void putContent(const tarvo::ObjectArray<Element>& array) {
        putCount(array.elements().size());
        for (const Element& element : array.elements())
            putContent(element);
    }

    std::vector<std::uint8_t> bytes_;
};

} // namespace

std::vector<std::uint8_t> encodeStream(const TARVOPersistenceNode& root) {
    StreamWriter writer;
    walkState(root, writer);
    return writer.take();
}

} // namespace tool
