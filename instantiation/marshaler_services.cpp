#include "instantiation/marshaler_services.h"

#include "core/link_error.h"
#include "instantiation/marshal_bridge.h"
#include "instantiation/remote_location.h"
#include "platform/process.h"
#include "tarvo/catalogue.h"
#include "tarvo/environment.h"
#include "tarvo/reference.hpp"
#include "tarvo/text.hpp"

#include <chrono>
#include <map>
#include <mutex>

namespace TARVO {

namespace {

using tarvo::Reference;
using Service = Reference<IMarshalService>;

// A service's first slots are those of IVaskInterface, so its pair serves as one.
IVaskInterface* asInterface(IMarshalService* service) noexcept {
    return reinterpret_cast<IVaskInterface*>(service);
}

Service connectRemote(std::u16string_view url) {
    const RemoteLocation location = parseRemoteLocation(url);
    tarvo::String host(location.host);
    IMarshalService* service = nullptr;
    require(MarshalBridge::bound().connectTCPIPService(host.pair(), location.port, &service));
    return Service::adopt(service);
}

Service startLocal(std::u16string_view text) {
    tarvo::String name(text);
    IMarshalService* service = nullptr;
    require(MarshalBridge::bound().startLocalServicePMEMarshaler(name.pair(), &service));
    return Service::adopt(service);
}

Service startForBitness(std::uint32_t is64Bit) {
    IMarshalService* service = nullptr;
    require(MarshalBridge::bound().startLocalPMEMarshaler(is64Bit, is64Bit, &service));
    return Service::adopt(service);
}

Service start(const ServiceKey& key) {
    switch (key.location) {
    case TARVO_LOCATION_REMOTE:
        return connectRemote(key.text);
    case TARVO_LOCATION_LOCAL:
        return startLocal(key.text);
    default:
        return startForBitness(key.location == TARVO_LOCATION_INPROC64);
    }
}

class MarshalerServiceTable {
  public:
    // A start may well take long; the lock is held, so that no service is started twice.
    Service get(const ServiceKey& key) {
        const std::lock_guard lock(mutex_);
        const auto known = services_.find(key);
        if (known != services_.end())
            return known->second;
        return services_.emplace(key, start(key)).first->second;
    }

    void stop() noexcept {
        const std::lock_guard lock(mutex_);
        stopLocked();
    }

    // The end of the process, which may have ended a thread while it held the lock.
    ~MarshalerServiceTable() {
        const std::unique_lock lock(mutex_, std::try_to_lock);
        if (lock)
            stopLocked();
    }

  private:
    // There is nobody to tell of a failure: neither tarvoTerminate nor the end of a process has a
    // result.
    void stopLocked() noexcept {
        constexpr std::chrono::milliseconds kTimeToEnd{500};
        try {
            if (services_.empty())
                return;
            stopEach();
            platform::pauseFor(kTimeToEnd);
            services_.clear();
        } catch (...) {
            return; // all of them stay in the table, so that a later call begins anew
        }
    }

    void stopEach() const {
        for (const auto& [key, service] : services_) {
            if (!service)
                throw vask_link_error(RC_NULL_POINTER);
            require(service->table->stopService(service->me), asInterface(service.get()));
        }
    }

    std::mutex mutex_;
    std::map<ServiceKey, Service> services_;
};

MarshalerServiceTable serviceTable;

} // namespace

void createAtService(const ServiceKey& key, const UUID& uuid, std::uint32_t flags,
                     IVaskInterface** instance) {
    const Service service = serviceTable.get(key);
    if (!service)
        throw vask_link_error(RC_NULL_POINTER);
    IVaskInterface* created = nullptr;
    require(service->table->createInstance(service->me, &uuid, flags, &created),
            asInterface(service.get()));
    *instance = created;
    // A service gives two references: this one, and the caller's.
    Reference<IVaskInterface>::adopt(created);
}

} // namespace TARVO

void tarvoTerminate(void) {
    TARVO::serviceTable.stop();
}
