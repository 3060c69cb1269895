// How things look: one edge for every box, a ring where the keyboard is, the chosen row, captions, slabs.
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTableView>
#include <QTreeView>

#include "tests/adapters/qt/stage.h"
#include "tests/platform/toolkit/picker_form.h"

namespace dossierkit::qt {
namespace {

const QColor kAccent(0x2B, 0x6C, 0xB0);
const QColor kEdge(0xA6, 0xB2, 0xC1);
const QColor kPale(0xD3, 0xE4, 0xF7);
const QColor kHead(0xE6, 0xEB, 0xF1);
const QColor kSlab(0x4A, 0x63, 0x80);
const QColor kInk(0x1D, 0x26, 0x33);
const QColor kSoftInk(0x57, 0x63, 0x73);

int CountOf(const QImage& picture, const QColor& color) {
  int count = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) count += picture.pixelColor(x, y) == color ? 1 : 0;
  }
  return count;
}

class QtLook : public Stage {
 protected:
  DemoPage& Page() { return *form->page; }
  static QImage Picture(QWidget* widget) { return widget->grab().toImage(); }
  static int Accents(QWidget* widget) { return CountOf(Picture(widget), kAccent); }
  // The outermost pixel of a box at its left, and the next one.
  static std::pair<QColor, QColor> LeftEdge(QWidget* widget) {
    const QImage picture = Picture(widget);
    const int middle = picture.height() / 2;
    return {picture.pixelColor(0, middle), picture.pixelColor(1, middle)};
  }
  QTableView* Table() { return Native<QTableView>("DGItems"); }
  QColor CellGround(int row) {
    const QRect place = Table()->visualRect(Table()->model()->index(row, 1));
    return Picture(Table()->viewport()).pixelColor(place.right() - 3, place.top() + 3);
  }
};

TEST_F(QtLook, EveryBoxHasTheSameEdge) {
  Play([&] {
    form->menu->SetFocus();
    for (const toolkit::Control* box : std::initializer_list<toolkit::Control*>{
             Page().name.get(), Page().coded.get(), Page().date.get(), Page().notes.get(), Page().grid.get(),
             Page().button.get(), Page().photo.get()}) {
      const auto [edge, inside] = LeftEdge(Native(*box));
      EXPECT_EQ(edge, kEdge) << box->Name();
      EXPECT_NE(inside, kEdge) << box->Name();
    }
  });
}

TEST_F(QtLook, TheBoxWithTheKeyboardHasARing) {
  Play([&] {
    const std::vector<toolkit::Control*> boxes = {Page().name.get(), Page().coded.get(),
                                                  Page().date.get(), Page().notes.get(),
                                                  Page().grid.get(), Page().button.get()};
    for (toolkit::Control* focus : boxes) {
      focus->SetFocus();
      for (toolkit::Control* box : boxes) {
        const auto [edge, inside] = LeftEdge(Native(*box));
        EXPECT_EQ(edge, box == focus ? kAccent : kEdge)
            << box->Name() << " with the focus in " << focus->Name();
        EXPECT_EQ(inside == kAccent, box == focus) << box->Name();
      }
    }
  });
}

TEST_F(QtLook, AFieldThatCannotBeEnteredHasAFaintEdge) {
  Play([&] {
    form->menu->SetFocus();
    Page().coded->SetEnabled(false);
    EXPECT_EQ(LeftEdge(Native(*Page().coded)).first, QColor(0xC6, 0xCF, 0xDA));
  });
}

TEST_F(QtLook, ACheckBoxWithTheKeyboardHasARing) {
  Play([&] {
    EXPECT_EQ(Accents(Native(*Page().check)), 0);
    Page().check->SetFocus();
    EXPECT_GT(Accents(Native(*Page().check)), 60);
  });
}

TEST_F(QtLook, TabsTreeAndListShowTheKeyboard) {
  auto picker = std::make_shared<toolkit::PickerForm>(desktop);
  Play(*picker, [&] {
    picker->FillTree();
    picker->FillList(3);
    QCoreApplication::processEvents();
    picker->button->SetFocus();
    EXPECT_EQ(Accents(Native("Tab1_Tabs")), 0);
    picker->strip->SetFocus();
    EXPECT_GT(Accents(Native("Tab1_Tabs")), 60);
    picker->tree->SetFocus();
    EXPECT_EQ(Accents(Native("Tab1_Tabs")), 0);
    EXPECT_EQ(LeftEdge(Native("tree")).second, kAccent);
    picker->strip->SetTab(1);
    picker->list->SetFocus();
    EXPECT_EQ(LeftEdge(Native("list")).second, kAccent);
  });
}

