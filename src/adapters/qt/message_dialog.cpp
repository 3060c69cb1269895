#include "adapters/qt/message_dialog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "adapters/qt/keys.h"
#include "adapters/qt/texts.h"
#include "platform/toolkit/controls/mnemonic.h"

namespace dossierkit::qt {
namespace {

constexpr int kIconSize = 32;
constexpr int kTextWidth = 440;
constexpr int kButtonWidth = 88;
constexpr int kButtonHeight = 28;
constexpr int kMargin = 18;

// A disc with a sign: "?" on blue, "!" on amber, "i" on blue; null without an icon.
QPixmap IconOf(int flags, int side, double pixel_ratio) {
  const int kind = toolkit::MessageIconOf(flags);
  const char* sign = kind == toolkit::kQuestionIcon      ? "?"
                     : kind == toolkit::kExclamationIcon ? "!"
                     : kind == toolkit::kInformationIcon ? "i"
                                                         : nullptr;
  if (!sign) return {};
  QPixmap picture(QSize(side, side) * pixel_ratio);
  picture.setDevicePixelRatio(pixel_ratio);
  picture.fill(Qt::transparent);
  QPainter painter(&picture);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(kind == toolkit::kExclamationIcon ? QColor(0xD9, 0x8A, 0x12) : AccentColor());
  painter.drawEllipse(QRectF(1, 1, side - 2, side - 2));
  QFont font = painter.font();
  font.setPixelSize(side * 5 / 8);
  font.setBold(true);
  painter.setFont(font);
  painter.setPen(Qt::white);
  painter.drawText(QRect(0, 0, side, side), Qt::AlignCenter, QString::fromLatin1(sign));
  return picture;
}

Qt::WindowFlags WindowFlagsOf(int flags) {
  const Qt::WindowFlags native = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
  return toolkit::MessageClosed(flags) ? native | Qt::WindowCloseButtonHint | Qt::WindowSystemMenuHint
                                       : native;
}

}  // namespace

MessageDialog::MessageDialog(const Metrics& metrics, const QString& text, int flags, const QString& title,
                             QWidget* parent)
    : QDialog(parent, WindowFlagsOf(flags)), metrics_(metrics), flags_(flags) {
  setObjectName(QStringLiteral("MessageBox"));
  setAttribute(Qt::WA_QuitOnClose, false);
  setWindowTitle(title);
  setAccessibleName(title);
  setAccessibleDescription(text);
  setWindowModality(Qt::ApplicationModal);
  setFont(metrics.ProgramFont());
  const int margin = metrics.Scaled(kMargin);

  auto* upper = new QHBoxLayout;
  upper->setContentsMargins(margin, margin, margin, margin);
  upper->setSpacing(margin * 2 / 3);
  const QPixmap icon = IconOf(flags, metrics.Scaled(kIconSize), devicePixelRatioF());
  if (!icon.isNull()) {
    auto* picture = new QLabel(this);
    picture->setPixmap(icon);
    upper->addWidget(picture, 0, Qt::AlignTop);
  }
  auto* label = new QLabel(text, this);
  label->setObjectName(QStringLiteral("Text"));
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  const int most = metrics.Scaled(kTextWidth);
  const QRect needed = label->fontMetrics().boundingRect(QRect(0, 0, most, 100000),
                                                         Qt::TextWordWrap | Qt::TextWrapAnywhere, text);
  label->setFixedWidth(std::clamp(needed.width() + 4, metrics.Scaled(140), most));
  const int highest = parent ? parent->screen()->availableGeometry().height() / 2 : metrics.Scaled(400);
  if (needed.height() > highest) {
    auto* area = new QScrollArea(this);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidget(label);
    area->setWidgetResizable(true);
    area->setFixedSize(label->width() + area->verticalScrollBar()->sizeHint().width(), highest);
    upper->addWidget(area);
  } else {
    label->setMinimumHeight(std::max(needed.height(), metrics.Scaled(kIconSize)));
    upper->addWidget(label);
  }
  upper->addStretch();

  auto* lower = new QWidget(this);
  lower->setAutoFillBackground(true);
  QPalette palette = lower->palette();
  palette.setColor(QPalette::Window, BarColor());
  lower->setPalette(palette);
  auto* row = new QHBoxLayout(lower);
  row->setContentsMargins(margin, margin / 2, margin, margin / 2);
  row->addStretch();
  for (const auto& button : toolkit::MessageButtonsOf(flags)) AddButton(*row, button);

  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addLayout(upper);
  all->addWidget(lower);
  all->setSizeConstraint(QLayout::SetFixedSize);
}

void MessageDialog::AddButton(QHBoxLayout& row, const toolkit::MessageButton& offered) {
  auto* button = new QPushButton(ToQString(offered.caption), this);
  button->setObjectName(ToQString(offered.name));
  button->setAccessibleName(ToQString(toolkit::WithoutMnemonic(offered.caption)));
  button->setMinimumSize(metrics_.Scaled(kButtonWidth), metrics_.Scaled(kButtonHeight));
  button->setAutoDefault(true);
  button->setDefault(offered.is_default);
  if (offered.is_default) button->setFocus();
  QObject::connect(button, &QPushButton::clicked, this, [this, answer = offered.answer] { Take(answer); });
  row.addWidget(button);
}

void MessageDialog::Take(toolkit::MessageAnswer answer) {
  if (answered_) return;
  answered_ = true;
  answer_ = answer;
  if (wake_) wake_();
}

void MessageDialog::keyPressEvent(QKeyEvent* event) {
  if (const auto answer = toolkit::MessageAnswerOf(flags_, StrokeOf(*event))) return Take(*answer);
  if (event->key() != Qt::Key_Escape) QDialog::keyPressEvent(event);  // a question has to be answered
}

void MessageDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (const auto answer = toolkit::MessageClosed(flags_)) Take(*answer);
}

}  // namespace dossierkit::qt
