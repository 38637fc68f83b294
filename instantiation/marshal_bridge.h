// The marshal library, TARVOMarshal.dll, which reaches other processes and machines. It stands
// beside this library and is loaded when it is first needed, for good.
#pragma once

#include "tarvo/marshal.h"

namespace TARVO {

struct MarshalBridge {
    // The bound library. Raises RC_UNSPECIFIED if it can't be loaded or isn't complete; the next
    // call tries again then. Any thread.
    static const MarshalBridge& bound();

    StartLocalPMEMarshalerFunction* startLocalPMEMarshaler;
    ConnectTCPIPServiceFunction* connectTCPIPService;
    StartLocalServicePMEMarshalerFunction* startLocalServicePMEMarshaler;
};

} // namespace TARVO