TEST_F(QtLook, TheChosenNodeIsDarkWithTheKeyboardElsePale) {
  auto picker = std::make_shared<toolkit::PickerForm>(desktop);
  Play(*picker, [&] {
    picker->FillTree();
    QCoreApplication::processEvents();
    picker->tree->SetFocus();
    auto* tree = Native<QTreeView>("tree");
    const int row = tree->visualRect(tree->model()->index(0, 0)).center().y();
    const auto ground = [&](int x) { return Picture(tree->viewport()).pixelColor(x, row); };
    EXPECT_EQ(ground(tree->viewport()->width() - 5), kAccent);
    picker->button->SetFocus();
    EXPECT_EQ(ground(tree->viewport()->width() - 5), kPale);
    EXPECT_EQ(ground(1), kAccent);
    EXPECT_EQ(ground(3), kPale);
  });
}

TEST_F(QtLook, TheMarkedItemOfTheMenuHasARingWithTheKeyboardAlone) {
  Play([&] {
    auto* menu = Native<QListView>("VMenu1_Items");
    const auto ring = [&](int row) {
      const QRect place = menu->visualRect(menu->model()->index(row, 0));
      return Picture(menu->viewport()).pixelColor(place.right() - 2, place.center().y()) == kAccent;
    };
    EXPECT_FALSE(ring(1));
    form->menu->SetFocus();
    EXPECT_TRUE(ring(1));
    Press(menu, Qt::Key_Down);
    EXPECT_FALSE(ring(1));
    EXPECT_TRUE(ring(2));
  });
}

TEST_F(QtLook, NoSelectionShowsInABoxThatWasLeft) {
  Play([&] {
    Page().notes->SetText("师从张教授");
    Page().notes->SetFocus();
    Page().notes->Select(0, 5);
    auto* notes = Native<QPlainTextEdit>(*Page().notes);
    EXPECT_GT(Accents(notes->viewport()), 300);
    Page().name->SetText("清华大学");
    Page().name->SetFocus();
    Page().name->Select(0, 4);
    EXPECT_EQ(Accents(notes->viewport()), 0);
    EXPECT_EQ(Page().notes->SelLength(), 5U) << "it is not forgotten";
    EXPECT_GT(Accents(Native(*Page().name)), 300);
    Page().notes->SetFocus();
    EXPECT_GT(Accents(notes->viewport()), 300);
    // The ring has gone as well.
    EXPECT_EQ(Accents(Native(*Page().name)), 0);
  });
}

TEST_F(QtLook, TabSelectsTheTextOfABoxOfOneLine) {
  Play([&] {
    Page().coded->SetText("硕士");
    Page().notes->SetText("师从张教授");
    Press(Native(*Page().name), Qt::Key_Tab);
    EXPECT_EQ(Text(Native<QLineEdit>(*Page().coded)->selectedText()), "硕士");
    Page().date->SetFocus();
    Press(Native(*Page().date), Qt::Key_Tab);
    EXPECT_FALSE(Native<QPlainTextEdit>(*Page().notes)->textCursor().hasSelection());
  });
}

TEST_F(QtLook, TheChosenRowIsDarkWithTheKeyboardElsePaleWithABar) {
  Play([&] {
    QApplication::activeWindow()->resize(1016, 741);
    EXPECT_EQ(CellGround(0), kPale);
    const auto left = [&](int x) { return Picture(Table()->viewport()).pixelColor(x, 4); };
    EXPECT_EQ(left(2), kAccent);
    EXPECT_EQ(left(3), kPale);
    EXPECT_EQ(left(Table()->columnViewportPosition(2) + 1), kPale) << "one bar for the row";
    Page().grid->SetFocus();
    EXPECT_EQ(CellGround(0), kAccent);
    EXPECT_NE(CellGround(1), kAccent);
    Page().name->SetFocus();
    EXPECT_EQ(CellGround(0), kPale);
    EXPECT_EQ(left(2), kAccent);
  });
}

