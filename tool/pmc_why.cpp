// Why a component is or isn't found, and would or wouldn't be created here: the way of a host's
// request, told step by step. What the library would do is told, not done: no component code runs
// but what loading its library brings along.
#include "tarvo/array.hpp"
#include "tool/component.h"
#include "tool/creation_check.h"
#include "tool/failure.h"
#include "tool/key_source.h"
#include "tool/pmc.h"
#include "tool/report.h"
#include "tool/scope.h"
#include "tool/system_class.h"
#include "tool/text.h"

#include <algorithm>
#include <fmt/format.h>
#include <optional>

namespace tool {

namespace {

std::string scopeTitle(bool allUsers) {
    return fmt::format("{} scope", scopeName(allUsers));
}

// A key of one scope's file. Null if there is none; `reason` says why if that is a fault.
std::unique_ptr<KeySource> scopeKey(const Library& library, bool allUsers,
                                    const std::u16string& path, std::string& reason) try {
    return openScopeKey(library, allUsers, path);
} catch (const Failure& failure) {
    if (failure.code() != RC_NOT_FOUND)
        reason = failure.what();
    return nullptr;
}

std::optional<std::string> valueOf(const KeySource& key, const std::string& lowerName) {
    for (const ShownValue& value : key.values())
        if (value.name == lowerName)
            return value.text;
    return std::nullopt;
}

// Looks a ProgID up as a host's request does: the user's scope, the machine's, then the classes of
// the system. The first that knows it decides.
std::optional<tarvo::UUID> resolveProgId(const Library& library, const std::string& progId) {
    printHeading("ProgID " + progId);
    std::optional<std::string> found;
    const auto look = [&](const std::string& where, const std::optional<std::string>& uuid) {
        const char* note = uuid && found ? "  (hidden)" : "";
        printStep(where, uuid ? *uuid + note : "not known");
        if (uuid && !found)
            found = uuid;
    };
    for (const bool allUsers : kUserThenMachine) {
        std::string reason;
        const auto key = scopeKey(library, allUsers, u"/components/progids", reason);
        if (!reason.empty())
            printStep(scopeTitle(allUsers), reason + "; nothing in it is seen");
        else
            look(scopeTitle(allUsers), key ? valueOf(*key, lowered(progId)) : std::nullopt);
    }
    for (const auto view :
         {TARVO::platform::RegistryView::view32, TARVO::platform::RegistryView::view64})
        look(viewName(view), classOfProgId(toUtf16(progId), view));
    return found ? tarvo::UUID::parse(toUtf16(*found)) : std::nullopt;
}

// What a scope's registration holds, in a line.
std::string summaryOf(const KeySource& key) {
    std::string locations;
    for (const std::string_view name : kLocationNames)
        if (!valueOf(key, lowered(std::string(name))).value_or("").empty())
            locations.append(locations.empty() ? "" : ", ").append(name);
    return fmt::format("\"{}\", {}", printable(valueOf(key, "name").value_or("(no name)")),
                       locations.empty() ? "no location" : "locations: " + locations);
}

struct Registrations {
    bool isNative = false;
    bool isClass = false;
};

Registrations describeRegistrations(const Library& library, const tarvo::UUID& uuid) {
    printHeading("Registrations of " + toUtf8(uuid.string()));
    Registrations found;
    for (const bool allUsers : kUserThenMachine) {
        std::string reason;
        const auto key = scopeKey(library, allUsers, u"/components/pmcs/" + uuid.string(), reason);
        if (!reason.empty())
            printStep(scopeTitle(allUsers), reason + "; nothing in it is seen");
        else if (!key)
            printStep(scopeTitle(allUsers), "none");
        else
            printStep(
                scopeTitle(allUsers),
                summaryOf(*key) +
                    (found.isNative ? "; each value that the user's scope has too is hidden" : ""));
        found.isNative = found.isNative || key;
    }
    for (const auto view :
         {TARVO::platform::RegistryView::view32, TARVO::platform::RegistryView::view64}) {
        const SystemClass seen = examineClass(uuid, view);
        std::string text = seen.text;
        if (seen.exists && found.isNative)
            text.append("; hidden by the native component");
        printStep(viewName(view), text);
        found.isClass = found.isClass || seen.isUsable;
    }
    return found;
}

void explainLists(const Library& library, const tarvo::UUID& uuid, const Registrations& found) {
    const std::vector<Component> all = Catalogue(library).all();
    const bool isListed =
        std::ranges::any_of(all, [&](const Component& listed) { return listed.uuid == uuid; });
    if (isListed)
        printStep("in lists", "yes, hosts that list all components see it");
    else if (found.isClass)
        printStep("in lists", "no: the class is filed under no category that marks components; "
                              "hosts find it by its identifier and ProgID alone");
    else
        printStep("in lists", "no");
}

} // namespace

void explainComponent(const std::string& name, std::uint32_t flags) {
    const Library library;
    auto uuid = tarvo::UUID::parse(toUtf16(name));
    if (!uuid)
        uuid = resolveProgId(library, name);
    if (!uuid) {
        printVerdict("It is not found: nothing knows this ProgID.",
                     "Register the component (tarvo pmc register), or check the spelling.");
        return;
    }
    const Registrations found = describeRegistrations(library, *uuid);
    if (!found.isNative && !found.isClass) {
        printVerdict("It is not found: neither scope and neither view has it in a usable form.",
                     "Register the component (tarvo pmc register), or mend what is said above.");
        return;
    }
    explainLists(library, *uuid, found);
    const Details details = Catalogue(library).find(toUtf8(uuid->string()));
    checkCreation(library, *details, flags);
}

} // namespace tool
