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

namespace dossierkit::qt {
namespace {

constexpr int kIconSize = 32;
constexpr int kTextWidth = 440;
constexpr int kButtonWidth = 88;
constexpr int kButtonHeight = 28;
constexpr int kMargin = 18;
constexpr int kIconMask = 0xF0;

// A disc with a sign: "?" on blue, "!" on amber, "i" on blue; null without an icon.
QPixmap IconOf(int flags, int side, double pixel_ratio) {
  const int kind = flags & kIconMask;
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

Qt::WindowFlags FlagsOf(bool asks) {
  const Qt::WindowFlags flags = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
  return asks ? flags : flags | Qt::WindowCloseButtonHint | Qt::WindowSystemMenuHint;
}

}  // namespace

MessageDialog::MessageDialog(const Metrics& metrics, const QString& text, int flags, const QString& title,
                             QWidget* parent)
    : QDialog(parent, FlagsOf(flags & toolkit::kYesNo)), metrics_(metrics), asks_(flags & toolkit::kYesNo) {
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
  if (asks_) {
    AddButton(*row, QStringLiteral("是(&Y)"), "Yes", toolkit::kAnswerYes, true);
    AddButton(*row, QStringLiteral("否(&N)"), "No", toolkit::kAnswerNo, false);
  } else {
    AddButton(*row, QStringLiteral("确定"), "OK", toolkit::kAnswerOk, true);
  }

  auto* all = new QVBoxLayout(this);
  all->setContentsMargins(0, 0, 0, 0);
  all->setSpacing(0);
  all->addLayout(upper);
  all->addWidget(lower);
  all->setSizeConstraint(QLayout::SetFixedSize);
}

void MessageDialog::AddButton(QHBoxLayout& row, const QString& text, const char* name,
                              toolkit::MessageAnswer answer, bool is_default) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(QString::fromLatin1(name));
  button->setAccessibleName(text.left(text.indexOf(QStringLiteral("(&"))));
  button->setMinimumSize(metrics_.Scaled(kButtonWidth), metrics_.Scaled(kButtonHeight));
  button->setAutoDefault(true);
  button->setDefault(is_default);
  if (is_default) button->setFocus();
  QObject::connect(button, &QPushButton::clicked, this, [this, answer] { Take(answer); });
  row.addWidget(button);
}

void MessageDialog::Take(toolkit::MessageAnswer answer) {
  if (answered_) return;
  answered_ = true;
  answer_ = answer;
  if (wake_) wake_();
}

void MessageDialog::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Escape:
      if (!asks_) Take(toolkit::kAnswerOk);
      return;
    case Qt::Key_Y:
      if (asks_) Take(toolkit::kAnswerYes);
      return;
    case Qt::Key_N:
      if (asks_) Take(toolkit::kAnswerNo);
      return;
    case Qt::Key_Left:
    case Qt::Key_Up: focusPreviousChild(); return;
    case Qt::Key_Right:
    case Qt::Key_Down: focusNextChild(); return;
    default: QDialog::keyPressEvent(event);
  }
}

void MessageDialog::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (!asks_) Take(toolkit::kAnswerOk);
}

}  // namespace dossierkit::qt
