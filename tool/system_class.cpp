#include "tool/system_class.h"

#include "platform/identifier.h"
#include "platform/system_text.h"
#include "tool/text.h"

#include <algorithm>
#include <fmt/format.h>
#include <vector>

namespace tool {

namespace {

using platform::RegistryRoot;
using platform::RegistryView;
using platform::SystemKey;

// Two categories make a class one that must be enabled by a third.
constexpr std::string_view kGatedCategories[] = {"{0d562dc8-ea8e-4210-ab39-b66513c0cd09}",
                                                 "{4150c28a-ee06-403f-a871-87afec38a249}"};
constexpr std::string_view kEnablingCategory = "{4667023a-5a8e-4cca-ab6d-9d78c5112fed}";

std::vector<std::string> categoriesOf(const SystemKey& classKey) {
    std::vector<std::string> categories;
    const SystemKey key = classKey.open(u"Implemented Categories");
    if (!key)
        return categories;
    platform::SubkeyNames names(key);
    while (const char16_t* name = names.next())
        categories.push_back(lowered(toUtf8(name)));
    return categories;
}

std::string threadingModel(const SystemKey& classKey) {
    const SystemKey server = classKey.open(u"InprocServer32");
    return server ? lowered(toUtf8(platform::readText(server, u"ThreadingModel").value_or(u"")))
                  : std::string();
}

bool contains(const std::vector<std::string>& categories, std::string_view category) {
    return std::ranges::find(categories, category) != categories.end();
}

// Why a class is passed over; empty if it can be used.
std::string faultOf(const SystemKey& classKey) {
    if (threadingModel(classKey) == "single")
        return "its threading model is \"single\", which can't serve as a component";
    const std::vector<std::string> categories = categoriesOf(classKey);
    for (const std::string_view gated : kGatedCategories)
        if (contains(categories, gated) && !contains(categories, kEnablingCategory))
            return fmt::format("it is filed under {} and not under {}, which that asks for", gated,
                               kEnablingCategory);
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

SystemClass examineClass(const Library&, const tarvo::UUID& uuid, RegistryView view) {
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
    const std::u16string text = platform::readText(classKey, nullptr).value_or(u"");
    if (text.empty() || !platform::classIdentifier(text.c_str()))
        return std::nullopt;
    return lowered(toUtf8(text));
}

} // namespace tool
