#include "instantiation/marshal_bridge.h"

#include "core/environment.h"
#include "core/link_error.h"
#include "platform/module.h"

#include <array>
#include <string_view>

namespace TARVO {

namespace {

constexpr std::array kEntryPoints = {TARVO_MARSHAL_ENTRY_POINTS};

// A library that lacks any of its names is of another version, even if the three called are there.
MarshalBridge bind() {
    const platform::ModuleHandle module =
        platform::loadModule(moduleFolder() + u"TARVOMarshal.dll");
    if (module == nullptr)
        throw vask_link_error(RC_UNSPECIFIED);
    MarshalBridge bridge{};
    for (const std::string_view name : kEntryPoints) {
        void* const found = platform::findSymbol(module, name.data());
        if (found == nullptr)
            throw vask_link_error(RC_UNSPECIFIED);
        if (name == "StartLocalPMEMarshaler")
            bridge.startLocalPMEMarshaler =
                reinterpret_cast<StartLocalPMEMarshalerFunction*>(found);
        else if (name == "ConnectTCPIPService")
            bridge.connectTCPIPService = reinterpret_cast<ConnectTCPIPServiceFunction*>(found);
        else if (name == "StartLocalServicePMEMarshaler")
            bridge.startLocalServicePMEMarshaler =
                reinterpret_cast<StartLocalServicePMEMarshalerFunction*>(found);
    }
    return bridge;
}

} // namespace

const MarshalBridge& MarshalBridge::bound() {
    static const MarshalBridge bridge = bind();
    return bridge;
}

} // namespace TARVO