TEST_F(QtLook, HeadAndChosenRowRunToTheEdge) {
  Play([&] {
    QApplication::activeWindow()->resize(1016, 741);
    const int right = Table()->viewport()->width() - 4;
    ASSERT_LT(Table()->horizontalHeader()->length(), right);
    EXPECT_EQ(Picture(Table()->horizontalHeader()).pixelColor(right, 6), kHead);
    EXPECT_EQ(Picture(Table()->viewport()).pixelColor(right, 6), kPale);
    Page().grid->SetFocus();
    EXPECT_EQ(Picture(Table()->viewport()).pixelColor(right, 6), kAccent);
  });
}

TEST_F(QtLook, ARowThatIsNotToShowLooksLikeTheOthersAndCanBeWanted) {
  int moves = 0;
  Play([&] {
    On(form->rows->WillMove, [&](std::int32_t, std::int32_t&, ado::Recordset&) { ++moves; });
    Page().grid->SetShowsRow(false);
    EXPECT_EQ(CellGround(0), QColor(Qt::white));
    EXPECT_FALSE(Table()->selectionModel()->hasSelection());
    EXPECT_EQ(Table()->currentIndex().row(), 0) << "arrows start here";
    EXPECT_EQ(moves, 0);
    Page().grid->SetFocus();
    Press(Table(), Qt::Key_Home);
    EXPECT_EQ(moves, 1);
    Page().grid->SetShowsRow(true);
    EXPECT_EQ(CellGround(0), kAccent);
    Press(Table(), Qt::Key_Home);
    EXPECT_EQ(moves, 1) << "it is chosen already";
  });
}

TEST_F(QtLook, AHelpSlabIsAsTallAsItsText) {
  Play([&] {
    QApplication::activeWindow()->resize(1016, 741);
    auto* help = Native<QLabel>("LabInterFace");
    const auto slab = [&] {
      const QImage picture = Picture(Native("Frm2")).copy(help->geometry());
      int rows = 0;
      while (rows < picture.height() && picture.pixelColor(help->width() / 2, rows) == kSlab) ++rows;
      return rows;
    };
    const int line = help->fontMetrics().lineSpacing();
    Page().help->SetCaption("一");
    const int one = slab();
    EXPECT_NEAR(one, line + 16, 2);
    Page().help->SetCaption("一\r\n二\r\n三");
    EXPECT_EQ(slab(), one + 2 * line);
    Page().help->SetCaption("");
    EXPECT_EQ(slab(), 0);
  });
}

TEST_F(QtLook, RequiredCaptionsStandOutFromPlainOnes) {
  Play([&] {
    const auto ink = [&](const char* name) {
      return Native<QLabel>(name)->palette().color(QPalette::WindowText);
    };
    EXPECT_EQ(ink("A02_A0202_c"), kInk);
    Page().name_label->SetFontBold(false);
    EXPECT_EQ(ink("A02_A0202_c"), kSoftInk);
    Page().name_label->SetFontBold(true);
    EXPECT_EQ(ink("A02_A0202_c"), kInk);
    EXPECT_EQ(ink("labOpt"), QColor(0, 0, 255));
  });
}

TEST_F(QtLook, AFrameWithoutABorderStillHasItsCaption) {
  Play([&] {
    auto* frame = Native("Frm2");
    EXPECT_EQ(LeftEdge(frame).first, kEdge);
    const auto find = [&] {
      for (const auto& control : Page().Controls()) {
        if (control->Name() == "Frm2") return std::static_pointer_cast<toolkit::Frame>(control);
      }
      return std::shared_ptr<toolkit::Frame>();
    };
    find()->SetBorder(false);
    find()->ShowAspect(toolkit::Aspect::kStyle);
    EXPECT_NE(LeftEdge(frame).first, kEdge);
    const QImage caption = Picture(frame).copy(0, 0, 60, 16);
    EXPECT_GT(CountOf(caption, caption.pixelColor(0, 0)), 0);
    EXPECT_LT(CountOf(caption, caption.pixelColor(0, 0)), 60 * 16 - 40) << "the caption is painted";
  });
}

}  // namespace
}  // namespace dossierkit::qt
