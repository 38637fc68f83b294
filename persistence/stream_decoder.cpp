#include "persistence/stream_decoder.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <iterator>
#include <type_traits>
#include <vector>

namespace TARVO {

namespace {

static_assert(std::endian::native == std::endian::little, "fields are taken as they are in memory");

// Goes through numbers that stand in bytes at any alignment. A vector that is filled from such a
// range isn't cleared first, which would take as long as the copy.
template <class Number>
class PackedNumbers {
  public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = Number;
    using difference_type = std::ptrdiff_t;
    using pointer = const Number*;
    using reference = Number;

    PackedNumbers() = default;
    explicit PackedNumbers(const std::uint8_t* place) : place_(place) {}

    Number operator*() const {
        Number number{};
        std::memcpy(&number, place_, sizeof number);
        return number;
    }
    PackedNumbers& operator++() {
        place_ += sizeof(Number);
        return *this;
    }
    bool operator==(const PackedNumbers&) const = default;

  private:
    const std::uint8_t* place_ = nullptr;
};

// The bytes, front to back.
class ByteReader {
  public:
    explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

    std::size_t offset() const { return offset_; }

    template <class Number>
    Number read() {
        Number number{};
        std::memcpy(&number, take(sizeof number), sizeof number);
        return number;
    }

    // A count of things that have at least so many bytes each.
    std::size_t readCount(std::size_t smallest) {
        const std::size_t start = offset_;
        const std::size_t count = read<std::uint32_t>();
        if (count > (bytes_.size() - offset_) / smallest)
            throw StreamError(RC_END_OF_DATA, start, "a count of more than the data can hold");
        return count;
    }

    // Copies a text into a string.
    template <class Text>
    void readText(Text& text) {
        text.resize(readCount(sizeof(char16_t)));
        const std::size_t size = text.size() * sizeof(char16_t);
        std::memcpy(text.data(), take(size), size);
    }

    // Copies as many numbers as a count says into a vector.
    template <class Number>
    void readNumbers(std::vector<Number>& numbers) {
        const std::size_t size = readCount(sizeof(Number)) * sizeof(Number);
        const std::uint8_t* const first = take(size);
        numbers.assign(PackedNumbers<Number>(first), PackedNumbers<Number>(first + size));
    }

  private:
    const std::uint8_t* take(std::size_t size) {
        if (size > bytes_.size() - offset_)
            throw StreamError(RC_END_OF_DATA, offset_, "the data end here, too early");
        const std::uint8_t* const start = bytes_.data() + offset_;
        offset_ += size;
        return start;
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t offset_ = 0;
};

constexpr std::size_t kSmallestText = 4;
constexpr std::size_t kSmallestTagged = 4;        // an empty value
constexpr std::size_t kSmallestValue = 4 + 4 + 4; // name, kind, payload
constexpr std::size_t kSmallestNode = 4 + 4 + 4;  // name, value count, node count

class StreamDecoder {
  public:
    StreamDecoder(std::span<const std::uint8_t> bytes, bool isUpToDamage)
        : bytes_(bytes), isUpToDamage_(isUpToDamage) {}

    // Nodes that have begun stand in a list, so that depth costs no stack.
    void decode(TARVOPersistenceNode& root) {
        begin(root);
        while (!open_.empty()) {
            OpenNode& last = open_.back();
            if (last.nodesAhead == 0) {
                open_.pop_back();
                continue;
            }
            --last.nodesAhead;
            if (open_.size() > kMostLevels)
                throw StreamError(RC_BAD_DATA, bytes_.offset(), "more than 1,000 levels of nodes");
            begin(last.node->addNode(readText()));
        }
    }

  private:
    struct OpenNode {
        TARVOPersistenceNode* node;
        std::size_t nodesAhead;
    };

