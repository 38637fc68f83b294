// Saved state: its stream form decoded into a tree beside protobuf, which parses the same content
// into maps of names; an array beside memcpy; and values read by name beside a hash map. Texts are
// UTF-16 here and UTF-8 there, so that of ASCII the peer has half of the bytes to read and to keep.
#include "bench/require.h"
#include "bench/saved_state.pb.h"
#include "bench/state_data.h"
#include "persistence/persist_reader.h"
#include "persistence/stream_decoder.h"
#include "tarvo/persistence.h"
#include "tarvo/text.hpp"

#include <benchmark/benchmark.h>
#include <cstring>
#include <memory>
#include <unordered_map>
#include <variant>

namespace {

using bench::require;

tarvo::Reference<TARVO::TARVOPersistenceNode> decode(const std::vector<std::uint8_t>& payload) {
    const auto record = TARVO::nodeRecordOf(payload);
    require(record.has_value());
    return TARVO::decodeStream(*record);
}

void decodeByTarvo(benchmark::State& state) {
    const auto& payload = bench::mixedState().stream;
    for (auto _ : state)
        require(decode(payload)->nodes.size() == bench::kNodes);
}
BENCHMARK(decodeByTarvo)->Name("decode 100,000 mixed values/tarvo")->Unit(benchmark::kMillisecond);

void decodeByProtobuf(benchmark::State& state) {
    const std::string& message = bench::mixedState().message;
    for (auto _ : state) {
        bench::Node root;
        require(root.ParseFromString(message) && root.nodes_size() == bench::kNodes);
    }
}
BENCHMARK(decodeByProtobuf)
    ->Name("decode 100,000 mixed values/protobuf")
    ->Unit(benchmark::kMillisecond);

void decodeArray(benchmark::State& state) {
    const auto payload = bench::arrayPayload();
    for (auto _ : state)
        require(decode(payload)->values.size() == 1);
}
BENCHMARK(decodeArray)->Name("decode 1,000,000 reals/tarvo")->Unit(benchmark::kMicrosecond);

// Into memory that is new each time, as the decoder's is.
void copyArray(benchmark::State& state) {
    const auto payload = bench::arrayPayload();
    for (auto _ : state) {
        auto copy = std::make_unique_for_overwrite<double[]>(bench::kReals);
        std::memcpy(copy.get(), payload.data(), bench::kReals * sizeof(double));
        benchmark::DoNotOptimize(copy.get());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(copyArray)->Name("decode 1,000,000 reals/memcpy")->Unit(benchmark::kMicrosecond);

// The reals of a node, a million times in all.
constexpr int kReads = 1'000'000;

std::vector<std::u16string> namesOfReals(const TARVO::TARVOPersistenceNode& node) {
    std::vector<std::u16string> names;
    for (const auto& [name, value] : node.values)
        if (value.type() == TARVO_PERSIST_REAL)
            names.emplace_back(name);
    return names;
}

void readByTarvo(benchmark::State& state) {
    const auto node = bench::mixedNode(0);
    const auto reader = TARVO::TarvoPersistReader::make(u"", node);
    const auto names = namesOfReals(*node);
    const IVaskPersistReader& pair = *reader->readerPair();
    for (auto _ : state) {
        double sum = 0;
        for (int i = 0; i < kReads; ++i) {
            tarvo::ConstantString name(names[static_cast<std::size_t>(i) % names.size()].c_str());
            double real = 0;
            require(pair.table->GetReal(pair.me, name.pair(), &real) == RC_OK);
            sum += real;
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(readByTarvo)->Name("read 1,000,000 values/tarvo")->Unit(benchmark::kMillisecond);

void readByHashMap(benchmark::State& state) {
    const auto node = bench::mixedNode(0);
    const auto names = namesOfReals(*node);
    std::unordered_map<std::u16string, std::variant<double, std::int32_t>> values;
    for (const auto& [name, value] : node->values)
        values.emplace(name,
                       value.type() == TARVO_PERSIST_REAL ? std::get<double>(value.content) : 0);
    for (auto _ : state) {
        double sum = 0;
        for (int i = 0; i < kReads; ++i) {
            const auto found = values.find(names[static_cast<std::size_t>(i) % names.size()]);
            require(found != values.end());
            sum += std::get<double>(found->second);
        }
        benchmark::DoNotOptimize(sum);
    }
}
BENCHMARK(readByHashMap)
    ->Name("read 1,000,000 values/unordered_map")
    ->Unit(benchmark::kMillisecond);

} // namespace
