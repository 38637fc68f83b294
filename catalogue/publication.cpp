#include "catalogue/publication.h"

#include "catalogue/names.h"
#include "catalogue/system_class.h"
#include "core/environment.h"
#include "core/lower_case.h"
#include "tarvo/catalogue.h"

#include <algorithm>

namespace TARVO {

using platform::RegistryRoot;
using platform::RegistryView;
using platform::SystemKey;

namespace {

constexpr char16_t kClassesPath[] = u"Software\\Classes";

// A component's class in one view. What can't be made isn't there for what would come below it.
class Publication {
  public:
    Publication(const PMCRegistrationRecord& record, const SystemKey& classes, RegistryView view)
        : record_(record), classes_(classes), view_(view), classId_(classText(record.uuid)) {}

    void write() const {
        const SystemKey key =
            classes_.openForWriting(u"CLSID", view_).create(classId_.data(), view_);
        if (!key)
            return;
        key.setText(nullptr, record_.name.c_str());
        writeServer(key);
        writeDescription(key);
        writeProgId(key, u"ProgID", record_.progId);
        const bool isSame = record_.versionIndependentProgId.empty();
        writeProgId(key, u"VersionIndependentProgID",
                    isSame ? record_.progId : record_.versionIndependentProgId);
        writeCategories(key);
    }

  private:
    bool isInCategory(const UUID& category) const { return record_.categories.contains(category); }

    void writeServer(const SystemKey& key) const {
        const SystemKey server = key.create(u"InprocServer32", view_);
        const bool bound = (record_.flags & TARVO_PMC_APARTMENT_THREADED) != 0;
        server.setText(nullptr, (moduleFolder() + u"MORVENClassFactory.dll").c_str());
        server.setText(u"ThreadingModel", bound ? u"Apartment" : u"Both");
    }

    void writeDescription(const SystemKey& key) const {
        const SystemKey texts = key.create(u"VaskDescription", view_);
        const auto setIfAny = [&](const char16_t* name, const std::u16string& text) {
            if (!text.empty())
                texts.setText(name, text.c_str());
        };
        setIfAny(u"Name", record_.name);
        setIfAny(u"Description", record_.description);
        setIfAny(u"About", record_.about);
        texts.setText(u"VaskVersion", publishedVersion());
        setIfAny(u"ComponentVersion", record_.componentVersion);
        setIfAny(u"VendorURL", record_.vendorURL);
        setIfAny(u"HelpURL", record_.helpURL);
    }

    // COM classes of the first versions follow what the standard's version 1.2 says of components.
    const char16_t* publishedVersion() const {
        if (record_.vaskVersion != u"1.2")
            return record_.vaskVersion.c_str();
        const auto isIn = [this](const UUID& category) {
            return isInCategory(category);
        };
        return std::ranges::any_of(categories::kVersionOneOne, isIn) ? u"1.1" : u"1.0";
    }

    // Both ways: from the class to the ProgID and back.
    void writeProgId(const SystemKey& key, const char16_t* link, const std::u16string& text) const {
        if (text.empty())
            return;
        key.create(link, view_).setText(nullptr, text.c_str());
        const SystemKey progId = classes_.create(text.c_str(), view_);
        progId.create(u"CLSID", view_).setText(nullptr, classId_.data());
        progId.setText(nullptr, record_.name.c_str());
    }

    void writeCategories(const SystemKey& key) const {
        const SystemKey implemented = key.create(u"Implemented Categories", view_);
        const auto add = [&](const UUID& category) {
            implemented.create(classText(category).data(), view_);
        };
        for (const UUID& category : record_.categories)
            add(category == categories::kTarvoComponent ? categories::kComponent : category);
        if (isInCategory(categories::kTarvoComponent) &&
            (isInCategory(categories::kDependentA) || isInCategory(categories::kDependentB))) {
            add(categories::kGatedB);
            add(categories::kEnabling);
        }
    }

    const PMCRegistrationRecord& record_;
    const SystemKey& classes_;
    RegistryView view_;
    platform::ClassText classId_;
};

} // namespace

void ClassPublisher::publish(const PMCRegistrationRecord& record, RegistryView view) {
    Publication(record, classesIn(view), view).write();
}

// For all users, unless there is no right to that.
const SystemKey& ClassPublisher::classesIn(RegistryView view) {
    SystemKey& classes = view == RegistryView::view32 ? classes32_ : classes64_;
    if (!classes && allUsers_)
        classes = SystemKey::openForWriting(RegistryRoot::localMachine, kClassesPath, view);
    if (!classes)
        classes = SystemKey::openForWriting(RegistryRoot::currentUser, kClassesPath, view);
    return classes;
}

namespace {

// The text that is the default value of a key below; empty if there is none.
std::u16string textBelow(const SystemKey& key, const char16_t* path) {
    ValueBuffer buffer;
    return std::u16string(readText(key.open(path), nullptr, buffer).value_or(u""));
}

// Whether a key belongs to many classes and not to a ProgID. A class is free to name one as its
// ProgID, and must not take it along.
bool isSharedKey(std::u16string_view path) {
    path.remove_prefix(std::min(path.find_first_not_of(u'\\'), path.size()));
    const std::u16string first = lowerCase(path.substr(0, path.find(u'\\')));
    constexpr std::u16string_view kShared[] = {u"",          u"clsid",   u"appid",
                                               u"interface", u"typelib", u"component categories"};
    return std::ranges::find(kShared, first) != std::end(kShared);
}

void removeClassFrom(RegistryRoot root, const UUID& uuid, RegistryView view) {
    const SystemKey classes = SystemKey::openForWriting(root, kClassesPath, view);
    const std::u16string path = std::u16string(u"CLSID\\").append(classText(uuid).data());
    SystemKey key = classes.open(path.c_str(), view);
    if (!key)
        return;
    for (const char16_t* link : {u"ProgID", u"VersionIndependentProgID"})
        if (const std::u16string progId = textBelow(key, link); !isSharedKey(progId))
            classes.deleteTree(progId.c_str(), view);
    key.close();
    classes.deleteTree(path.c_str(), view);
}

} // namespace

void removeClass(const UUID& uuid, RegistryView view) {
    removeClassFrom(RegistryRoot::currentUser, uuid, view);
    removeClassFrom(RegistryRoot::localMachine, uuid, view);
}

} // namespace TARVO
