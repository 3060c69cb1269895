#include "adapters/qt/image_view.h"

#include <QImage>
#include <QPainter>

#include "adapters/qt/pictures.h"

namespace dossierkit::qt {
namespace {

class ImageWidget : public QWidget {
 public:
  ImageWidget(const Metrics& metrics, QWidget* parent) : QWidget(parent), metrics_(metrics) {}
  void SetImage(const QImage& image) {
    image_ = image;
    update();
  }
  void SetBorder(bool border) {
    border_ = border;
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    QRect inner = rect();
    if (border_) {
      PaintBox(painter, rect(), Qt::white, {EdgeColor(), metrics_.Edge(), metrics_.Radius()});
      const int margin = metrics_.Ring();
      inner.adjust(margin, margin, -margin, -margin);
    }
    if (image_.isNull()) return;
    const QSize device = inner.size() * devicePixelRatioF();
    if (scaled_.size() != device || scaled_from_ != image_.cacheKey()) {
      scaled_ = image_.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
      scaled_from_ = image_.cacheKey();
    }
    painter.drawImage(inner, scaled_);
  }

 private:
  Metrics metrics_;
  QImage image_;
  QImage scaled_;  // to the present size, for repeated painting
  qint64 scaled_from_ = 0;
  bool border_ = false;
};

}  // namespace

ImageView::ImageView(ViewContext& context, toolkit::Image& image)
    : WidgetView(context, image, new ImageWidget(context.metrics, ParentWidgetOf(image))), image_(image) {}

void ImageView::ShowContent() { static_cast<ImageWidget*>(Widget())->SetImage(ImageOf(image_.GetPicture())); }

void ImageView::ShowStyle() {
  WidgetView::ShowStyle();
  static_cast<ImageWidget*>(Widget())->SetBorder(image_.Border());
}

}  // namespace dossierkit::qt
