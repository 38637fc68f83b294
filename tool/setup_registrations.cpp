#include "client/installation.h"
#include "tool/component_categories.h"
#include "tool/setup_classes.h"
#include "tool/setup_examinations.h"
#include "tool/setup_leftovers.h"
#include "tool/text.h"

#include <algorithm>
#include <fmt/format.h>

namespace tool {

namespace {

void mend(const Library& library, bool allUsers, std::vector<Leftover>& leftovers) {
    if (std::ranges::none_of(leftovers, [](const Leftover& one) { return bool(one.change); }))
        return;
    try {
        const ScopeWriter writer(library, allUsers);
        for (const Leftover& leftover : leftovers)
            if (leftover.change)
                leftover.change(writer);
        writer.commit();
        for (Leftover& leftover : leftovers)
            if (leftover.change)
                leftover.finding.mended = leftover.whenMended;
    } catch (const Failure& failure) {
        for (Leftover& leftover : leftovers)
            if (leftover.change)
                noteFailure(leftover.finding, failure);
    }
}

void examineLeftovers(Checkup& checkup, const Library& library, const ScopeTrees& trees) {
    for (const bool allUsers : kUserThenMachine) {
        const auto* components = trees.find(allUsers, kComponents);
        checkup.note(fmt::format("{} scope", scopeName(allUsers)),
                     fmt::format("components: {}", components ? components->subKeys.size() : 0));
        std::vector<Leftover> leftovers = findLeftovers(trees, allUsers);
        if (checkup.mends())
            mend(library, allUsers, leftovers);
        for (Leftover& leftover : leftovers)
            checkup.report(std::move(leftover.finding));
    }
}

void examineCategories(Checkup& checkup, const Library& library, const ScopeTrees& trees) {
    const std::u16string path = u"types/libraries/" + kComponentCategories.string();
    const bool isKnown = trees.hasKey(path);
    checkup.note("categories", isKnown ? "those of COM classes are registered"
                                       : "those of COM classes are not registered");
    const auto chosen = TARVO::newestInstallation();
    if (isKnown || !chosen)
        return; // what isn't installed is reported as that
    const bool allUsers = chosen->allUsers;
    checkup.report(
        {"categories-unregistered", toUtf8(kComponentCategories.string()),
         "The categories by which COM classes are known as components aren't "
         "registered: no COM class is listed.",
         fmt::format("Run `tarvo setup check --fix`, or `tarvo library register {}{} --scope {}`.",
                     library.folder(), kComponentCategoriesFile, scopeName(allUsers)),
         ""},
        [&library, allUsers] {
            registerComponentCategories(library, allUsers);
            return fmt::format("They are registered in the {} scope.", scopeName(allUsers));
        });
}

} // namespace

void examineRegistrations(Checkup& checkup, const Library& library) {
    checkup.beginSection("Registrations");
    try {
        const ScopeTrees trees(library);
        examineCategories(checkup, library, trees);
        examineLeftovers(checkup, library, trees); // last, so that the backup is what was before
        examineClasses(checkup, [&](const tarvo::UUID& component) {
            return trees.hasKey(kComponents + (u'/' + component.string()));
        });
    } catch (const Failure& failure) {
        checkup.note("not examined", reasonOf(failure));
    }
}

} // namespace tool
