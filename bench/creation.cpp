// A second creation of a component, beside other ways to have the same library create it. For Wine:
//
//     cmake/wine --fresh build/windows build/windows/bench/bench_creation.exe
#include "bench/creation_component.h"
#include "bench/creation_peers.h"
#include "bench/machine.h"
#include "bench/require.h"
#include "platform/module.h"

#include <tarvo/instantiation.h>
#include <tarvo/reference.hpp>
#include <tarvo/registrar.h>
#include <tarvo/registry.h>
#include <tarvo/registry_writer.h>
#include <tarvo/result.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace {

using bench::require;
using Instance = tarvo::Reference<IVaskInterface>;

// Beside this program.
std::u16string componentLibrary() {
    const std::filesystem::path program(TARVO::platform::ownModulePath());
    return (program.parent_path() / "creation_component.dll").u16string();
}

// For all users, since an administrator's programs create nothing else.
void registerComponent(const std::u16string& library) {
    tarvo::Reference<IVaskRegistryWriter> writer;
    require(vaskGetRegistryWriter(TARVO_SCOPE_ALL_USERS, writer.out()) == RC_OK);
    tarvo::Reference<IVaskPMCRegistrar> registrar;
    require(writer->table->createPMCRegistrar(writer->me, registrar.out()) == RC_OK);
    const auto& table = *registrar->table;
    require(table.setUUID(registrar->me, &bench::kNothing) == RC_OK);
    require(table.setName(registrar->me, u"Nothing") == RC_OK);
    require(table.setVaskVersion(registrar->me, u"1.2") == RC_OK);
    require(table.setLocation(registrar->me, 1, library.c_str()) == RC_OK);
    require(table.commit(registrar->me) == RC_OK);
    require(writer->table->commit(writer->me) == RC_OK);
}

void createByTarvo() {
    Instance instance;
    require(tarvoCreatePMCInstance(&bench::kNothing, 0, instance.out()) == RC_OK);
}

void createByLoading(const std::u16string& library) {
    const TARVO::platform::ModuleHandle module = TARVO::platform::loadModule(library);
    auto* create = reinterpret_cast<vaskCreateObjectFunction*>(
        TARVO::platform::findSymbol(module, "vaskCreateObject"));
    {
        Instance instance;
        require(create(&bench::kNothing, instance.out()) == RC_OK);
    }
    TARVO::platform::freeModule(module);
}

// What no creation can do without: both scopes are looked at for changes.
void openRegistry() {
    tarvo::Reference<IVaskRegistryKey> key;
    require(vaskGetRegistryKey(u"/components/pmcs", key.out()) == RC_OK);
}

double microsecondsOf(const std::function<void()>& work) {
    constexpr int kTimes = 50;
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < kTimes; ++i)
        work();
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
    return time.count() / kTimes;
}

// Medians of rounds in which each has its turn, so that a busy machine is busy for all.
std::vector<double> measure(const std::vector<bench::CreationPeer>& ways) {
    constexpr int kRounds = 41;
    std::vector<std::vector<double>> times(ways.size());
    for (int round = 0; round < kRounds; ++round)
        for (std::size_t i = 0; i < ways.size(); ++i)
            times[i].push_back(microsecondsOf(ways[i].createAndRelease));
    std::vector<double> medians;
    for (std::vector<double>& each : times) {
        std::ranges::nth_element(each, each.begin() + kRounds / 2);
        medians.push_back(each[kRounds / 2]);
    }
    return medians;
}

} // namespace

int main() {
    bench::userRegistryFile();
    const std::u16string library = componentLibrary();
    registerComponent(library);
    const TARVO::platform::ModuleHandle held = TARVO::platform::loadModule(library);
    std::vector<bench::CreationPeer> ways = {
        {"tarvoCreatePMCInstance", createByTarvo},
        {"of it, opening a key of both unchanged scopes", openRegistry},
        {"load the library again, find the entry point, call", [&] {
             createByLoading(library);
         }}};
    std::ranges::move(bench::systemCreationPeers(library), std::back_inserter(ways));
    const std::vector<double> medians = measure(ways);
    std::printf("A second creation of a component, and its release:\n");
    for (std::size_t i = 0; i < ways.size(); ++i)
        std::printf("  %-52s %8.2f us, the first takes %.2f of it\n", ways[i].name.c_str(),
                    medians[i], medians[0] / medians[i]);
    TARVO::platform::freeModule(held);
    return 0;
}
