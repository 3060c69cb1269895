// FileDialog: the choice of a file, in the dialog of Windows.
#pragma once

#include <string>

#include "adapters/windows/windows_headers.h"

namespace dossierkit::win32 {

// The filters of "name|patterns|name|patterns" as the dialog wants them: a name and its patterns, each ended
// by a character of number 0.
std::wstring NativeFiltersOf(const std::string& filter);

// The folder that a start folder means: itself, or the nearest one above it that is there; empty for none.
std::wstring StartFolderOf(const std::string& init_dir);

// Asks for one file, which need not exist; empty where the user chose none. The program's working folder
// stays as it is. Runs the dialog's own loop.
std::string ChooseFile(const std::string& filter, const std::string& init_dir, HWND owner);

}  // namespace dossierkit::win32
