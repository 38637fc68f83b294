// A host in C++: creates the greeter, brings it the state that it was saved with, and has it greet.
// Usage: host [NAME [STATE_FILE]]
#include "../greeter/igreeter.h"

#include <tarvo/tarvo.hpp>

#include <cstdint>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

// Offers the bytes of a file to the component, as the data of a stream that was saved through COM.
void loadState(IVaskInterface* instance, const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("There is no file " + path);
    auto state = std::make_shared<tarvo::StateTree>();
    state->values[u"TransitionFormat"] = u"Stream";
    state->values[u"data"] = std::vector<std::uint8_t>(std::istreambuf_iterator<char>(file), {});
    tarvo::loadState(instance, std::move(state));
}

void greet(const std::string& name, const char* statePath) {
    const auto instance = tarvo::createInstance(kGreeterComponentId);
    if (statePath != nullptr)
        loadState(instance.get(), statePath);
    const auto greeter = tarvo::requireInterface<IGreeter>(instance.get(), kIGreeterId);
    tarvo::String greeting;
    tarvo::require(
        greeter->table->greet(greeter->me, tarvo::toUtf16(name).c_str(), greeting.pair()), "greet",
        *greeter);
    std::cout << tarvo::toUtf8(greeting.text()) << "\n";
}

} // namespace

int main(int argc, char** argv) {
    try {
        tarvo::load();
        greet(argc > 1 ? argv[1] : "world", argc > 2 ? argv[2] : nullptr);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
}
