#include "adapters/qt/texts.h"

namespace dossierkit::qt {

QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::string ToUtf8(const QString& text) { return text.toStdString(); }

std::u16string_view ViewOf(const QString& text) {
  return {QStringView(text).utf16(), static_cast<std::size_t>(text.size())};
}

QString ToNativePath(std::string_view path) {
  return ToQString(path).replace(QLatin1Char('\\'), QLatin1Char('/'));
}

}  // namespace dossierkit::qt
