// The reader of registry files on arbitrary bytes: it must take all of them, and it must read short
// ones exactly as their language is defined.
#include "registry/registry_parser.h"

#include "tests/support/registry_difference.h"

#include <cstdio>
#include <cstdlib>

namespace {

// The expressions of the definition recurse as deep as a tag is long, and what looks like a comment
// costs them the cube of the white space in it.
constexpr std::size_t kMostCompared = 1000;
constexpr std::size_t kMostSpace = 16;

constexpr std::u16string_view kKnownId = u"one";

bool isComparable(std::string_view bytes) {
    constexpr std::string_view kSpace = " \t\n\v\f\r";
    std::size_t run = 0;
    for (const char byte : bytes) {
        run = kSpace.find(byte) == std::string_view::npos ? 0 : run + 1;
        if (run > kMostSpace) {
            return false;
        }
    }
    return bytes.size() <= kMostCompared;
}

void parse(std::string_view bytes) {
    TARVO::RegistryParser parser(TARVO::TarvoRegistry::makeRoot(), std::u16string(kKnownId));
    if (parser.parse(bytes) != TARVO::ParseOutcome::malformed) {
        return;
    }
    const TARVO::MarkupFault& fault = parser.fault();
    if (fault.offset >= bytes.size() || bytes[fault.offset] != '<' || *fault.reason == '\0') {
        std::fputs("A malformed text whose fault has no place or reason.\n", stderr);
        std::abort();
    }
}

void compare(std::string_view bytes) {
    const std::string difference = tests::registryDifference(bytes, kKnownId);
    if (!difference.empty()) {
        std::fprintf(stderr, "Read differently: %s: \"%s\"\n", difference.c_str(),
                     tests::escaped(bytes).c_str());
        std::abort();
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    parse(bytes);
    if (isComparable(bytes)) {
        compare(bytes);
    }
    return 0;
}