    void begin(TARVOPersistenceNode& node) {
        const std::size_t count = readEntryCount(kSmallestValue);
        if (!isUpToDamage_)
            node.values.reserve(count);
        for (std::size_t i = 0; i < count; ++i)
            readValue(node);
        open_.push_back({&node, readEntryCount(kSmallestNode)});
    }

    // A count of entries that can't all be there ends the decoding at once, unless somebody wants
    // to have those that are there.
    std::size_t readEntryCount(std::size_t smallest) {
        return isUpToDamage_ ? bytes_.read<std::uint32_t>() : bytes_.readCount(smallest);
    }

    void readValue(TARVOPersistenceNode& node) {
        TARVOPersistenceNode::Name name(node.values.get_allocator());
        bytes_.readText(name);
        const std::size_t start = bytes_.offset();
        const auto kind = bytes_.read<std::uint32_t>();
        if (kind > kLastKind)
            throw StreamError(RC_END_OF_DATA, start, "a kind that is none of 0 to 12");
        const auto [value, isNew] = node.values.try_emplace(std::move(name));
        try {
            value->second.fill(kind, [this](auto& content) { readInto(content); });
        } catch (...) {
            node.values.erase(value); // a value is there as a whole or not at all
            throw;
        }
    }

    template <class Number>
    requires std::is_arithmetic_v<Number>
    void readInto(Number& number) { number = bytes_.read<Number>(); }
    void readInto(tarvo::String& string) { bytes_.readText(string.text()); }
    void readInto(VaskValueImpl& value) {
        switch (bytes_.read<std::uint32_t>()) {
        case TARVO_VALUE_STRING:
            value.setText(readText());
            break;
        case TARVO_VALUE_INTEGER:
            value.setInteger(bytes_.read<std::int32_t>());
            break;
        case TARVO_VALUE_BOOLEAN:
            value.setBoolean(bytes_.read<std::uint32_t>());
            break;
        case TARVO_VALUE_REAL:
            value.setReal(bytes_.read<double>());
            break;
        default:
            break; // any other is empty, as the value is already
        }
    }
    template <class Number>
    void readInto(tarvo::ScalarArray<Number>& array) {
        bytes_.readNumbers(array.elements());
    }
    void readInto(tarvo::StringArray& array) { readEach(array, kSmallestText); }
    void readInto(tarvo::ObjectArray<VaskValueImpl>& array) { readEach(array, kSmallestTagged); }

    template <class Array>
    void readEach(Array& array, std::size_t smallest) {
        array.resize(bytes_.readCount(smallest));
        for (auto& element : array.elements())
            readInto(element);
    }

    std::u16string readText() {
        std::u16string text;
        bytes_.readText(text);
        return text;
    }

    ByteReader bytes_;
    bool isUpToDamage_;
    std::vector<OpenNode> open_;
};

} // namespace

std::optional<std::span<const std::uint8_t>> nodeRecordOf(std::span<const std::uint8_t> payload) {
    constexpr std::size_t kVersionOffset = kStreamMark.size();
    constexpr std::uint8_t kNoRecord = 0;
    if (payload.size() <= kVersionOffset ||
        !std::ranges::equal(payload.first(kVersionOffset), kStreamMark) ||
        payload[kVersionOffset] == kNoRecord)
        return std::nullopt;
    if (payload[kVersionOffset] > kStreamVersion)
        throw StreamError(RC_FORMAT_TOO_NEW, kVersionOffset, "a version above 1");
    if (payload.size() < kStreamHeaderSize)
        throw StreamError(RC_END_OF_DATA, kVersionOffset + 1, "the header is cut short");
    return payload.subspan(kStreamHeaderSize);
}

tarvo::Reference<TARVOPersistenceNode> decodeStream(std::span<const std::uint8_t> record) {
    auto root = TARVOPersistenceNode::make();
    StreamDecoder(record, false).decode(*root);
    return root;
}

void decodeStreamUpToDamage(std::span<const std::uint8_t> record, TARVOPersistenceNode& root) {
    StreamDecoder(record, true).decode(root);
}

} // namespace TARVO
