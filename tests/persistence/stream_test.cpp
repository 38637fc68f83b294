// The stream form: what its bytes mean, and what becomes of bytes that mean nothing.
#include "tests/persistence/state_support.h"
#include "tests/support/scarce_memory.h"
#include "tests/support/small_stack.h"

#include <cstring>

namespace {

using namespace tests;

const Bytes kHeader = {'M', 'O', 'R', 'V', 'E', 'N', 0, 1, 0, 0, 0, 0};
constexpr std::uint8_t kNowhere = 0xFF;

Bytes operator+(Bytes left, const Bytes& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Bytes number(std::uint32_t value) {
    Bytes bytes(4);
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes;
}

Bytes text(std::string_view ascii) {
    Bytes bytes = number(static_cast<std::uint32_t>(ascii.size()));
    for (const char unit : ascii)
        bytes = bytes + Bytes{static_cast<std::uint8_t>(unit), 0};
    return bytes;
}

// What comes of a payload: the tree as text, or the code.
std::string outcome(const Bytes& payload) {
    Component component;
    const auto state = streamState(payload);
    const TarvoResult result = depersist(component, state.get());
    if (result != RC_OK)
        return std::to_string(result) + (component.log.empty() ? "" : " after load");
    return component.loaded == state ? "as it is" : shown(component.loaded.get());
}

// A root with one value of this kind and payload.
std::string outcomeOf(std::uint32_t kind, const Bytes& content) {
    return outcome(kHeader + number(1) + text("v") + number(kind) + content + number(0));
}

TEST(Stream, IsDecodedOnlyWithItsHeader) {
    const Bytes empty = number(0) + number(0);
    const auto version = [&](std::uint8_t byte) {
        Bytes payload = kHeader + empty;
        payload[7] = byte;
        return payload;
    };
    const struct {
        Bytes payload;
        const char* outcome;
    } cases[] = {
        {{}, "as it is"},
        {Bytes(kHeader.begin(), kHeader.begin() + 7), "as it is"},
        {Bytes{'M', 'O', 'R', 'V', 'E', 'N', 1, 1, 0, 0, 0, 0} + empty, "as it is"},
        {version(0), "as it is"},
        {version(1), "{}"},
        {version(2), "113"},
        {version(255), "113"},
        {Bytes(kHeader.begin(), kHeader.begin() + 8), "112"},
        {Bytes(kHeader.begin(), kHeader.begin() + 11), "112"},
        {kHeader, "112"},
        {Bytes{'M', 'O', 'R', 'V', 'E', 'N', 0, 1, 9, 9, 9, 9} + empty, "{}"},
        {kHeader + empty + Bytes{1, 2, 3}, "{}"},
    };
    for (const auto& [payload, expected] : cases)
        EXPECT_EQ(outcome(payload), expected) << payload.size();
}

TEST(Stream, HoldsEveryKind) {
    const Bytes real = {0, 0, 0, 0, 0, 0, 0xF8, 0x3F};
    const Bytes minusTwo = {0xFE, 0xFF, 0xFF, 0xFF};
    const struct {
        std::uint32_t kind;
        Bytes content;
        const char* outcome;
    } cases[] = {
        {0, real, "real 1.5"},
        {1, minusTwo, "int -2"},
        {2, number(7), "bool 7"},
        {3, text("ab"), "string ab"},
        {3, text(""), "string "},
        {4, minusTwo, "enum 4294967294"},
        {5, number(0) + text("ab"), "value string:ab"},
        {5, number(1) + minusTwo, "value int:-2"},
        {5, number(2) + number(7), "value bool:7"},
        {5, number(3) + real, "value real:1.5"},
        {5, number(4), "value empty"},
        {5, number(5), "value empty"},
        {5, number(0xFFFFFFFF), "value empty"},
        {6, number(2) + real + real, "real[] [1.5,1.5]"},
        {7, number(2) + minusTwo + number(1), "int[] [-2,1]"},
        {8, number(1) + number(7), "bool[] [7]"},
        {9, number(2) + text("a") + text(""), "string[] [a,]"},
        {10, number(1) + number(3), "enum[] [3]"},
        {11, number(3) + number(4) + number(1) + minusTwo + number(0) + text("a"),
         "value[] [empty,int:-2,string:a]"},
        {12, number(3) + Bytes{1, 2, 255}, "byte[] [1,2,255]"},
        {12, number(0), "byte[] []"},
    };
    for (const auto& [kind, content, expected] : cases)
        EXPECT_EQ(outcomeOf(kind, content), std::string("{v=") + expected + "}");
    EXPECT_EQ(outcomeOf(13, number(0)), "112");
    EXPECT_EQ(outcomeOf(0xFFFFFFFF, number(0)), "112");
}

TEST(Stream, ComesBackAsItWasWritten) {
    EXPECT_EQ(outcome(payloadOf(richTree())), kRichText);
}

TEST(Stream, KeepsTheLaterOfTwoOfOneName) {
    const Bytes one = text("v") + number(1) + number(1);
    const Bytes two = text("v") + number(3) + text("two");
    EXPECT_EQ(outcome(kHeader + number(2) + one + two + number(0)), "{v=string two}");
    const Bytes empty = number(0) + number(0);
    EXPECT_EQ(outcome(kHeader + number(1) + one + number(3) + text("v") + number(1) + one +
                      number(0) + text("w") + empty + text("v") + empty),
              "{v=int 1; v={}; w={}}");
}

// Decodes in this program's own copy of the library, whose memory is the program's.
TarvoResult decodeWithLittleMemory(const Bytes& payload) {
    constexpr std::size_t kEnough = 100000;
    Component component;
    const auto state = streamState(payload);
    const ScarceMemory scarce(kEnough);
    return tarvoDepersistPMCFromTransitionFormat(
        component.pair(), reinterpret_cast<IVaskInterface*>(state.get()), 1, 2);
}

TEST(Stream, EndsWhereverItIsCut) {
    const Bytes payload = payloadOf(richTree());
    for (std::size_t size = 8; size < payload.size(); ++size)
        EXPECT_EQ(outcome(Bytes(payload.begin(), payload.begin() + static_cast<long>(size))), "112")
            << size;
}

TEST(Stream, BelievesNoCountWithoutBytesBehindIt) {
    const Bytes huge = number(0xFFFFFFFF);
    const Bytes some = Bytes(64);
    for (const Bytes& payload :
         {huge + some, number(1) + huge + some, number(0) + huge + some,
          number(0) + number(1) + huge + some, number(0) + number(1) + text("n") + huge + some})
        EXPECT_EQ(decodeWithLittleMemory(kHeader + payload), RC_END_OF_DATA);
    for (const Bytes& before : {number(3), number(5) + number(0), number(6), number(7), number(8),
                                number(9), number(9) + number(1), number(10), number(11),
                                number(11) + number(1) + number(0), number(12)})
        EXPECT_EQ(decodeWithLittleMemory(kHeader + number(1) + text("v") + before + huge + some),
                  RC_END_OF_DATA)
            << testing::PrintToString(before);

    // Wherever else four bytes are overwritten, no worse comes of it.
    const Bytes good = payloadOf(richTree());
    for (std::size_t place = kHeader.size(); place + 4 <= good.size(); ++place) {
        Bytes payload = good;
        std::fill_n(payload.begin() + static_cast<long>(place), 4, kNowhere);
        const TarvoResult result = decodeWithLittleMemory(payload);
        EXPECT_TRUE(result == RC_OK || result == RC_END_OF_DATA) << place << ": " << result;
    }
}

Bytes nested(std::uint32_t levels) {
    Bytes payload = kHeader;
    const Bytes level = number(0) + number(1) + text("n");
    payload.reserve(payload.size() + (levels + 1) * level.size());
    for (std::uint32_t i = 0; i < levels; ++i)
        payload.insert(payload.end(), level.begin(), level.end());
    return payload + number(0) + number(0);
}

TEST(Stream, CanBeAThousandLevelsDeep) {
    runWithSmallStack([] {
        for (const auto& [levels, result] :
             {std::pair{1000u, RC_OK}, {1001u, RC_BAD_DATA}, {1000000u, RC_BAD_DATA}}) {
            Component component;
            EXPECT_EQ(depersist(component, streamState(nested(levels)).get()), result) << levels;
        }
    });
}

} // namespace
