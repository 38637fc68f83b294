#include "bench/creation_component.h"
#include "bench/creation_peers.h"
#include "bench/require.h"
#include "platform/identifier.h"
#include "platform/system_registry.h"

#include <bit>
#include <cstdlib>
#include <memory>
#include <objbase.h>

namespace bench {

namespace {

using TARVO::platform::RegistryRoot;
using TARVO::platform::RegistryView;
using TARVO::platform::SystemKey;

const auto kClassText =
    TARVO::platform::classText(std::bit_cast<TARVO::platform::IdentifierBytes>(bench::kNothing));

SystemKey allClasses() {
    return SystemKey::openForWriting(RegistryRoot::localMachine, u"Software\\Classes",
                                     RegistryView::view64)
        .openForWriting(u"CLSID", RegistryView::view64);
}

// A COM class of the library, gone with the object, on a thread of many.
class ComClass {
  public:
    explicit ComClass(std::u16string_view library) {
        require(CoInitializeEx(nullptr, COINIT_MULTITHREADED) == S_OK);
        const SystemKey server = allClasses()
                                     .create(kClassText.data(), RegistryView::view64)
                                     .create(u"InprocServer32", RegistryView::view64);
        require(server.setText(nullptr, std::u16string(library).c_str()));
        require(server.setText(u"ThreadingModel", u"Both"));
        const auto* text = reinterpret_cast<const wchar_t*>(kClassText.data());
        require(CLSIDFromString(text, &id_) == S_OK);
    }
    ComClass(const ComClass&) = delete;
    ComClass& operator=(const ComClass&) = delete;
    ~ComClass() {
        allClasses().deleteTree(kClassText.data(), RegistryView::view64);
        CoUninitialize();
    }

    void createAndRelease() const {
        void* instance = nullptr;
        require(CoCreateInstance(id_, nullptr, CLSCTX_INPROC_SERVER, __uuidof(IUnknown),
                                 &instance) == S_OK);
        static_cast<IUnknown*>(instance)->Release();
    }

  private:
    CLSID id_{};
};

} // namespace

std::vector<CreationPeer> systemCreationPeers(std::u16string_view library) {
    const auto comClass = std::make_shared<ComClass>(library);
    return {{"CoCreateInstance", [comClass] {
                 comClass->createAndRelease();
             }}};
}

} // namespace bench
