#include "platform/file.h"
#include "platform/module.h"
#include "tarvo/marshal.h"
#include "tool/component_categories.h"
#include "tool/module_facts.h"
#include "tool/setup_examinations.h"
#include "tool/text.h"

#include <fmt/format.h>
#include <vector>

namespace tool {

namespace {

struct Companion {
    const char* title;
    const char* file;
    bool isShipped;      // with TARVO, and of its version
    const char* without; // what it costs if it is missing
    std::vector<const char*> entryPoints;
};

const std::vector<Companion>& companions() {
    static const std::vector<Companion> all = {
        {"texts", "TARVOResource.DLL", true, "result codes have no texts", {"getResource"}},
        {"parser",
         "TARVOIDLParser.dll",
         true,
         "no type library can be registered",
         {"VaskIDLParse"}},
        {"marshaler",
         "TARVOMarshal.dll",
         false,
         "no component can be created in another process or on another machine",
         {TARVO_MARSHAL_ENTRY_POINTS}},
        {"COM bridge",
         "MORVEN.dll",
         false,
         "no COM class can be created in the program's own process",
         {"vaskCreateObject"}},
        {"class factory",
         "MORVENClassFactory.dll",
         false,
         "programs that know only COM can't create native components",
         {}},
    };
    return all;
}

constexpr const char* kInstallAgain = "Install the package again.";

// Why a file that is there can't serve; empty if it can.
std::string faultOf(const Companion& companion, const std::u16string& path,
                    const ModuleFacts& facts) {
    if (!facts.fits)
        return fmt::format("it is no library for this system: {}", facts.kind);
    const TARVO::platform::LoadedModule module(path);
    if (!module)
        return fmt::format("the system can't load it: {}", systemText(module.error().text));
    for (const char* entryPoint : companion.entryPoints)
        if (module.find(entryPoint) == nullptr)
            return fmt::format("it has no entry point {}", entryPoint);
    return {};
}

void examine(Checkup& checkup, const Library& library, const Companion& companion) {
    const std::string path = library.folder() + companion.file;
    const ModuleFacts facts = examineModule(toUtf16(path));
    if (!facts.exists) {
        checkup.note(companion.title, fmt::format("no {}: {}", companion.file, companion.without));
        if (companion.isShipped)
            checkup.report({"companion-missing", path,
                            fmt::format("{} is missing: {}.", path, companion.without),
                            kInstallAgain, ""});
        return;
    }
    const std::string version = facts.version.empty() ? "unknown" : facts.version;
    const std::string fault = faultOf(companion, toUtf16(path), facts);
    checkup.note(companion.title, fmt::format("{}, version {}{}", companion.file, version,
                                              fault.empty() ? "" : ", can't be used"));
    if (!fault.empty())
        checkup.report({"companion-unusable", path,
                        fmt::format("{} can't be used: {}; {}.", path, fault, companion.without),
                        companion.isShipped ? kInstallAgain : "Install it again, or what it needs.",
                        ""});
    else if (companion.isShipped && version != library.version())
        checkup.report({"companion-version", path,
                        fmt::format("{} is of version {}, and TARVO.dll of version {}.", path,
                                    version, library.version()),
                        kInstallAgain, ""});
}

} // namespace

void examineCompanions(Checkup& checkup, const Library& library) {
    checkup.beginSection("Libraries");
    checkup.note("folder", library.folder());
    checkup.note("library", "TARVO.dll, version " + library.version());
    for (const Companion& companion : companions())
        examine(checkup, library, companion);
    const std::string categories = library.folder() + kComponentCategoriesFile;
    const bool isThere = TARVO::platform::fileExists(toUtf16(categories));
    checkup.note("definitions",
                 fmt::format("{}{}", isThere ? "" : "no ", kComponentCategoriesFile));
    if (!isThere)
        checkup.report({"companion-missing", categories,
                        fmt::format("{} is missing: the categories of COM classes can't be "
                                    "registered.",
                                    categories),
                        kInstallAgain, ""});
}

} // namespace tool
