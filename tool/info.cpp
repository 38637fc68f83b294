#include "platform/console.h"
#include "tool/commands.h"
#include "tool/failure.h"
#include "tool/library.h"
#include "tool/output.h"
#include "tool/registry_file.h"
#include "tool/text.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace tool {

namespace {

// What can be told of a scope's file, in words.
std::string stateOfFile(const std::u16string& path) try {
    return describeState(readRegistryFile(path));
} catch (const Failure& failure) {
    return failure.what();
}

nlohmann::ordered_json describeScope(const Library& library, bool allUsers) {
    const std::string folder = library.dataFolder(allUsers);
    if (folder.empty())
        return {{"folder", nullptr}, {"registry", "the folder is not available"}};
    return {{"folder", folder}, {"registry", stateOfFile(library.registryPath(allUsers))}};
}

void printScope(const char* name, const nlohmann::ordered_json& scope) {
    const bool hasFolder = !scope["folder"].is_null();
    printOut("{} scope\n", name);
    printOut("  folder    {}\n", hasFolder ? scope["folder"].get<std::string>() : "none");
    printOut("  registry  {}\n", scope["registry"].get<std::string>());
}

} // namespace

void printInfo(bool asJson) {
    const Library library;
    const std::string language = library.language();
    const auto machine = describeScope(library, true);
    const auto user = describeScope(library, false);
    if (asJson) {
        const nlohmann::ordered_json info = {
            {"version", library.version()}, {"folder", library.folder()},
            {"language", language},         {"system", TARVO::platform::systemDescription()},
            {"machine", machine},           {"user", user}};
        printOut("{}\n", info.dump(2));
        return;
    }
    printOut("TARVO {}\n", library.version());
    printOut("  folder    {}\n", library.folder());
    printOut("  language  {}\n",
             language.empty() ? "none: TARVOResource.DLL is missing" : language);
    printOut("  system    {}\n", TARVO::platform::systemDescription());
    printScope("machine", machine);
    printScope("user", user);
}

} // namespace tool
