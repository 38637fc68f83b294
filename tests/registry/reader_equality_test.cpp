// The reader of registry files against the definition of their language, over random texts. A
// failure names the seed, which alone brings the text back.
#include "tests/support/registry_difference.h"
#include "tests/support/registry_oracle.h"
#include "tests/support/registry_texts.h"

#include <chrono>
#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;
using tests::escaped;
using tests::RegistryText;

constexpr std::uint64_t kMostTexts = 20'000;
constexpr std::uint64_t kFewestTexts = 1'000;
constexpr auto kTimeForMore = 10s; // slow surroundings get by with fewer texts

TEST(RegistryReader, ReadsEveryTextAsItsLanguageIsDefined) {
    const auto end = std::chrono::steady_clock::now() + kTimeForMore;
    for (std::uint64_t seed = 0; seed < kMostTexts; ++seed) {
        if (seed >= kFewestTexts && std::chrono::steady_clock::now() > end) {
            break;
        }
        const RegistryText text = tests::registryText(seed);
        const std::string difference = tests::registryDifference(text.bytes, text.knownId);
        ASSERT_EQ(difference, "") << "seed " << seed << ": \"" << escaped(text.bytes) << '"';
    }
}

// Two readers easily agree on texts that both refuse.
TEST(RegistryTexts, ReachEveryOutcome) {
    std::uint64_t filled = 0;
    std::uint64_t malformed = 0;
    std::uint64_t unchanged = 0;
    for (std::uint64_t seed = 0; seed < kFewestTexts; ++seed) {
        const RegistryText text = tests::registryText(seed);
        const tests::OracleResult result = tests::parseByExpressions(text.bytes, text.knownId);
        const bool isEmpty = result.root->values.empty() && result.root->subKeys.empty();
        filled += result.result == 0 && !isEmpty;
        malformed += result.result == 502;
        unchanged += result.result == -1;
    }
    EXPECT_GT(filled, kFewestTexts * 3 / 10);
    EXPECT_GT(malformed, kFewestTexts * 3 / 10);
    EXPECT_GT(unchanged, kFewestTexts / 100);
}

} // namespace
