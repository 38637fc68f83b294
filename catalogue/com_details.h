// A COM class as a component: read once from its key, and put into the terms of native components.
#pragma once

#include "catalogue/pmc_details.h"
#include "catalogue/system_class.h"
#include "tarvo/uuid.hpp"

namespace TARVO {

// Room for reading classes, kept from one to the next. What a class keeps is allocated once and in
// its size: texts that grow would leave a hole for each class, and there are heaps that look at one
// hole after the other.
struct ClassBuffer {
    ValueBuffer value;
    std::u16string texts;
    std::vector<tarvo::UUID> categories;
};

class COMPMCRegistrationDetails final
    : public PMCRegistrationDetailsImpl<COMPMCRegistrationDetails> {
  public:
    // Reads the class from its key, which is open in one of the views. What is missing there stays
    // empty.
    COMPMCRegistrationDetails(const UUID& uuid, const platform::SystemKey& key,
                              ClassBuffer& buffer);

    // Whether components of this kind can be used at all; if not, the object is not to be seen.
    bool isUsable() const noexcept { return usable_; }

    // Notes that the class is there in a view. Before the object is handed out.
    void addView(platform::RegistryView view) noexcept;

    Result getName(IVaskString* name) { return give(name_, name); }
    Result getDescription(IVaskString* text) { return give(description_, text); }
    Result getVaskVersion(IVaskString* version) { return give(vaskVersion_, version); }
    Result getComponentVersion(IVaskString* version) { return give(componentVersion_, version); }
    Result getVendorURL(IVaskString* url) { return give(vendorURL_, url); }
    Result getHelpURL(IVaskString* url) { return give(helpURL_, url); }
    Result getAbout(IVaskString* about) { return give(about_, about); }
    Result getProgId(IVaskString* progId);
    Result getCategories(IVaskArray* categories);
    Result isInCategory(const UUID* category, std::uint32_t* result);
    Result getLocations(IVaskArray* locations);
    Result getLocation(std::uint32_t location, IVaskString* text);
    Result isLocationAllUsers(std::uint32_t location, std::uint32_t* result);
    Result getFlags(std::uint32_t* flags);
    Result getVersionIndependentProgId(IVaskString* progId) {
        return give(versionIndependentProgId_, progId);
    }

  private:
    // Where a text stands among all of them.
    struct Text {
        std::size_t begin = 0;
        std::size_t size = 0;

        std::u16string_view in(std::u16string_view texts) const {
            return texts.substr(begin, size);
        }
    };

    // An empty one if nothing was read.
    static Text keep(std::optional<std::u16string_view> read, ClassBuffer& buffer);
    static Result give(std::u16string_view text, IVaskString* target) {
        return target == nullptr ? RC_NULL_POINTER : tarvo::setText(target, text);
    }
    Result give(Text text, IVaskString* target) const { return give(text.in(texts_), target); }

    void readDescription(const platform::SystemKey& key, ClassBuffer& buffer);
    void readNames(const platform::SystemKey& key, ClassBuffer& buffer);
    void readThreadingModel(const platform::SystemKey& key, ClassBuffer& buffer);
    void readCategories(const platform::SystemKey& key, ClassBuffer& buffer);

    std::u16string texts_; // one behind the other, since there may be thousands of classes
    Text name_;
    Text description_;
    Text vaskVersion_;
    Text componentVersion_;
    Text about_;
    Text vendorURL_;
    Text helpURL_;
    Text progId_;
    Text versionIndependentProgId_;
    std::vector<tarvo::UUID> categories_; // ascending, each once
    std::uint32_t flags_ = 0;
    bool usable_ = true;
    bool inView32_ = false;
    bool inView64_ = false;
};

} // namespace TARVO
