#include "instantiation/creation.h"

#include "core/link_error.h"
#include "instantiation/com_bridge.h"
#include "instantiation/marshaler_services.h"
#include "instantiation/native_library.h"
#include "platform/process.h"
#include "tarvo/instantiation.h"
#include "tarvo/reference.hpp"
#include "tarvo/text.hpp"

namespace TARVO {

namespace {

constexpr std::uint32_t kAllowApartmentInCaller = TARVO_CREATE_ALLOW_APARTMENT_IN_CALLER;
constexpr std::uint32_t kApartmentThreaded = TARVO_PMC_APARTMENT_THREADED;

// What a process with few rights could have registered would run with many. The answer for Inproc64
// stands for all locations.
bool isRefusedToElevated(IVaskPMCRegistrationDetails& details) {
    if (platform::isWine() || !platform::isElevated())
        return false;
    std::uint32_t isAllUsers = 0;
    try {
        details.table->isLocationAllUsers(details.me, TARVO_LOCATION_INPROC64, &isAllUsers);
    } catch (...) {
        return false; // details of the caller's own that can't tell aren't held against it
    }
    return isAllUsers == 0;
}

// One creation: what is asked for, and the routes that can serve it.
class Creation {
  public:
    Creation(IVaskPMCRegistrationDetails& details, std::uint32_t flags,
             IVaskInterface** instance) noexcept
        : details_(details), flags_(flags), instance_(instance) {}

    // The first location that exists decides; if it fails, no other is tried.
    Result run() {
        if (isRefusedToElevated(details_))
            return RC_ELEVATION_REFUSED;
        if ((flags_ & ~kAllowApartmentInCaller) != 0)
            return RC_INVALID_ARGUMENT;
        if (const Result result = details_.table->getUUID(details_.me, &uuid_); result != RC_OK)
            return result;
        *instance_ = nullptr;
        if (hasLocation(TARVO_LOCATION_INPROC64))
            return fromNativeLibrary();
        if (hasLocation(TARVO_LOCATION_COM64))
            return fromCOMClass();
        if (hasLocation(TARVO_LOCATION_INPROC32) || hasLocation(TARVO_LOCATION_COM32))
            return fromServiceFor(TARVO_LOCATION_INPROC32);
        for (const std::int32_t location : {TARVO_LOCATION_LOCAL, TARVO_LOCATION_REMOTE})
            if (hasLocation(static_cast<std::uint32_t>(location)))
                return fromService({location, text_.text()});
        return RC_CANNOT_CREATE;
    }

  private:
    // Also fetches the location's text.
    bool hasLocation(std::uint32_t location) {
        return details_.table->getLocation(details_.me, location, text_.pair()) == RC_OK;
    }

    Result fromNativeLibrary() {
        std::uint32_t componentFlags = 0;
        if (details_.table->getFlags(details_.me, &componentFlags) != RC_OK ||
            (componentFlags & ~kApartmentThreaded) != 0)
            return RC_CANNOT_CREATE;
        if (componentFlags != 0 && flags_ == 0)
            return fromServiceFor(TARVO_LOCATION_INPROC64);
        return createFromNativeLibrary(text_.text(), uuid_, instance_);
    }

    Result fromCOMClass() {
        std::uint32_t componentFlags = 0;
        if (const Result result = details_.table->getFlags(details_.me, &componentFlags);
            result != RC_OK)
            return result;
        if ((componentFlags & ~kApartmentThreaded) != 0)
            return RC_CANNOT_CREATE;
        switch (platform::currentApartment()) {
        case platform::Apartment::multiThreaded:
            return createThroughCOMBridge(uuid_, instance_);
        case platform::Apartment::singleThreaded:
            return flags_ != 0 ? createThroughCOMBridge(uuid_, instance_)
                               : fromServiceFor(TARVO_LOCATION_INPROC64);
        default:
            return fromServiceFor(TARVO_LOCATION_INPROC64);
        }
    }

    // One service is for all components of a bitness, whatever their location.
    Result fromServiceFor(std::int32_t bitness) { return fromService({bitness, {}}); }

    Result fromService(const ServiceKey& key) {
        try {
            createAtService(key, uuid_, flags_, instance_);
            return RC_OK;
        } catch (const vask_link_error& error) {
            // The caller has no object to ask for a last error.
            return error.code() == RC_SEE_LAST_ERROR ? RC_BAD_LOCATION : error.code();
        }
    }

    IVaskPMCRegistrationDetails& details_;
    std::uint32_t flags_;
    IVaskInterface** instance_;
    UUID uuid_{};
    tarvo::String text_;
};

} // namespace

Result createInstance(IVaskPMCRegistrationDetails& details, std::uint32_t flags,
                      IVaskInterface** instance) {
    if (instance == nullptr)
        return RC_NULL_POINTER;
    return Creation(details, flags, instance).run();
}

} // namespace TARVO
