#include "adapters/qt/pictures.h"

#include <QBuffer>
#include <QImageReader>
#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "platform/environment/failure.h"
#include "platform/files/picture_file.h"

namespace dossierkit::qt {
namespace {

// The decoder gives whole eighths of a picture. Of a very long one that is shown in a small frame it is not
// to give more pixels than this, whatever the frame wants.
constexpr double kMostDecoded = 12e6;

// The size to decode at: as large as the frame in both directions, and not enlarged.
QSize DecodedSize(QSize whole, QSize frame) {
  const double wanted =
      std::max(double(frame.width()) / whole.width(), double(frame.height()) / whole.height());
  const double most = std::sqrt(kMostDecoded / (double(whole.width()) * whole.height()));
  const double factor = std::min({1.0, wanted, most});
  return (QSizeF(whole) * factor).toSize().expandedTo({1, 1});
}

// Null where the bytes are no JPEG.
QImage Decode(const std::vector<unsigned char>& bytes, QSize size) {
  size = size.expandedTo({1, 1});
  QByteArray raw = QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()),
                                           static_cast<qsizetype>(bytes.size()));
  QBuffer buffer(&raw);
  buffer.open(QIODevice::ReadOnly);
  QImageReader reader(&buffer);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  if (reader.format() != "jpeg" || reader.size().isEmpty()) return {};
  const bool on_its_side = reader.transformation() & QImageIOHandler::TransformationRotate90;
  reader.setScaledSize(DecodedSize(reader.size(), on_its_side ? size.transposed() : size));
  const QImage image = reader.read();
  if (image.isNull()) return {};
  return image.scaled(image.size().boundedTo(size), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace

toolkit::Picture ReadPicture(const std::string& path, QSize size) {
  if (path.empty()) return {};
  toolkit::Picture picture;
  picture.bytes = std::make_shared<const std::vector<unsigned char>>(files::ReadPictureFile(path));
  const auto image = std::make_shared<const QImage>(Decode(*picture.bytes, size));
  if (image->isNull()) throw environment::MakeFailure(environment::kInvalidPicture);
  picture.decoded = image;
  return picture;
}

QImage ImageOf(const toolkit::Picture& picture) {
  return picture.decoded ? *static_cast<const QImage*>(picture.decoded.get()) : QImage();
}

}  // namespace dossierkit::qt
