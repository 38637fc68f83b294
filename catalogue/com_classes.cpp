#include "catalogue/com_classes.h"

namespace TARVO {

using platform::RegistryRoot;
using platform::RegistryView;
using platform::SubkeyNames;
using platform::SystemKey;

namespace {

// Null if the class can't be used.
Reference<COMPMCRegistrationDetails> readClass(const UUID& uuid, const SystemKey& key,
                                               ClassBuffer& buffer) {
    auto details = makeObject<COMPMCRegistrationDetails>(uuid, key, buffer);
    return details->isUsable() ? details : nullptr;
}

} // namespace

std::optional<UUID> classOfProgId(const char16_t* progId, ClassBuffer& buffer) {
    for (const RegistryView view : kRegistryViews) {
        const SystemKey key = SystemKey::open(RegistryRoot::classesRoot, progId, view);
        const std::u16string text(
            readText(key.open(u"CLSID", view), nullptr, buffer.value).value_or(u""));
        if (const auto uuid = text.empty() ? std::nullopt : classIdentifier(text.c_str()))
            return uuid;
    }
    return std::nullopt;
}

Reference<COMPMCRegistrationDetails> findCOMClass(const UUID& uuid, ClassBuffer& buffer) {
    std::u16string path = u"CLSID\\";
    path.append(classText(uuid).data());
    Reference<COMPMCRegistrationDetails> details;
    for (const RegistryView view : kRegistryViews) {
        const SystemKey key = SystemKey::open(RegistryRoot::classesRoot, path.c_str(), view);
        if (!key)
            continue;
        if (!details)
            details = readClass(uuid, key, buffer);
        if (details)
            details->addView(view);
    }
    return details;
}

namespace {

// Finds components by their identifiers while more are found: open addressing in one flat array,
// since a scan asks for each class in each view.
class FoundIndex {
  public:
    explicit FoundIndex(std::vector<FoundPMC>& found) : found_(found) { makeRoom(); }

    // Null if there is none.
    FoundPMC* find(const tarvo::UUID& uuid) {
        const std::uint32_t number = places_[placeOf(uuid)];
        return number == kNone ? nullptr : &found_[number];
    }

    void add(FoundPMC pmc) {
        found_.push_back(std::move(pmc));
        if (found_.size() * 2 > places_.size())
            makeRoom();
        else
            enter(found_.size() - 1);
    }

  private:
    static constexpr std::uint32_t kNone = ~0u;

    // The place with the identifier's number, or the empty one where it would go.
    std::size_t placeOf(const tarvo::UUID& uuid) const {
        std::size_t place = std::hash<tarvo::UUID>()(uuid) & (places_.size() - 1);
        while (places_[place] != kNone && found_[places_[place]].uuid != uuid)
            place = (place + 1) & (places_.size() - 1);
        return place;
    }
    void enter(std::size_t number) {
        places_[placeOf(found_[number].uuid)] = static_cast<std::uint32_t>(number);
    }
    void makeRoom() {
        places_.assign(std::bit_ceil(found_.size() * 4 + 64), kNone);
        for (std::size_t number = 0; number < found_.size(); ++number)
            enter(number);
    }

    std::vector<FoundPMC>& found_;
    std::vector<std::uint32_t> places_; // a power of two of them
};

} // namespace

void findCOMClasses(std::u16string_view below, const IsWanted& isWanted, ClassBuffer& buffer,
                    std::vector<FoundPMC>& found) {
    FoundIndex index(found);
    std::u16string path;
    const auto take = [&](const SystemKey& classes, const char16_t* name, RegistryView view) {
        const auto uuid = classIdentifier(name);
        if (!uuid)
            return;
        path.assign(name).append(u"\\").append(below);
        const SystemKey marked = classes.open(path.c_str(), view);
        if (!marked || !isWanted(marked))
            return;
        if (const FoundPMC* known = index.find(*uuid)) {
            if (known->comClass != nullptr)
                known->comClass->addView(view);
            return;
        }
        const SystemKey key = classes.open(name, view);
        const auto details = key ? readClass(*uuid, key, buffer) : nullptr;
        if (!details)
            return;
        details->addView(view);
        index.add(foundPMC(*details, details.get()));
    };
    for (const RegistryView view : kRegistryViews) {
        const SystemKey classes = SystemKey::open(RegistryRoot::classesRoot, u"CLSID", view);
        SubkeyNames names(classes);
        while (const char16_t* name = names.next())
            take(classes, name, view);
    }
}

} // namespace TARVO
