// A host in C++: creates the greeter, brings it the state that it was saved with, and has it greet.
// Usage: host [NAME [STATE_FILE]]
#include "../greeter/igreeter.h"

#include <tarvo/client.h>
#include <tarvo/component.hpp>
#include <tarvo/state_source.hpp>
#include <tarvo/tarvo.hpp>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <string>

namespace {

std::string utf8(const std::u16string& text) {
    const std::u8string bytes = std::filesystem::path(text).u8string();
    return {bytes.begin(), bytes.end()};
}

int fail(const char* what, TarvoResult result) {
    const std::u16string text =
        tarvo::textOfResult(result, *tarvoEntryPoints()->getErrorDescription);
    std::cerr << what << ": " << utf8(text) << "\n";
    return 1;
}

// Offers the bytes of a file to the component, as the data of a stream that was saved through COM.
TarvoResult loadState(IVaskInterface* instance, const char* path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return RC_NOT_FOUND;
    auto state = std::make_shared<tarvo::StateTree>();
    state->values[u"TransitionFormat"] = u"Stream";
    state->values[u"data"] = std::vector<std::uint8_t>(std::istreambuf_iterator<char>(file), {});
    const auto reader = tarvo::offerState(std::move(state));
    return tarvoEntryPoints()->tarvoDepersistPMCFromTransitionFormat(
        instance, reinterpret_cast<IVaskInterface*>(reader.get()), TARVO_PERSIST_SOURCE_COM,
        TARVO_PERSIST_TARGET_PMC);
}

} // namespace

int main(int argc, char** argv) {
    tarvo::String message;
    if (!loadTarvoLibrary(message.pair())) {
        std::cerr << utf8(message.text()) << "\n";
        return 1;
    }
    tarvo::Reference<IVaskInterface> instance;
    TarvoResult result =
        tarvoEntryPoints()->tarvoCreatePMCInstance(&kGreeterComponentId, 0, instance.out());
    if (result != RC_OK)
        return fail("The greeter can't be created", result);
    if (argc > 2)
        result = loadState(instance.get(), argv[2]);
    if (result != RC_OK)
        return fail("The greeter can't take its state", result);
    const auto greeter = tarvo::query<IGreeter>(instance.get(), kIGreeterId);
    if (!greeter)
        return fail("This component is no greeter", RC_NO_INTERFACE);

    const std::u16string name = std::filesystem::path(argc > 1 ? argv[1] : "world").u16string();
    tarvo::String greeting;
    result = greeter->table->greet(greeter->me, name.c_str(), greeting.pair());
    if (result != RC_OK)
        return fail("The greeter doesn't greet", result);
    std::cout << utf8(greeting.text()) << "\n";
    return 0;
}
