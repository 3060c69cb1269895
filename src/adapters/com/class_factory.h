// The class factory, from which COM gets the objects of hosts.
#pragma once

#include "adapters/com/pointers.h"
#include "adapters/windows/windows_headers.h"

namespace dossierkit::com {

// What DllGetClassObject gives: CLASS_E_CLASSNOTAVAILABLE for any other class.
HRESULT GetFactory(REFCLSID wanted_class, REFIID wanted, void** factory) noexcept;

}  // namespace dossierkit::com
