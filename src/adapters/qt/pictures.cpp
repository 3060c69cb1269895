#include "adapters/qt/pictures.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <memory>
#include <vector>

#include "adapters/qt/texts.h"
#include "platform/environment/failure.h"

namespace dossierkit::qt {

QImage DecodePicture(const toolkit::Picture& picture) {
  if (picture.Empty()) return {};
  QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(picture.bytes->data()),
                                             static_cast<qsizetype>(picture.bytes->size()));
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  if (reader.format() != "jpeg") return {};
  return reader.read();
}

toolkit::Picture ReadPicture(const std::string& path) {
  if (path.empty()) return {};
  const QString native = ToNativePath(path);
  QFile file(native);
  if (!QFileInfo(native).isFile() || !file.open(QIODevice::ReadOnly)) {
    throw environment::MakeFailure(environment::kFileNotFound);
  }
  const QByteArray bytes = file.readAll();
  toolkit::Picture picture;
  picture.bytes = std::make_shared<const std::vector<unsigned char>>(bytes.begin(), bytes.end());
  if (DecodePicture(picture).isNull()) throw environment::MakeFailure(environment::kInvalidPicture);
  return picture;
}

}  // namespace dossierkit::qt
