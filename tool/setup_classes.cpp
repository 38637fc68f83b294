#include "tool/setup_classes.h"

#include "catalogue/publication.h"
#include "catalogue/system_class.h"
#include "platform/system_text.h"
#include "tool/text.h"

#include <fmt/format.h>
#include <set>

namespace tool {

namespace {

using TARVO::platform::RegistryRoot;
using TARVO::platform::RegistryView;
using TARVO::platform::SystemKey;

constexpr RegistryRoot kRoots[] = {RegistryRoot::currentUser, RegistryRoot::localMachine};

// The one library that serves all published classes.
constexpr std::string_view kClassFactory = "morvenclassfactory.dll";

bool isPublished(const SystemKey& classes, const char16_t* name, RegistryView view) {
    const SystemKey server =
        classes.open((std::u16string(name) + u"\\InprocServer32").c_str(), view);
    if (!server)
        return false;
    std::u16string path = TARVO::platform::readText(server, nullptr).value_or(u"");
    path.erase(0, path.find_last_of(u"/\\") + 1);
    return lowered(toUtf8(path)) == kClassFactory;
}

std::set<tarvo::UUID> publishedIn(RegistryRoot root, RegistryView view) {
    std::set<tarvo::UUID> published;
    const SystemKey classes = SystemKey::open(root, u"Software\\Classes\\CLSID", view);
    if (!classes)
        return published;
    TARVO::platform::SubkeyNames names(classes);
    while (const char16_t* name = names.next())
        if (const auto uuid = tarvo::UUID::parse(name); uuid && isPublished(classes, name, view))
            published.insert(*uuid);
    return published;
}

std::set<tarvo::UUID> allPublished() {
    std::set<tarvo::UUID> published;
    for (const RegistryRoot root : kRoots)
        for (const RegistryView view : TARVO::kRegistryViews)
            published.merge(publishedIn(root, view));
    return published;
}

std::string removeEverywhere(const tarvo::UUID& uuid) {
    for (const RegistryView view : TARVO::kRegistryViews)
        TARVO::removeClass(uuid, view);
    if (allPublished().contains(uuid))
        throw Failure("the class is still there; an administrator may remove it");
    return "The class is removed.";
}

} // namespace

void examineClasses(Checkup& checkup, const std::function<bool(const tarvo::UUID&)>& isRegistered) {
    const std::set<tarvo::UUID> published = allPublished();
    checkup.note("for COM", fmt::format("published classes: {}", published.size()));
    for (const tarvo::UUID& uuid : published) {
        if (isRegistered(uuid))
            continue;
        const std::string id = toUtf8(uuid.string());
        checkup.report({"class-leftover", id,
                        fmt::format("The class {} is published for programs that know only COM, "
                                    "and no such component is registered.",
                                    id),
                        "Register the component again, or run `tarvo setup check --fix`.", ""},
                       [&uuid] { return removeEverywhere(uuid); });
    }
}

} // namespace tool
