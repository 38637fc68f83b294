// The reader of registry files against the definition of their language, over texts that are cut
// and spliced from the corpus of the fuzz target, where what is odd stands once. A failure names
// the seed, which alone brings the text back.
#include "registry/registry_parser.h"
#include "tests/support/registry_difference.h"
#include "tests/support/registry_oracle.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::chrono_literals;
using namespace std::string_view_literals;

constexpr std::uint64_t kMostTexts = 20'000;
constexpr std::uint64_t kFewestTexts = 1'000;
constexpr auto kTimeForMore = 10s; // slow surroundings get by with fewer texts
constexpr std::size_t kMaxText = 1400;

// A reader may take plain text many bytes at a time: what is odd must come at every place in it.
constexpr auto kPlain = "a plain text that fills blocks of bytes: [0123456789]{}."sv;
constexpr std::u16string_view kKnownIds[] = {u"", u"one", u"three",
                                             u"{3b78cdeb-7fe8-4542-b58b-26205774d82a}"};

struct Corpus {
    std::vector<std::string> files;
    std::vector<std::string> contents; // what stands inside the well-formed `registry` elements
    std::vector<std::string> faults;   // and inside the others
    std::vector<std::string> pieces;   // tags, attributes, their values, texts
};

void cut(const std::string& text, std::vector<std::string>& pieces) {
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find_first_of("<>\"", begin + 1), text.size());
        const std::size_t close = text.find('>', begin);
        pieces.push_back(text.substr(begin, end - begin));
        if (text[begin] == '<' && close != std::string::npos)
            pieces.push_back(text.substr(begin, close + 1 - begin));
        else if (end - begin > 1)
            pieces.push_back(text.substr(begin + 1, end - begin - 1));
        begin = end;
    }
}

bool isWellFormed(const std::string& text) {
    return tests::parseByExpressions(text, {}).result == 0;
}

Corpus readCorpus() {
    std::map<std::string, std::string> sorted; // a folder's own order differs between systems
    for (const auto& entry : std::filesystem::directory_iterator(TARVO_TEST_CORPUS)) {
        std::ostringstream text;
        text << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        sorted.emplace(entry.path().filename().string(), text.str());
    }
    Corpus corpus;
    for (const auto& [name, text] : sorted) {
        corpus.files.push_back(text);
        cut(text, corpus.pieces);
        const std::size_t end = text.rfind("</registry>");
        if (text.starts_with("<registry") && end != std::string::npos)
            (isWellFormed(text) ? corpus.contents : corpus.faults)
                .push_back(text.substr(text.find('>') + 1, end - text.find('>') - 1));
    }
    return corpus;
}

class Splicer {
  public:
    explicit Splicer(std::uint64_t seed) : random_(seed) {}

    std::string splice() {
        const std::size_t kind = below(10);
        if (kind == 0) {
            for (std::size_t count = below(40); count > 0; --count)
                text_ += anyOf(corpus().pieces);
        } else if (kind == 1) {
            for (std::size_t count = 1 + below(2); count > 0; --count)
                text_ += anyOf(corpus().files);
        } else {
            addDocument();
        }
        for (std::size_t count = kind < 5 ? below(3) : 0; count > 0; --count)
            mutate();
        text_.resize(std::min(text_.size(), kMaxText));
        return text_;
    }

    std::size_t below(std::size_t bound) { return static_cast<std::size_t>(random_() % bound); }

  private:
    static const Corpus& corpus() {
        static const Corpus corpus = readCorpus();
        return corpus;
    }

    const std::string& anyOf(const std::vector<std::string>& from) {
        return from[below(from.size())];
    }

    void addDocument() {
        text_ += below(6) == 0 ? "<registry id=\"one\">" : "<registry id=\"two\">";
        for (std::size_t count = 1 + below(4); count > 0; --count) {
            const std::string& content = anyOf(below(6) == 0 ? corpus().faults : corpus().contents);
            if (text_.size() + content.size() > kMaxText / 2)
                continue;
            const std::string_view around[] = {""sv, ""sv, "key"sv, "foo"sv};
            const std::string name(around[below(std::size(around))]);
            text_ +=
                name.empty() ? content : "<" + name + " name=\"\">\n" + content + "</" + name + ">";
        }
        text_ += "</registry>\n";
        if (below(8) > 0)
            tellNamesApart();
    }

    // Otherwise most documents would end at a name that stands there twice.
    void tellNamesApart() {
        constexpr auto start = "name=\""sv;
        for (std::size_t at = text_.find(start); at != std::string::npos;
             at = text_.find(start, at + 1)) {
            text_.insert(at + start.size(), std::to_string(at));
        }
    }

    // Mostly where a text or an attribute's value begins.
    std::size_t anyPlace() {
        const std::size_t place = below(text_.size() + 1);
        const std::size_t border = text_.find_first_of(">\"", place);
        return below(4) == 0 || border == std::string::npos ? place : border + 1;
    }

    void mutate() {
        const std::size_t place = anyPlace();
        switch (below(6)) {
        case 0:
            text_.erase(place, 1 + below(8));
            break;
        case 1:
            text_.insert(place, 1, static_cast<char>(below(256)));
            break;
        case 2:
            text_.insert(place, text_.substr(below(text_.size() + 1), 1 + below(40)));
            break;
        case 3:
            text_.insert(place, kPlain.substr(0, below(kPlain.size())));
            [[fallthrough]];
        default:
            text_.insert(place, anyOf(corpus().pieces));
            text_.insert(place, kPlain.substr(0, below(kPlain.size())));
        }
    }

    std::mt19937_64 random_;
    std::string text_;
};

struct Text {
    std::string bytes;
    std::u16string knownId;
};

// The same seed gives the same text, on every platform.
Text textOf(std::uint64_t seed) {
    Splicer splicer(seed);
    return {splicer.splice(), std::u16string(kKnownIds[splicer.below(std::size(kKnownIds))])};
}

TEST(RegistryReader, ReadsEveryTextAsItsLanguageIsDefined) {
    const auto end = std::chrono::steady_clock::now() + kTimeForMore;
    for (std::uint64_t seed = 0; seed < kMostTexts; ++seed) {
        if (seed >= kFewestTexts && std::chrono::steady_clock::now() > end) {
            break;
        }
        const auto [bytes, knownId] = textOf(seed);
        ASSERT_EQ(tests::registryDifference(bytes, knownId), "")
            << "seed " << seed << ": \"" << tests::escaped(bytes) << '"';
    }
}

// Two readers easily agree on texts that both refuse.
TEST(RegistryTexts, ReachEveryOutcome) {
    std::uint64_t filled = 0;
    std::uint64_t unchanged = 0;
    std::map<std::string_view, std::uint64_t> faults;
    for (std::uint64_t seed = 0; seed < kFewestTexts; ++seed) {
        const auto [bytes, knownId] = textOf(seed);
        TARVO::RegistryParser parser(TARVO::TarvoRegistry::makeRoot(), knownId);
        if (parser.parse(bytes) == TARVO::ParseOutcome::malformed)
            ++faults[parser.fault().reason];
        const tests::OracleResult result = tests::parseByExpressions(bytes, knownId);
        filled +=
            result.result == 0 && !(result.root->values.empty() && result.root->subKeys.empty());
        unchanged += result.result == -1;
    }
    EXPECT_GT(filled, kFewestTexts * 3 / 10);
    EXPECT_GT(unchanged, kFewestTexts / 100);
    EXPECT_EQ(faults.size(), 11u); // as many as the reader tells
    for (const auto& [reason, count] : faults)
        EXPECT_GE(count, 4u) << reason;
}

} // namespace
