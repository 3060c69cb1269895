// A window smaller or larger than its design: what scrolls, and what stays in sight.
#include <QAbstractScrollArea>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>

#include "adapters/qt/look.h"
#include "tests/adapters/qt/stage.h"

namespace dossierkit::qt {
namespace {

class QtPanes : public Stage {
 protected:
  static QWidget& Window() { return *QApplication::activeWindow(); }
  static QScrollArea& Area() { return *Window().findChild<QScrollArea*>(); }
  static QPoint Offset() {
    return {Area().horizontalScrollBar()->value(), Area().verticalScrollBar()->value()};
  }
  static QRect InWindow(const QWidget& widget) {
    return {widget.mapTo(&Window(), QPoint(0, 0)), widget.size()};
  }
};

TEST_F(QtPanes, ASmallerWindowKeepsToolbarNameAndMenuInSight) {
  Play([&] {
    Window().resize(600, 400);
    EXPECT_EQ(Native("CBar1")->geometry(), QRect(0, 0, 600, 34));
    EXPECT_EQ(InWindow(*Native("labPersonName")), QRect(4, 4, 128, 22));
    EXPECT_EQ(InWindow(*Native("Exit")).right() < 600, true);
    EXPECT_EQ(Native("frmVMenu")->geometry(), QRect(1, 24, 141, 376));
    EXPECT_EQ(Native("VMenu1")->geometry(), QRect(0, 8, 137, 366));
    EXPECT_EQ(Area().geometry(), QRect(145, 35, 455, 365));
    EXPECT_EQ(Native("frmCtrl")->size(), QSize(863, 625)) << "it scrolls, and keeps its size";
    Area().verticalScrollBar()->setValue(1000);
    Area().horizontalScrollBar()->setValue(1000);
    EXPECT_EQ(InWindow(*Native("frmCtrl")).bottomRight(),
              Area().geometry().bottomRight() -
                  QPoint(Area().verticalScrollBar()->width(), Area().horizontalScrollBar()->height()));
    EXPECT_EQ(Native("CBar1")->geometry(), QRect(0, 0, 600, 34));
    EXPECT_EQ(form->area->Place(), (toolkit::Rect{2175, 525, 12945, 9375}))
        << "for the model nothing changed";
    EXPECT_EQ(form->page->Place(), (toolkit::Rect{0, 0, 13000, 9800}));
    EXPECT_EQ(form->resizes, 1);
  });
}

TEST_F(QtPanes, InALargerWindowBarAndMenuAreAsLongAsIt) {
  Play([&] {
    Window().resize(1200, 900);
    EXPECT_EQ(Native("CBar1")->geometry(), QRect(0, 0, 1200, 34));
    EXPECT_EQ(Native("frmVMenu")->geometry(), QRect(1, 24, 141, 876));
    EXPECT_EQ(Native("VMenu1")->geometry(), QRect(0, 8, 137, 866));
    EXPECT_EQ(Native("frmCtrl")->size(), QSize(863, 625));
    QCoreApplication::processEvents();
    EXPECT_FALSE(Area().horizontalScrollBar()->isVisible());
    EXPECT_FALSE(Area().verticalScrollBar()->isVisible());
    const QImage picture = Window().grab().toImage();
    EXPECT_EQ(picture.pixelColor(1195, 15), BarColor());
    EXPECT_EQ(picture.pixelColor(70, 895), picture.pixelColor(70, 800)) << "the menu's, below its items";
    EXPECT_EQ(form->resizes, 2) << "one for the opening, one for the change";
  });
}

TEST_F(QtPanes, OpensAtTheUpperLeftCornerOfItsPage) {
  Play([&] { EXPECT_EQ(Offset(), QPoint(0, 0)); });
}

TEST_F(QtPanes, TheFocusComesIntoSightWithItsLabel) {
  Play([&] {
    Window().resize(600, 400);
    form->page->button->SetFocus();
    // To the right edge of 9000 + 1500 twips, the lower one of 5400 + 390, and 8 pixels more.
    EXPECT_EQ(Offset(), QPoint(700 + 8 - Area().viewport()->width(), 386 + 8 - Area().viewport()->height()));
    form->page->name->SetFocus();
    EXPECT_EQ(Offset().x(), 300 / 15 - 8) << "its label's left edge";
    form->page->coded->SetFocus();
    EXPECT_EQ(Offset().x(), (7450 + 4000) / 15 + 8 - Area().viewport()->width());
  });
}

TEST_F(QtPanes, WhatHasTheFocusStaysInSightWhenTheWindowShrinks) {
  Play([&] {
    Window().resize(1016, 741);
    form->page->button->SetFocus();
    EXPECT_EQ(Offset(), QPoint(0, 0));
    Window().resize(600, 400);
    QCoreApplication::processEvents();
    const QRect viewport(Area().mapTo(&Window(), QPoint(0, 0)), Area().viewport()->size());
    EXPECT_TRUE(viewport.contains(InWindow(*Native("cmdAddPhoto"))));
  });
}

TEST_F(QtPanes, ANewPageShowsFromItsUpperLeftCorner) {
  Play([&] {
    Window().resize(600, 400);
    form->page->button->SetFocus();
    EXPECT_NE(Offset(), QPoint(0, 0));
    form->Deliver([&] { form->NewPage(); });
    EXPECT_EQ(Offset(), QPoint(0, 0));
    EXPECT_TRUE(form->page->name->HasFocus());
  });
}

TEST_F(QtPanes, TheCaretOfATallBoxIsFollowed) {
  Play([&] {
    Window().resize(600, 400);
    form->page->notes->Move({1450, 750, 7000, 8000});
    form->page->notes->SetFocus();
    EXPECT_EQ(Offset().y(), 0) << "its beginning was in sight";
    for (int line = 0; line < 30; ++line)
      Press(Native(*form->page->notes), Qt::Key_Return, Qt::ControlModifier);
    auto* box = Native<QPlainTextEdit>(*form->page->notes);
    const QPoint caret = box->viewport()->mapTo(&Window(), box->cursorRect().bottomLeft());
    EXPECT_TRUE(Area().geometry().contains(caret)) << caret.y();
    EXPECT_GT(Offset().y(), 100);
  });
}

TEST_F(QtPanes, AWindowWithoutPanesScrollsAsAWhole) {
  struct Plain : DemoForm {
    using DemoForm::DemoForm;
    void BuildDesign() override {
      button = Controls().Make<toolkit::CommandButton>("cmdOK");
      button->Move({2535, 6060, 1140, 375});
    }
    std::shared_ptr<toolkit::CommandButton> button;
  };
  const auto plain = std::make_shared<Plain>(desktop, "frmPlain", 5055, 6555);
  Play(*plain, [&] {
    EXPECT_EQ(Window().size(), QSize(337, 437));
    Window().resize(200, 200);
    EXPECT_EQ(Area().geometry(), QRect(0, 0, 200, 200));
    EXPECT_TRUE(Area().geometry().contains(InWindow(*Native("cmdOK")))) << "it has the focus";
    EXPECT_EQ(plain->Place().width, 5055 + 120);
  });
}

TEST_F(QtPanes, AResizeUnderAMessageBoxReachesTheWindowAfterwards) {
  Play([&] {
    int during = 0;
    form->Deliver([&] {
      Next([&] {
        for (QWidget* window : QApplication::topLevelWidgets()) {
          if (window->objectName() == "frmDemo") window->resize(1200, 900);
        }
        during = form->resizes;
        QApplication::activeModalWidget()->close();
      });
      desktop.MsgBox("完成。");
      EXPECT_EQ(form->resizes, 1);
    });
    EXPECT_EQ(during, 1);
    EXPECT_EQ(form->resizes, 2);
    EXPECT_EQ(form->Place().width, 1200 * 15 + 120);
  });
}

TEST_F(QtPanes, EachVisitOpensAtTheSizeOfTheDesign) {
  Play([&] { Window().resize(1200, 900); });
  Play([&] {
    EXPECT_EQ(Window().size(), QSize(796, 741));
    EXPECT_EQ(form->Place(), (toolkit::Rect{0, 0, 15240 + 120, 11115 + 405}));
    EXPECT_EQ(form->resizes, 3) << "one at each opening, one for the change";
  });
}

}  // namespace
}  // namespace dossierkit::qt
