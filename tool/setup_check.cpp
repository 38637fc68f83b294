#include "client/installation.h"
#include "platform/file.h"
#include "platform/process.h"
#include "tool/checkup.h"
#include "tool/setup.h"
#include "tool/setup_examinations.h"
#include "tool/text.h"

#include <optional>

namespace tool {

namespace {

// The library that programs find or, if it can't serve, the one beside the tool, so that the rest
// can be examined all the same.
std::optional<Library> openLibrary(Checkup& checkup) {
    const auto newest = TARVO::newestInstallation();
    const std::u16string path = newest ? TARVO::libraryPath(*newest) : Library::pathBesideTool();
    try {
        return Library();
    } catch (const Failure& failure) {
        if (!newest || TARVO::platform::fileExists(path)) // one that is missing has been reported
            checkup.report({"library-unusable", toUtf8(path), reasonOf(failure) + ".",
                            "Install the package again.", ""});
    }
    try {
        return Library::besideTool();
    } catch (const Failure&) {
        return std::nullopt;
    }
}

void noteProcess(Checkup& checkup) {
    checkup.beginSection("This process");
    if (!TARVO::platform::isElevated())
        checkup.note("rights", "a user's; it creates components of either scope");
    else if (TARVO::platform::isWine())
        checkup.note("rights", "an administrator's, as every process under Wine");
    else
        checkup.note("rights", "an administrator's; a program with these rights creates only "
                               "components that are registered for the machine");
}

} // namespace

bool checkSetup(bool asJson, bool mends) {
    Checkup checkup(mends);
    noteProcess(checkup);
    examineCopies(checkup);
    if (const std::optional<Library> library = openLibrary(checkup)) {
        examineCompanions(checkup, *library);
        examineScopes(checkup, *library);
        examineRegistrations(checkup, *library);
    }
    if (asJson)
        checkup.printJson();
    else
        checkup.print();
    return !checkup.hasFindingsLeft();
}

} // namespace tool
