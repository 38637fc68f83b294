// The same component as a COM class, by the same library.
#include <atomic>
#include <new>
#include <unknwn.h>

namespace {

template <class I>
class Counted : public I {
  public:
    virtual ~Counted() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** found) override {
        const bool isKnown = id == __uuidof(IUnknown) || id == __uuidof(I);
        *found = isKnown ? static_cast<I*>(this) : nullptr;
        if (isKnown)
            AddRef();
        return isKnown ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0)
            delete this;
        return left;
    }

  private:
    std::atomic<ULONG> references_ = 1;
};

class Class final : public Counted<IUnknown> {};

class Factory final : public Counted<IClassFactory> {
  public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID id, void** instance) override {
        auto* made = new (std::nothrow) Class;
        if (made == nullptr)
            return E_OUTOFMEMORY;
        const HRESULT result = made->QueryInterface(id, instance);
        made->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

} // namespace

extern "C" __declspec(dllexport) HRESULT STDMETHODCALLTYPE
    DllGetClassObject(REFCLSID, REFIID id, void** factory) {
    auto* made = new (std::nothrow) Factory;
    if (made == nullptr)
        return E_OUTOFMEMORY;
    const HRESULT result = made->QueryInterface(id, factory);
    made->Release();
    return result;
}
