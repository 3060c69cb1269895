// Pictures of native windows.
#pragma once

#include <filesystem>

#include "adapters/windows/windows_headers.h"

namespace dossierkit::host {

// Writes what a window shows, without its frame, as a PNG file. Throws a Failure.
void WritePicture(HWND window, const std::filesystem::path& file);

}  // namespace dossierkit::host
