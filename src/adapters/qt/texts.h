// Texts: between the model's text and Qt's.
#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace dossierkit::qt {

QString ToQString(std::string_view text);
std::string ToUtf8(const QString& text);
inline QString ToQString(const std::u16string& text) { return QString::fromStdU16String(text); }
// Points into `text`.
std::u16string_view ViewOf(const QString& text);

// A path as the system wants it: the model's paths may separate folders by a backslash.
QString ToNativePath(std::string_view path);

}  // namespace dossierkit::qt
