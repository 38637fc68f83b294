// How the catalogue's keys and values are called in the private registry, and which categories mean
// something to it.
#pragma once

#include "tarvo/catalogue.h"
#include "tarvo/uuid.hpp"

#include <array>
#include <cstdint>

namespace TARVO {

// ---- keys, from the root ----

inline constexpr char16_t kPMCsKey[] = u"Components/PMCs";
inline constexpr char16_t kProgIDsKey[] = u"Components/ProgIDs";
inline constexpr char16_t kCategoriesKey[] = u"Components/Categories";
inline constexpr char16_t kTypeCategoriesKey[] = u"Types/Categories";

// ---- in the key of a component ----

inline constexpr char16_t kOwnCategoriesKey[] = u"Categories";
inline constexpr char16_t kName[] = u"name";
inline constexpr char16_t kDescription[] = u"description";
inline constexpr char16_t kVaskVersion[] = u"vaskVersion";
inline constexpr char16_t kComponentVersion[] = u"componentVersion";
inline constexpr char16_t kVendorURL[] = u"vendorURL";
inline constexpr char16_t kHelpURL[] = u"helpURL";
inline constexpr char16_t kAbout[] = u"about";
inline constexpr char16_t kProgId[] = u"progId";
inline constexpr char16_t kVersionIndependentProgId[] = u"versionIndependentProgId";
inline constexpr char16_t kFlags[] = u"flags";

// The values that hold locations, by location number.
inline constexpr std::array kLocationNames = {u"Inproc32", u"Inproc64", u"COM32",
                                              u"COM64",    u"Remote",   u"Local"};

constexpr bool isLocation(std::int32_t location) {
    return location >= 0 && location < static_cast<std::int32_t>(kLocationNames.size());
}

// Found in the system registry, and not to be had by native components.
constexpr bool isCOMLocation(std::int32_t location) {
    return location == TARVO_LOCATION_COM32 || location == TARVO_LOCATION_COM64;
}

// ---- categories of COM classes ----

namespace categories {

constexpr tarvo::UUID parse(std::u16string_view text) {
    return tarvo::UUID::parse(text).value();
}

// Marks a COM class as a component, and what stands for it in the private registry.
inline constexpr auto kComponent = parse(u"{678c09a1-7d66-11d2-a67d-00105a42887f}");
inline constexpr auto kTarvoComponent = parse(u"{37e03033-63b9-4f55-b5c4-807bede03deb}");

// A class of one of these can be used only if it is also in the enabling one.
inline constexpr auto kGatedA = parse(u"{0d562dc8-ea8e-4210-ab39-b66513c0cd09}");
inline constexpr auto kGatedB = parse(u"{4150c28a-ee06-403f-a871-87afec38a249}");
inline constexpr auto kEnabling = parse(u"{4667023a-5a8e-4cca-ab6d-9d78c5112fed}");

// A component of one of these is published as gated and enabled.
inline constexpr auto kDependentA = parse(u"{678c09a5-7d66-11d2-a67d-00105a42887f}");
inline constexpr auto kDependentB = parse(u"{7ba1af89-b2e4-493d-bd80-2970bf4cbe99}");

// A component of one of these needs version 1.1 of the standard that COM classes follow.
inline constexpr std::array kVersionOneOne = {parse(u"{cf51e383-0110-4ed8-acb7-b50cfde6908e}"),
                                              parse(u"{cf51e384-0110-4ed8-acb7-b50cfde6908e}"),
                                              parse(u"{cf51e385-0110-4ed8-acb7-b50cfde6908e}"),
                                              parse(u"{cf51e386-0110-4ed8-acb7-b50cfde6908e}")};

// The type library whose categories make a COM class a component.
inline constexpr auto kMarkingLibrary = parse(u"{3b78cdeb-7fe8-4542-b58b-26205774d82a}");

} // namespace categories

} // namespace TARVO
