// Reading the registry: a whole file into a tree beside an XML library's DOM of the same bytes, a
// look-up by path beside hash maps of the standard library, and opening a key of an unchanged file.
#include "bench/heap_use.h"
#include "bench/machine.h"
#include "bench/registry_data.h"
#include "registry/scope.h"

#include <tarvo/registry.h>
#include <tarvo/result.h>

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <pugixml.hpp>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using TARVO::TarvoRegistry;

class TemporaryFile {
  public:
    explicit TemporaryFile(const std::string& bytes)
        : path(std::filesystem::temp_directory_path() /
               ("tarvo-bench-" + std::to_string(std::random_device()()))) {
        std::ofstream(path, std::ios::binary) << bytes;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { std::filesystem::remove(path); }

    const std::filesystem::path path;
};

constexpr std::size_t kMegabyte = 1000 * 1000;

const TemporaryFile& tenMegabytes() {
    static const TemporaryFile file(bench::registryOfSize(10 * kMegabyte, "bench"));
    return file;
}

// Times `load`, whose product is kept until the clock stands, and counts the memory that it takes.
template <class Load>
void loadFile(benchmark::State& state, Load&& load) {
    const auto size = static_cast<double>(std::filesystem::file_size(tenMegabytes().path));
    std::size_t most = 0;
    for (auto _ : state) {
        const std::size_t before = bench::heap().most = bench::heap().now;
        auto product = load();
        state.PauseTiming();
        most = bench::heap().most - before;
        product = {};
        state.ResumeTiming();
    }
    state.SetBytesProcessed(
        static_cast<std::int64_t>(size * static_cast<double>(state.iterations())));
    state.counters["bytes per byte"] = static_cast<double>(most) / size;
}

void loadByTarvo(benchmark::State& state) {
    const std::u16string path = tenMegabytes().path.u16string();
    loadFile(state, [&] {
        tarvo::Reference<TarvoRegistry> root;
        std::u16string id;
        if (TARVO::refreshTree(path, root, id) != RC_OK || root->subKeys.size() != 1)
            std::abort();
        return root;
    });
}
BENCHMARK(loadByTarvo)->Name("load a file of 10 MB/tarvo")->Unit(benchmark::kMillisecond);

void loadByPugixml(benchmark::State& state) {
    pugi::set_memory_management_functions(
        [](std::size_t size) { return bench::heap().allocate(size); },
        [](void* memory) { bench::heap().free(memory); });
    loadFile(state, [&] {
        auto document = std::make_unique<pugi::xml_document>();
        if (!document->load_file(tenMegabytes().path.c_str()))
            std::abort();
        return document;
    });
}
BENCHMARK(loadByPugixml)->Name("load a file of 10 MB/pugixml")->Unit(benchmark::kMillisecond);

// ---- look-up ----

struct Path {
    std::u16string whole;
    std::u16string components[3];
};

const std::vector<Path>& randomPaths() {
    static const std::vector<Path> paths = [] {
        const auto component = [](char16_t letter, std::uint_fast32_t number) {
            std::u16string text(1, letter);
            for (const char digit : std::to_string(number))
                text.push_back(static_cast<char16_t>(digit));
            return text;
        };
        std::mt19937 random(1);
        std::vector<Path> made(4096);
        for (Path& path : made) {
            path.components[0] = component(u'a', random() % 10);
            path.components[1] = component(u'b', random() % 100);
            path.components[2] = component(u'c', random() % 100);
            path.whole = path.components[0] + u"/" + path.components[1] + u"/" + path.components[2];
        }
        return made;
    }();
    return paths;
}

void findByTarvo(benchmark::State& state) {
    const TemporaryFile file(bench::registryOfPaths("paths"));
    tarvo::Reference<TarvoRegistry> root;
    std::u16string id;
    TARVO::refreshTree(file.path.u16string(), root, id);
    const std::vector<Path>& paths = randomPaths();
    std::size_t next = 0;
    const std::size_t before = bench::heap().allocations;
    for (auto _ : state) {
        const TarvoRegistry* key = TARVO::findKey(root.get(), paths[next++ % 4096].whole.c_str());
        if (key == nullptr)
            std::abort();
        benchmark::DoNotOptimize(key);
    }
    state.counters["allocations"] = static_cast<double>(bench::heap().allocations - before);
}
BENCHMARK(findByTarvo)->Name("find a path of 3 among 100,000 keys/tarvo");

struct MapNode {
    std::unordered_map<std::u16string, std::unique_ptr<MapNode>> subKeys;
};

void copyInto(MapNode& target, const TarvoRegistry& source) {
    source.subKeys.forEach([&](const TarvoRegistry& key) {
        auto node = std::make_unique<MapNode>();
        copyInto(*node, key);
        target.subKeys.emplace(key.name(), std::move(node));
    });
}

void findByUnorderedMap(benchmark::State& state) {
    const TemporaryFile file(bench::registryOfPaths("paths"));
    MapNode map;
    {
        tarvo::Reference<TarvoRegistry> root;
        std::u16string id;
        TARVO::refreshTree(file.path.u16string(), root, id);
        copyInto(map, *root);
    }
    const std::vector<Path>& paths = randomPaths();
    std::size_t next = 0;
    for (auto _ : state) {
        const MapNode* node = &map;
        for (const std::u16string& component : paths[next++ % 4096].components)
            node = node->subKeys.find(component)->second.get();
        benchmark::DoNotOptimize(node);
    }
}
BENCHMARK(findByUnorderedMap)->Name("find a path of 3 among 100,000 keys/unordered_map");

// ---- opening a key of an unchanged registry ----

void openUnchangedKey(benchmark::State& state, std::size_t size) {
    const std::filesystem::path file = bench::userRegistryFile();
    std::ofstream(file, std::ios::binary)
        << bench::registryOfSize(size, "size " + std::to_string(size));
    const auto open = [] {
        tarvo::Reference<IVaskRegistryKey> key;
        if (vaskGetRegistryKey(u"/components/pmcs", key.out()) != RC_OK)
            std::abort();
    };
    open(); // from here on the file is known
    for (auto _ : state)
        open();
    std::filesystem::remove(file);
}

void openOfSize(benchmark::State& state, std::size_t size) {
    openUnchangedKey(state, size);
}
BENCHMARK_CAPTURE(openOfSize, tiny, 10'000)->Name("open a key, unchanged file/10 KB");
BENCHMARK_CAPTURE(openOfSize, middle, kMegabyte)->Name("open a key, unchanged file/1 MB");
BENCHMARK_CAPTURE(openOfSize, huge, 100 * kMegabyte)->Name("open a key, unchanged file/100 MB");

} // namespace
