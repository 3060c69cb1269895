#include "adapters/com/class_factory.h"

#include <atomic>

#include "adapters/com/failures.h"
#include "adapters/com/identifiers.h"
#include "adapters/com/server.h"
#include "adapters/com/user_ctrl_object.h"

namespace dossierkit::com {
namespace {

class Factory : public IClassFactory {
 public:
  Factory() { Hold(); }
  virtual ~Factory() { LetGo(); }
  Factory(const Factory&) = delete;
  Factory& operator=(const Factory&) = delete;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
    if (!object) return E_POINTER;
    *object = wanted == IID_IUnknown || wanted == IID_IClassFactory ? this : nullptr;
    if (!*object) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** object) override {
    if (!object) return E_POINTER;
    *object = nullptr;
    if (outer) return CLASS_E_NOAGGREGATION;
    return Guarded([&] { return UserCtrlObject::Make()->QueryInterface(wanted, object); });
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override {
    lock ? Hold() : LetGo();
    return S_OK;
  }

 private:
  std::atomic<ULONG> references_{0};
};

}  // namespace

HRESULT GetFactory(REFCLSID wanted_class, REFIID wanted, void** factory) noexcept {
  if (!factory) return E_POINTER;
  *factory = nullptr;
  if (wanted_class != kClass) return CLASS_E_CLASSNOTAVAILABLE;
  return Guarded([&] { return Pointer<IClassFactory>(new Factory)->QueryInterface(wanted, factory); });
}

}  // namespace dossierkit::com
