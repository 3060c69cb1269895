#include "host/failure_box.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

#include "platform/environment/placed_failure.h"

namespace dossierkit::host {
namespace {

constexpr int kWidth = 460;
constexpr int kDetailsHeight = 150;
constexpr int kIconSize = 32;

class FailureBox : public QDialog {
 public:
  FailureBox(QWidget* over, const QString& text, const QString& details) : QDialog(over) {
    setWindowTitle("人员档案");
    auto* told = new QLabel(text, this);
    told->setWordWrap(true);
    told->setMinimumWidth(kWidth);
    told->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(kIconSize));
    auto* top = new QHBoxLayout;
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addSpacing(8);
    top->addWidget(told, 1);
    buttons_ = new QHBoxLayout;
    layout_ = new QVBoxLayout(this);
    layout_->setSizeConstraint(QLayout::SetFixedSize);
    layout_->addLayout(top);
    layout_->addSpacing(8);
    layout_->addLayout(buttons_);
    if (!details.isEmpty()) AddDetails(details);
    buttons_->addStretch(1);
    auto* ok = AddButton("确定");
    ok->setDefault(true);
    QObject::connect(ok, &QPushButton::clicked, this, [this] { accept(); });
    ok->setFocus();
  }

 private:
  void AddDetails(const QString& details) {
    auto* shown = new QPlainTextEdit(details, this);
    shown->setReadOnly(true);
    shown->setTabChangesFocus(true);
    shown->setFixedHeight(kDetailsHeight);
    shown->setAccessibleName("详细信息");
    shown->hide();
    layout_->addWidget(shown);
    auto* show = AddButton("详细信息(&D)");
    show->setCheckable(true);
    QObject::connect(show, &QPushButton::toggled, shown, &QWidget::setVisible);
    auto* copy = AddButton("复制(&C)");
    copy->hide();
    QObject::connect(show, &QPushButton::toggled, copy, &QWidget::setVisible);
    QObject::connect(copy, &QPushButton::clicked, this,
                     [details] { QApplication::clipboard()->setText(details); });
  }

  QPushButton* AddButton(const QString& caption) {
    auto* button = new QPushButton(caption, this);
    button->setAutoDefault(false);
    buttons_->addWidget(button);
    return button;
  }

  QHBoxLayout* buttons_ = nullptr;
  QVBoxLayout* layout_ = nullptr;
};

}  // namespace

void ShowFailureBox(QWidget* over, const QString& text, const std::exception& failure) {
  const auto* known = dynamic_cast<const environment::Failure*>(&failure);
  // A failure of the host's own says all there is to say.
  const bool has_place =
      dynamic_cast<const environment::PlacedFailure*>(&failure) || (known && !known->statement().empty());
  FailureBox(over, text, has_place ? QString::fromStdString(environment::DetailsOf(*known)) : QString())
      .exec();
}

}  // namespace dossierkit::host
