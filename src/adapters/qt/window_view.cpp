#include "adapters/qt/window_view.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"
#include "platform/toolkit/controls/tab_strip.h"
#include "platform/toolkit/controls/toolbar.h"
#include "platform/toolkit/controls/user_control.h"
#include "platform/toolkit/loop/form.h"

namespace dossierkit::qt {
namespace {

class Window : public QWidget {
 public:
  Window(QtApplication& application, QWidget* parent)
      : QWidget(parent, Qt::Window), application_(application) {
    setAttribute(Qt::WA_QuitOnClose, false);  // the program's own windows decide that
  }

 protected:
  void closeEvent(QCloseEvent* event) override {
    event->ignore();  // the model closes it
    if (auto* view = View()) view->Closed();
  }
  void resizeEvent(QResizeEvent* event) override {
    QWidget::resizeEvent(event);
    if (auto* view = View()) view->Resized();
  }
  // Tab is the model's. Qt asks here also where to put the focus of a widget that was disabled.
  bool focusNextPrevChild(bool) override { return false; }

 private:
  WindowView* View() { return static_cast<WindowView*>(application_.ViewOf(this)); }
  QtApplication& application_;
};

QWidget* MakeWindow(ViewContext& context) {
  WindowView* below = context.application.TopWindow();
  return new Window(context.application, below && below->Widget()->isVisible() ? below->Widget() : nullptr);
}

bool ClickMnemonicIn(const toolkit::Controls& controls, char letter) {
  for (const auto& control : controls) {
    if (!control->Reachable() || toolkit::OnHiddenTab(*control)) continue;
    if (auto* bar = dynamic_cast<toolkit::Toolbar*>(control.get())) {
      if (const int index = bar->FindMnemonic(letter); index >= 0) {
        bar->UserClick(static_cast<std::size_t>(index));
        return true;
      }
    } else if (auto* button = dynamic_cast<toolkit::CommandButton*>(control.get())) {
      if (MnemonicOf(button->Caption()) == letter) {
        button->UserClick();
        return true;
      }
    } else if (auto* box = dynamic_cast<toolkit::CheckBox*>(control.get())) {
      if (MnemonicOf(box->Caption()) == letter) {
        box->UserToggle();
        return true;
      }
    } else if (auto* page = dynamic_cast<toolkit::UserControl*>(control.get())) {
      if (ClickMnemonicIn(page->Controls(), letter)) return true;
    }
  }
  return false;
}

}  // namespace

WindowView::WindowView(ViewContext& context, toolkit::Form& form)
    : WidgetView(context, form, MakeWindow(context)), place_(form.Place()) {
  auto* layout = new QVBoxLayout(Widget());
  layout->setContentsMargins(0, 0, 0, 0);
  area_ = new QScrollArea(Widget());
  area_->setFrameShape(QFrame::NoFrame);
  area_->setFocusPolicy(Qt::NoFocus);
  area_->setWidgetResizable(true);
  content_ = new QWidget(area_);
  content_->setMinimumSize(DesignSize());
  area_->setWidget(content_);
  layout->addWidget(area_);
  Widget()->setWindowModality(Qt::ApplicationModal);
  context.application.AddWindow(*this);
}

WindowView::~WindowView() { Context().application.RemoveWindow(*this); }

toolkit::Form& WindowView::GetForm() const { return static_cast<toolkit::Form&>(GetControl()); }

QSize WindowView::DesignSize() const {
  return {GetMetrics().Pixels(GetForm().DesignWidth()), GetMetrics().Pixels(GetForm().DesignHeight())};
}

void WindowView::Present() {
  QWidget& window = *Widget();
  if (!presented_) {
    presented_ = true;
    const QScreen* screen = window.screen() ? window.screen() : QGuiApplication::primaryScreen();
    const QRect available = screen->availableGeometry();
    const int scroll_bar = area_->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    QSize size = DesignSize();
    if (size.height() > available.height()) size.rwidth() += scroll_bar;
    size = size.boundedTo(available.size());
    if (GetForm().Sizable()) {
      window.resize(size);
    } else {
      window.setFixedSize(size);
    }
    const QWidget* owner = GetForm().CenteredOnOwner() ? window.parentWidget() : nullptr;
    QRect centered({}, size);
    centered.moveCenter((owner ? owner->geometry() : available).center());
    QPoint corner = centered.topLeft();
    if (const auto& place = GetForm().Place(); place.left != 0 || place.top != 0) {
      corner = {GetMetrics().Pixels(place.left), GetMetrics().Pixels(place.top)};
    }
    window.move(std::clamp(corner.x(), available.left(), available.right() + 1 - size.width()),
                std::clamp(corner.y(), available.top(), available.bottom() + 1 - size.height()));
  }
  window.show();
  window.raise();
  window.activateWindow();
  Context().application.SyncFocus(GetForm());
}

void WindowView::Withdraw() { Widget()->hide(); }

void WindowView::BringIntoSight(QWidget& widget) {
  if (content_->isAncestorOf(&widget)) area_->ensureWidgetVisible(&widget, 8, 8);
}

bool WindowView::ClickMnemonic(char letter) {
  return GetForm().Loaded() && ClickMnemonicIn(GetForm().Controls(), letter);
}

void WindowView::Closed() {
  Context().application.Guard([this] { GetForm().UserClose(); });
}

void WindowView::Resized() {
  if (!presented_) return;
  const auto keep = GetForm().shared_from_this();
  // A smaller window scrolls: for the model it keeps the size of its design.
  const QSize design = DesignSize();
  const QSize client = Widget()->size().expandedTo(design);
  const auto& metrics = GetMetrics();
  const int width =
      client.width() == design.width() ? GetForm().DesignWidth() : metrics.Twips(client.width());
  const int height =
      client.height() == design.height() ? GetForm().DesignHeight() : metrics.Twips(client.height());
  Context().application.Guard(
      [&] { GetForm().UserResize(width + toolkit::kBorderWidth, height + toolkit::kBorderHeight); });
}

void WindowView::ShowPlacement() {
  const toolkit::Rect place = GetForm().Place();
  const bool moved = place.left != place_.left || place.top != place_.top;
  place_ = place;
  if (moved && presented_) Widget()->move(GetMetrics().Pixels(place.left), GetMetrics().Pixels(place.top));
}

void WindowView::ShowText() {
  Widget()->setWindowTitle(ToQString(GetForm().Caption()));
  Widget()->setAccessibleName(ToQString(GetForm().Caption()));
}

}  // namespace dossierkit::qt
