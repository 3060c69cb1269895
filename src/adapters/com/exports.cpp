// What the library shows, undecorated, and nothing else: exports.def names it.
#include "adapters/com/class_factory.h"
#include "adapters/com/failures.h"
#include "adapters/com/registration.h"
#include "adapters/com/server.h"

extern "C" {

HRESULT WINAPI DllGetClassObject(REFCLSID wanted_class, REFIID wanted, void** factory) {
  return dossierkit::com::GetFactory(wanted_class, wanted, factory);
}

HRESULT WINAPI DllCanUnloadNow() { return dossierkit::com::EndServer(); }

HRESULT WINAPI DllRegisterServer() {
  return dossierkit::com::Guarded([] {
    dossierkit::com::Register(dossierkit::com::OwnFile());
    return S_OK;
  });
}

HRESULT WINAPI DllUnregisterServer() {
  return dossierkit::com::Guarded([] {
    dossierkit::com::Unregister();
    return S_OK;
  });
}
}
