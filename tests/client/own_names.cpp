// A program whose own functions bear the names of the library's exports. It links the client and
// loads the library, and neither of them meets these functions, or calls them.
#include "platform/module.h"

#include <tarvo/client.h>
#include <tarvo/tarvo.h>

#include <cstdlib>
#include <iostream>
#include <string>

TarvoResult getTarvoVersion(IVaskString*) {
    std::abort();
}
TarvoResult getTarvoFolder(IVaskString*) {
    std::abort();
}
TarvoResult getErrorDescription(TarvoResult, IVaskString*) {
    std::abort();
}
TarvoResult vaskUUIDFromString(const char16_t*, TarvoUUID*) {
    std::abort();
}
TarvoResult vaskGetPMCEnumerator(IVaskPMCEnumerator**) {
    std::abort();
}

namespace platform {
bool hasFullElevation() {
    std::abort();
}
} // namespace platform

int main(int, char** arguments) {
    if (loadTarvoLibrary(nullptr)) {
        std::cerr << "bound a library that nobody installed\n";
        return EXIT_FAILURE;
    }
    const std::string_view path = arguments[1];
    const TARVO::platform::LoadedModule library(std::u16string(path.begin(), path.end()));
    auto* const create =
        reinterpret_cast<tarvoCreatePMCInstanceFunction*>(library.find("tarvoCreatePMCInstance"));
    const TarvoUUID nobody = {{1}};
    IVaskInterface* instance = nullptr;
    const TarvoResult result = create == nullptr ? RC_UNSPECIFIED : create(&nobody, 0, &instance);
    if (result == RC_NOT_FOUND)
        return EXIT_SUCCESS;
    std::cerr << "creation gave " << result << "\n";
    return EXIT_FAILURE;
}
