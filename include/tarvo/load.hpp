// The library as a program of C++ reaches it: bound by the client (client.h), with which the program
// is linked.
#pragma once

#include "client.h"
#include "encoding.hpp"
#include "error.hpp"
#include "result.hpp"
#include "text.hpp"

#include <string>

namespace tarvo {

// Binds the newest installed library, once and before other threads are started. Raises Error with
// the client's message if there is none that can serve; its code is RC_NOT_AVAILABLE.
//
//     tarvo::load();
//     std::cout << "TARVO " << tarvo::toUtf8(tarvo::version()) << '\n';
inline void load() {
    String message;
    if (!loadTarvoLibrary(message.pair()))
        throw Error(RC_NOT_AVAILABLE, toUtf8(message.text()));
}

// The bound functions. Raises Error with RC_NOT_AVAILABLE if load hasn't been called.
inline const TarvoEntryPoints& functions() {
    const TarvoEntryPoints* const table = tarvoEntryPoints();
    if (table == nullptr || table->getTarvoVersion == nullptr)
        throw Error(RC_NOT_AVAILABLE, "the library isn't bound yet: call tarvo::load first");
    return *table;
}

inline std::u16string version() {
    String version;
    require(functions().getTarvoVersion(version.pair()), "getTarvoVersion");
    return std::move(version.text());
}

// The text of a result code for people, in the language of the installation.
inline std::u16string textOfResult(TarvoResult result) {
    return textOfResult(result, *functions().getErrorDescription);
}

} // namespace tarvo
