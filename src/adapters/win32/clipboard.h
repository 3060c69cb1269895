// Clipboard: the text that all programs share.
#pragma once

#include <string>

namespace dossierkit::win32 {

// Empty where there is none, or where another program holds the clipboard for longer than a moment.
std::string ReadClipboard();
// With the line breaks of Windows.
void WriteClipboard(const std::string& text);

}  // namespace dossierkit::win32
