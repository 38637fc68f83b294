// The decoder of the bag form on a bag that is made up from arbitrary bytes while it is asked. What
// it decodes without a complaint must be a tree that can be written and read.
#include "fuzz/require.h"
#include "persistence/bag_decoder.h"
#include "persistence/stream_decoder.h"
#include "tarvo/state_source.hpp"
#include "tool/stream_writer.h"

#include <span>
#include <unordered_map>

namespace {

using fuzz::require;
using tarvo::StateValue;

class MadeUpBag final : public tarvo::StateSource {
  public:
    explicit MadeUpBag(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  private:
    std::vector<std::u16string> valueNames() override { return {}; }
    std::vector<std::u16string> nodeNames() override { return {}; }
    tarvo::Reference<IVaskPersistReader> openNode(std::u16string_view) override { return nullptr; }

    // What was said once stays so.
    const StateValue* findValue(std::u16string_view name) override {
        const auto [item, isNew] = items_.try_emplace(std::u16string(name));
        if (isNew)
            item->second = makeItem(name);
        return item->second ? &*item->second : nullptr;
    }

    // The next byte; with none left the bag has only empty values, and so comes to an end.
    std::uint8_t next() {
        if (bytes_.empty())
            return 0;
        const std::uint8_t byte = bytes_.front();
        bytes_ = bytes_.subspan(1);
        return byte;
    }

    std::optional<StateValue> makeItem(std::u16string_view name) {
        const std::uint8_t choice = next();
        if (choice < 0xF0 && name.ends_with(u"valueNames"))
            return makeList(choice % 8, [this] { return makeEntry(); });
        if (choice < 0xF0 && name.ends_with(u"nodeNames"))
            return makeList(choice % 4, [this] { return makeName(); });
        return makeValue(choice);
    }

    template <class Make>
    static StateValue makeList(std::size_t count, Make&& make) {
        if (count == 0)
            return tarvo::Value();
        std::vector<std::u16string> list;
        for (std::size_t i = 0; i < count; ++i)
            list.push_back(make());
        return list;
    }

    std::u16string makeName() {
        static constexpr std::u16string_view kNames[] = {u"", u"a", u"b,int", u"//"};
        return std::u16string(kNames[next() % std::size(kNames)]);
    }

    std::u16string makeEntry() {
        static constexpr std::u16string_view kKinds[] = {
            u",real",         u",int",    u",bool",       u",string",    u",enum",
            u",real[]",       u",int[]",  u",bool[]",     u",string[]",  u",enum[]",
            u",value[]",      u",byte[]", u",real,value", u",int,value", u",bool,value",
            u",string,value", u",value",  u",empty,value"};
        const std::size_t choice = next();
        std::u16string entry = makeName();
        if (choice < std::size(kKinds) * 14)
            entry.append(kKinds[choice % std::size(kKinds)]);
        return entry;
    }

    tarvo::Value makeTagged(std::uint8_t choice) {
        tarvo::Value value;
        switch (choice % 5) {
        case TARVO_VALUE_STRING:
            value.setText(makeName());
            break;
        case TARVO_VALUE_INTEGER:
            value.setInteger(next());
            break;
        case TARVO_VALUE_BOOLEAN:
            value.setBoolean(next());
            break;
        case TARVO_VALUE_REAL:
            value.setReal(next());
            break;
        default:
            break;
        }
        return value;
    }

    std::optional<StateValue> makeValue(std::uint8_t choice) {
        const std::size_t count = choice / 14 % 4;
        switch (choice % 14) {
        case TARVO_PERSIST_REAL:
            return next() / 2.0;
        case TARVO_PERSIST_INTEGER:
            return std::int32_t{next()};
        case TARVO_PERSIST_BOOLEAN:
            return choice > 128;
        case TARVO_PERSIST_STRING:
            return makeName();
        case TARVO_PERSIST_ENUMERATION:
            return tarvo::Enumeration{next()};
        case TARVO_PERSIST_VALUE:
            return makeTagged(next());
        case TARVO_PERSIST_REAL_ARRAY:
            return std::vector<double>(count, 0.5);
        case TARVO_PERSIST_INTEGER_ARRAY:
            return std::vector<std::int32_t>(count, -1);
        case TARVO_PERSIST_BOOLEAN_ARRAY:
            return std::vector<bool>(count, true);
        case TARVO_PERSIST_STRING_ARRAY:
            return std::vector<std::u16string>(count, u"text");
        case TARVO_PERSIST_ENUMERATION_ARRAY:
            return std::vector<tarvo::Enumeration>(count, tarvo::Enumeration{3});
        case TARVO_PERSIST_VALUE_ARRAY:
            return std::vector<tarvo::Value>(count, makeTagged(next()));
        case TARVO_PERSIST_BYTE_ARRAY:
            return std::vector<std::uint8_t>(count, 1);
        default:
            return std::nullopt;
        }
    }

    std::span<const std::uint8_t> bytes_;
    std::unordered_map<std::u16string, std::optional<StateValue>> items_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto bag = tarvo::Reference<tarvo::StateSource>::share(new MadeUpBag({data, size}));
    try {
        const auto written = tool::encodeStream(*TARVO::decodeBag(bag->pair()));
        const auto again =
            TARVO::decodeStream(std::span(written).subspan(TARVO::kStreamHeaderSize));
        require(tool::encodeStream(*again) == written, "A tree that can't be written and read.");
    } catch (const TARVO::StreamError&) {
        require(false, "A tree that can't be read again.");
    } catch (const TARVO::vask_link_error& error) {
        const TARVO::Result code = error.code();
        require(code == RC_NULL_POINTER || code == RC_NOT_AVAILABLE || code == RC_BAD_DATA ||
                    code == RC_END_OF_DATA,
                "A code that nobody gave.");
    }
    return 0;
}
