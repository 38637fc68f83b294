// The decoder of the stream form on arbitrary bytes: it must take all of them, tell where and why
// the bad ones end, and read the good ones as what they are read as when they are written again.
#include "fuzz/require.h"
#include "persistence/stream_decoder.h"
#include "tool/stream_writer.h"

#include <span>
#include <vector>

using fuzz::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto part = TARVO::TARVOPersistenceNode::make();
    bool isGood = true;
    try {
        TARVO::decodeStreamUpToDamage({data, size}, *part);
    } catch (const TARVO::StreamError& error) {
        isGood = false;
        require(error.code() == RC_END_OF_DATA || error.code() == RC_BAD_DATA, "Another code.");
        require(error.offset() <= size && *error.reason() != '\0', "A fault without a place.");
    }
    // What was read can be written and is read again, by either function.
    const auto written = tool::encodeStream(*part);
    const auto record = std::span(written).subspan(TARVO::kStreamHeaderSize);
    require(tool::encodeStream(*TARVO::decodeStream(record)) == written, "Read differently.");
    try {
        const auto whole = TARVO::decodeStream({data, size});
        require(isGood && tool::encodeStream(*whole) == written, "Taken by one function alone.");
    } catch (const TARVO::StreamError&) {
        require(!isGood, "Refused by one function alone.");
    }
    return 0;
}
