#include "tool/system_class.h"

#include "catalogue/names.h"
#include "catalogue/system_class.h"
#include "platform/identifier.h"
#include "platform/system_text.h"
#include "tool/text.h"

#include <fmt/format.h>
#include <set>

namespace tool {

namespace {

using TARVO::platform::RegistryRoot;
using TARVO::platform::RegistryView;
using TARVO::platform::SystemKey;

namespace categories = TARVO::categories;

std::set<tarvo::UUID> categoriesOf(const SystemKey& classKey) {
    std::set<tarvo::UUID> categories;
    const SystemKey key = classKey.open(u"Implemented Categories");
    if (!key)
        return categories;
    TARVO::platform::SubkeyNames names(key);
    while (const char16_t* name = names.next())
        if (const auto category = TARVO::classIdentifier(name))
            categories.insert(tarvo::UUID(*category));
    return categories;
}

std::string threadingModel(const SystemKey& classKey) {
    const SystemKey server = classKey.open(u"InprocServer32");
    return server
               ? lowered(toUtf8(TARVO::platform::readText(server, u"ThreadingModel").value_or(u"")))
               : std::string();
}

// Why a class is passed over; empty if it can be used.
std::string faultOf(const SystemKey& classKey) {
    if (threadingModel(classKey) == "single")
        return "its threading model is \"single\", which can't serve as a component";
    const std::set<tarvo::UUID> filed = categoriesOf(classKey);
    for (const tarvo::UUID& gated : {categories::kGatedA, categories::kGatedB})
        if (filed.contains(gated) && !filed.contains(categories::kEnabling))
            return fmt::format("it is filed under {} and not under {}, which that asks for",
                               toUtf8(gated.string()), toUtf8(categories::kEnabling.string()));
    return {};
}

const char* scopeOf(const std::u16string& path, RegistryView view) {
    const bool isUsers = static_cast<bool>(
        SystemKey::open(RegistryRoot::currentUser, (u"Software\\Classes\\" + path).c_str(), view));
    return isUsers ? "the current user's" : "the machine's";
}

} // namespace

const char* viewName(RegistryView view) {
    return view == RegistryView::view32 ? "32-bit classes" : "64-bit classes";
}

SystemClass examineClass(const tarvo::UUID& uuid, RegistryView view) {
    const std::u16string path = u"CLSID\\" + uuid.string();
    const SystemKey key = SystemKey::open(RegistryRoot::classesRoot, path.c_str(), view);
    if (!key)
        return {.text = "none"};
    const std::string fault = faultOf(key);
    SystemClass found{.exists = true, .isUsable = fault.empty(), .text = {}};
    found.text = fmt::format("a class, {}", scopeOf(path, view));
    if (!fault.empty())
        found.text.append(", passed over: ").append(fault);
    return found;
}

std::optional<std::string> classOfProgId(const std::u16string& progId, RegistryView view) {
    const SystemKey key = SystemKey::open(RegistryRoot::classesRoot, progId.c_str(), view);
    const SystemKey classKey = key ? key.open(u"CLSID", view) : SystemKey();
    if (!classKey)
        return std::nullopt;
    const std::u16string text = TARVO::platform::readText(classKey, nullptr).value_or(u"");
    if (text.empty() || !TARVO::platform::classIdentifier(text.c_str()))
        return std::nullopt;
    return lowered(toUtf8(text));
}

} // namespace tool
