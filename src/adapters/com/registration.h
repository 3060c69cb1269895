// The entries of the registry by which hosts find the class.
#pragma once

#include <string>

#include "adapters/windows/windows_headers.h"

namespace dossierkit::com {

// Registers class, ProgID, type library and interface of the library in `file`: for all users of the machine,
// for the present one alone where the rights do not suffice. Throws a Failure.
void Register(const std::wstring& file);

// Takes away what Register wrote, wherever it did. What is not there is no failure. A library of the other
// width that is registered besides stays so.
void Unregister();

// The file of this library or program.
std::wstring OwnFile();

}  // namespace dossierkit::com
