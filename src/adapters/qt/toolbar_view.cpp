#include "adapters/qt/toolbar_view.h"

#include <QFile>
#include <QIcon>
#include <QToolButton>
#include <string>

#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"

namespace dossierkit::qt {
namespace {

constexpr int kIconSize = 16;
constexpr int kLargeIconSize = 24;
constexpr int kTallBar = 44;  // from here on the icon stands over the text
constexpr int kButtonPadding = 20;
constexpr int kSeparatorWidth = 13;

}  // namespace

ToolbarView::ToolbarView(ViewContext& context, toolkit::Toolbar& bar)
    : WidgetView(context, bar, new QWidget(ParentWidgetOf(bar))), bar_(bar) {
  Build();
}

void ToolbarView::Build() {
  const auto& buttons = bar_.Buttons();
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    if (buttons[i].IsSeparator()) {
      auto* line = new QWidget(Widget());
      QPalette palette = line->palette();
      palette.setColor(QPalette::Window, EdgeColor());
      line->setPalette(palette);
      line->setAutoFillBackground(true);
      separators_.push_back(line);
      buttons_.push_back(nullptr);
      continue;
    }
    auto* button = new QToolButton(Widget());
    button->setObjectName(ToQString(buttons[i].Key()));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::NoFocus);
    const QString caption = ToQString(buttons[i].Caption());
    button->setText(caption);
    button->setShortcut({});  // mnemonics are the model's
    button->setAccessibleName(ToQString(buttons[i].AccessibleName()));
    const QString icon = QStringLiteral(":/dossierkit/toolbar-%1.png").arg(buttons[i].ImageIndex());
    if (buttons[i].ImageIndex() > 0 && QFile::exists(icon)) button->setIcon(QIcon(icon));
    QObject::connect(button, &QToolButton::clicked, Hub(),
                     [this, i] { Context().application.Guard([this, i] { bar_.UserClick(i); }); });
    buttons_.push_back(button);
  }
}

void ToolbarView::Arrange() {
  const auto& metrics = GetMetrics();
  const bool tall = Widget()->height() >= metrics.Scaled(kTallBar);
  const int icon = metrics.Scaled(tall ? kLargeIconSize : kIconSize);
  int left = 0;
  std::size_t separator = 0;
  for (QToolButton* button : buttons_) {
    if (!button) {
      const int width = metrics.Scaled(kSeparatorWidth);
      const int inset = Widget()->height() / 6;
      separators_[separator++]->setGeometry(left + width / 2, inset, 1, Widget()->height() - 2 * inset);
      left += width;
      continue;
    }
    button->setIconSize({icon, icon});
    button->setToolButtonStyle(button->icon().isNull() ? Qt::ToolButtonTextOnly
                               : tall                  ? Qt::ToolButtonTextUnderIcon
                                                       : Qt::ToolButtonTextBesideIcon);
    int width = button->fontMetrics().horizontalAdvance(button->text()) + metrics.Scaled(kButtonPadding);
    if (!tall && !button->icon().isNull()) width += icon;
    button->setGeometry(left, 0, width, Widget()->height());
    left += width + metrics.Scaled(2);
  }
}

void ToolbarView::ShowPlacement() {
  WidgetView::ShowPlacement();
  Arrange();
}

void ToolbarView::ShowStyle() {
  WidgetView::ShowStyle();
  Arrange();
}

void ToolbarView::ShowContent() {
  for (std::size_t i = 0; i < buttons_.size(); ++i) {
    if (buttons_[i]) buttons_[i]->setEnabled(bar_.Buttons()[i].Enabled());
  }
}

}  // namespace dossierkit::qt
