#include "client/installation.h"
#include "client/version.h"
#include "platform/file.h"
#include "platform/process.h"
#include "tool/installation_key.h"
#include "tool/missing_file.h"
#include "tool/module_facts.h"
#include "tool/scope.h"
#include "tool/setup_examinations.h"
#include "tool/text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace tool {

namespace {

using TARVO::Installation;

std::string removeAdvice(bool allUsers) {
    return fmt::format("Install TARVO there again, or run `tarvo setup remove --scope {}`.",
                       scopeName(allUsers));
}

std::string removeKey(bool allUsers) {
    removeInstallationKey(allUsers);
    return fmt::format("The {}'s installation is no longer known to programs.",
                       scopeName(allUsers));
}

void reportMissing(Checkup& checkup, const Installation& copy) {
    const bool allUsers = copy.allUsers;
    const std::u16string path = TARVO::libraryPath(copy);
    const Finding finding{"copy-missing", toUtf8(path),
                          fmt::format("The {}'s installation is gone: there is no {}.",
                                      scopeName(allUsers), toUtf8(path)),
                          removeAdvice(allUsers), ""};
    if (isGoneForGood(path))
        checkup.report(finding, [allUsers] { return removeKey(allUsers); });
    else
        checkup.report(finding);
}

// The search for the newest goes by the key alone, so that it must tell the truth.
void compareVersions(Checkup& checkup, const Installation& copy, const std::string& inFile) {
    if (inFile.empty() || TARVO::parseInstalledVersion(toUtf16(inFile)) == copy.version)
        return;
    const std::u16string& folder = copy.folder;
    const bool allUsers = copy.allUsers;
    checkup.report({"copy-version", toUtf8(TARVO::libraryPath(copy)),
                    fmt::format("The {}'s installation is known as version {}, and its library has "
                                "version {}.",
                                scopeName(allUsers), fmt::join(copy.version, "."), inFile),
                    fmt::format("Run `tarvo setup install --scope {}` of that installation.",
                                scopeName(allUsers)),
                    ""},
                   [&] {
                       writeInstallationKey(allUsers, folder, inFile);
                       return fmt::format("It is known as version {} now.", inFile);
                   });
}

void examineCopy(Checkup& checkup, const Installation& copy) {
    checkup.note(std::string(scopeName(copy.allUsers)) + " scope",
                 fmt::format("{}, version {}", toUtf8(copy.folder), fmt::join(copy.version, ".")));
    const std::u16string path = TARVO::libraryPath(copy);
    const ModuleFacts facts = examineModule(path);
    if (!facts.exists)
        return reportMissing(checkup, copy);
    if (!facts.fits)
        return checkup.report(
            {"copy-unusable", toUtf8(path),
             fmt::format("{} is no library for this system: {}.", toUtf8(path), facts.kind),
             "Install the package for this system there.", ""});
    compareVersions(checkup, copy, facts.version);
}

void examineScope(Checkup& checkup, bool allUsers) {
    if (const auto copy = TARVO::installationOf(allUsers))
        return examineCopy(checkup, *copy);
    const std::string title = std::string(scopeName(allUsers)) + " scope";
    if (!hasInstallationKey(allUsers))
        return checkup.note(title, "none");
    checkup.note(title, "a key without a folder");
    checkup.report({"copy-without-folder", scopeName(allUsers),
                    fmt::format("The {}'s installation has no folder, so that programs pass over "
                                "it.",
                                scopeName(allUsers)),
                    fmt::format("Run `tarvo setup install --scope {0}`, or `tarvo setup remove "
                                "--scope {0}`.",
                                scopeName(allUsers)),
                    ""},
                   [allUsers] { return removeKey(allUsers); });
}

std::string reasonOfChoice(const Installation& chosen) {
    const char* owner = scopeName(chosen.allUsers);
    const auto other = TARVO::installationOf(!chosen.allUsers);
    if (!other)
        return fmt::format("the {}'s, the only one", owner);
    if (TARVO::platform::hasFullElevation())
        return "the machine's; a program with an administrator's full rights takes no other, since "
               "any program of the user's could have made the other known";
    if (chosen.version == other->version)
        return "the user's, which goes first where both have the same version";
    return fmt::format("the {}'s, which is newer", owner);
}

void examineChoice(Checkup& checkup) {
    if (const auto chosen = TARVO::newestInstallation())
        return checkup.note("chosen", reasonOfChoice(*chosen));
    checkup.note("chosen", "none");
    const bool takesMachinesAlone = TARVO::platform::hasFullElevation();
    checkup.report({"not-installed", "",
                    takesMachinesAlone
                        ? "A program with an administrator's full rights, as this one, finds no "
                          "TARVO: it takes the machine's installation alone."
                        : "Programs find no TARVO: no installation is known.",
                    takesMachinesAlone
                        ? "Run `tarvo setup install --scope machine`."
                        : "Run `tarvo setup install`, with `--scope machine` for all users.",
                    ""});
}

} // namespace

void examineCopies(Checkup& checkup) {
    checkup.beginSection("Installed copies");
    for (const bool allUsers : {false, true})
        examineScope(checkup, allUsers);
    examineChoice(checkup);
    checkup.note("this tool", toUtf8(Library::pathBesideTool()) +
                                  (TARVO::platform::fileExists(Library::pathBesideTool())
                                       ? " is beside it"
                                       : " would be beside it, but is missing"));
}

} // namespace tool
