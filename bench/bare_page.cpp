#include "bench/bare_page.h"

#include <QLabel>
#include <QPalette>

namespace dossierkit::bench {
namespace {

// The blue of coded fields, by which start_bench and limits see that a page is painted.
constexpr QRgb kPaintedColor = qRgb(0xC9, 0xE0, 0xFC);

}  // namespace

BarePage::BarePage(const QStringList& captions) {
  resize(840, 600);
  QPalette blue = palette();
  blue.setColor(QPalette::Base, QColor(kPaintedColor));
  for (qsizetype i = 0; i < captions.size(); ++i) {
    const int left = i % 2 == 0 ? 20 : 300;
    const int top = 20 + static_cast<int>(i / 2) * 33;
    auto* label = new QLabel(captions[i], this);
    label->setGeometry(left, top, 90, 24);
    auto* edit = new QLineEdit(this);
    edit->setGeometry(left + 90, top, 180, 24);
    edit->setPalette(blue);
    edits_.push_back(edit);
  }
}

void BarePage::SetTexts(const QStringList& texts) {
  for (std::size_t i = 0; i < edits_.size(); ++i) {
    edits_[i]->setText(texts.value(static_cast<qsizetype>(i)));
  }
}

}  // namespace dossierkit::bench
