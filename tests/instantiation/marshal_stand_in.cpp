// A marshal library.
#include "tests/instantiation/stand_in.h"

using namespace stand_in;

namespace {

struct Service : Counted<Service> {
    static constexpr const char* kName = "service";

    static TarvoResult createInstance(void*, const TarvoUUID* uuid, std::uint32_t flags,
                                      IVaskInterface** instance) {
        note("create " + std::to_string(uuid->bytes[15]) + " with flags " + std::to_string(flags));
        if (answers.create == RC_OK)
            *instance = &(new Instance(2))->pair;
        return answers.create;
    }
    static TarvoResult stopService(void* me) {
        note("stop " + static_cast<Service*>(me)->what);
        return answers.stop;
    }
    static constexpr IMarshalServiceTable kTable = {
        .addReference = addReference,
        .release = release,
        .queryInterface = queryInterface,
        .getLastError = getLastError,
        .createInstance = createInstance,
        .reserved5To6 = {},
        .stopService = stopService,
    };

    explicit Service(std::string name) : what(std::move(name)) {}

    IMarshalService pair{this, &kTable};
    std::string what;
    std::atomic<int> references = 1;
};

TarvoResult start(const std::string& what, IMarshalService** service) {
    note("start " + what + (*service == nullptr ? "" : " over"));
    if (answers.start == RC_OK && answers.givesService)
        *service = &(new Service(what))->pair;
    return answers.start;
}

} // namespace

extern "C" {

TARVO_EXPORT TarvoResult StartLocalPMEMarshaler(std::uint32_t first, std::uint32_t second,
                                                IMarshalService** service) {
    return start(std::to_string(first) + std::to_string(second), service);
}

TARVO_EXPORT TarvoResult ConnectTCPIPService(IVaskString* host, std::int32_t port,
                                             IMarshalService** service) {
    return start(narrow(tarvo::viewOf(host)) + " at " + std::to_string(port), service);
}

TARVO_EXPORT TarvoResult StartLocalServicePMEMarshaler(IVaskString* name,
                                                       IMarshalService** service) {
    return start(narrow(tarvo::viewOf(name)), service);
}

// Names that have to be there and are never called.
TARVO_EXPORT void StartAsTCPIPPMCService() {}
TARVO_EXPORT void StartLocalTCPIPTransport() {}
TARVO_EXPORT void StartLocalSharedMemoryTransport() {}
TARVO_EXPORT void SpawnTCPIPTransport() {}
TARVO_EXPORT void StartLocalMarshaler() {}
TARVO_EXPORT void LocalService() {}

TARVO_EXPORT const char* takeNotes() {
    return takeNotesOfModule();
}

TARVO_EXPORT void answerWith(const Answers& given) {
    answers = given;
}
}
