#include "adapters/qt/tab_strip_view.h"

#include <QPainter>
#include <QTabBar>

#include "adapters/qt/qt_application.h"
#include "adapters/qt/texts.h"

namespace dossierkit::qt {
namespace {

// The panel, and the tabs along its top.
class Strip : public QWidget {
 public:
  explicit Strip(QWidget* parent) : QWidget(parent), bar_(new QTabBar(this)) {}
  QTabBar* Bar() const { return bar_; }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setPen(EdgeColor());
    painter.drawRect(rect().adjusted(0, bar_->height() - 1, -1, -1));
  }

 private:
  QTabBar* bar_;
};

}  // namespace

TabStripView::TabStripView(ViewContext& context, toolkit::TabStrip& strip)
    : WidgetView(context, strip, new Strip(ParentWidgetOf(strip))),
      strip_(strip),
      bar_(static_cast<Strip*>(Widget())->Bar()) {
  Widget()->setFocusPolicy(Qt::NoFocus);
  bar_->setObjectName(ToQString(strip.Name() + "_Tabs"));
  bar_->setFocusPolicy(Qt::StrongFocus);
  bar_->setExpanding(false);
  bar_->setDrawBase(false);
  QObject::connect(bar_, &QTabBar::currentChanged, Hub(), [this](int tab) {
    if (!IsShowing()) TabWanted(tab);
  });
}

QWidget* TabStripView::FocusWidget() const { return bar_; }

// The native tab has turned already; the model shows which one is in front after all.
void TabStripView::TabWanted(int tab) {
  Context().application.Guard([&] { strip_.UserSelectTab(tab); });
}

void TabStripView::Arrange() { bar_->setGeometry(0, 0, Widget()->width(), bar_->sizeHint().height()); }

void TabStripView::ShowPlacement() {
  WidgetView::ShowPlacement();
  Arrange();
}

void TabStripView::ShowStyle() {
  WidgetView::ShowStyle();
  bar_->setAccessibleName(Widget()->accessibleName());
  Arrange();
}

void TabStripView::ShowContent() {
  for (int tab = 0; tab < strip_.TabCount(); ++tab) {
    // Mnemonics are the model's.
    const QString caption = ToQString(strip_.TabCaption(tab)).replace(QLatin1Char('&'), QStringLiteral("&&"));
    const auto showing = Showing();
    if (tab == bar_->count()) bar_->addTab(caption);
    if (bar_->tabText(tab) != caption) bar_->setTabText(tab, caption);
  }
  Arrange();
  ShowSelection();
}

void TabStripView::ShowSelection() {
  const auto showing = Showing();
  bar_->setCurrentIndex(strip_.Tab());
}

}  // namespace dossierkit::qt
