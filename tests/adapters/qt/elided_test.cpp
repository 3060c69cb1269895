// Texts that have less room than they need end in "…" and stand whole in the tool tip.
#include "adapters/qt/elided.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QListView>
#include <QScrollBar>
#include <QTableView>
#include <QTextDocument>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>

#include "tests/adapters/qt/stage.h"

namespace dossierkit::qt {
namespace {

// The text of a tool tip, whose mark-up is not of interest.
std::string PlainTip(const QString& tip) {
  QTextDocument document;
  document.setHtml(tip);
  return document.toPlainText().toStdString();
}

class QtTexts : public Stage {
 protected:
  ElidedLabel& Shown(const std::string& name) { return *dynamic_cast<ElidedLabel*>(Native(name)); }
  // What the pointer brings up at a place of a widget.
  static std::string TipAt(QWidget& widget, const QPoint& at) {
    // One that is hidden keeps its text for a while.
    QToolTip::showText({}, "none");
    QHelpEvent help(QEvent::ToolTip, at, widget.mapToGlobal(at));
    QCoreApplication::sendEvent(&widget, &help);
    const std::string tip = PlainTip(QToolTip::text());
    return tip == "none" ? "" : tip;
  }
};

TEST_F(QtTexts, ACaptionThatFitsIsShownAsItIs) {
  Play([&] {
    form->page->name_label->SetCaption("就读院校");
    EXPECT_EQ(Shown("A02_A0202_c").ShownLines(), QStringList{"就读院校"});
    EXPECT_FALSE(Shown("A02_A0202_c").IsCut());
    EXPECT_EQ(Shown("A02_A0202_c").toolTip(), "");
  });
}

TEST_F(QtTexts, ACaptionWithoutRoomEndsInDotsAndStandsInItsToolTip) {
  Play([&] {
    form->page->name_label->SetCaption("就读院校及其全部院系名称");
    const ElidedLabel& label = Shown("A02_A0202_c");
    EXPECT_EQ(label.ShownLines(), QStringList{"就读院校及…"});
    EXPECT_EQ(PlainTip(label.toolTip()), "就读院校及其全部院系名称");
    EXPECT_EQ(label.text(), "就读院校及其全部院系名称");
    form->page->name_label->Move({300, 3420, 3000, 270});
    EXPECT_EQ(label.ShownLines(), QStringList{"就读院校及其全部院系名称"});
    EXPECT_EQ(label.toolTip(), "");
  });
}

TEST_F(QtTexts, ALongNameEndsInDotsAndStandsInItsToolTip) {
  Play([&] {
    std::dynamic_pointer_cast<toolkit::Label>(form->Controls().Find("labPersonName"))
        ->SetCaption("阿卜杜拉·买买提艾力·库尔班");
    EXPECT_EQ(Shown("labPersonName").ShownLines(), QStringList{"阿卜杜拉·买…"});
    EXPECT_EQ(PlainTip(Shown("labPersonName").toolTip()), "阿卜杜拉·买买提艾力·库尔班");
  });
}

TEST_F(QtTexts, ALabelsOwnToolTipShowsWhereNothingIsCut) {
  Play([&] {
    form->page->name_label->SetToolTipText("全称");
    EXPECT_EQ(Shown("A02_A0202_c").toolTip(), "全称");
  });
}

TEST_F(QtTexts, MarkUpInATextIsText) {
  Play([&] {
    form->page->name_label->SetCaption("<b>就读院校</b>及其全部院系");
    EXPECT_EQ(PlainTip(Shown("A02_A0202_c").toolTip()), "<b>就读院校</b>及其全部院系");
  });
}

TEST_F(QtTexts, ALongHelpTextEndsInDotsAndScrolls) {
  Play([&] {
    form->page->help->Move({90, 270, 1500, 900});  // 100 by 60 pixels, and a margin of 8
    form->page->help->SetCaption("一\r\n二\r\n三\r\n四\r\n五");
    const ElidedLabel& help = Shown("LabInterFace");
    EXPECT_EQ(help.ShownLines(), (QStringList{"一", "二…"}));
    EXPECT_EQ(PlainTip(help.toolTip()), "一\n二\n三\n四\n五");
    auto& bar = *help.findChild<QScrollBar*>();
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(bar.maximum(), 3);
    bar.setValue(2);
    EXPECT_EQ(help.ShownLines(), (QStringList{"三", "四…"}));
    bar.setValue(3);
    EXPECT_EQ(help.ShownLines(), (QStringList{"四", "五"}));
    form->page->help->SetCaption("短");
    EXPECT_EQ(help.ShownLines(), QStringList{"短"});
    EXPECT_FALSE(bar.isVisible());
    EXPECT_EQ(help.toolTip(), "");
  });
}

TEST_F(QtTexts, TheNextHelpTextShowsFromItsBeginning) {
  Play([&] {
    form->page->help->Move({90, 270, 1500, 900});
    form->page->help->SetCaption("一\r\n二\r\n三\r\n四\r\n五");
    Shown("LabInterFace").findChild<QScrollBar*>()->setValue(3);
    form->page->help->SetCaption("甲\r\n乙\r\n丙\r\n丁\r\n戊");
    EXPECT_EQ(Shown("LabInterFace").ShownLines(), (QStringList{"甲", "乙…"}));
  });
}

TEST_F(QtTexts, TheWheelScrollsALongHelpText) {
  Play([&] {
    form->page->help->Move({90, 270, 1500, 900});
    form->page->help->SetCaption("一\r\n二\r\n三\r\n四\r\n五");
    QWidget* help = Native("LabInterFace");
    QWheelEvent wheel({20, 20}, help->mapToGlobal(QPointF(20, 20)), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(help, &wheel);
    EXPECT_EQ(Shown("LabInterFace").ShownLines(), (QStringList{"三", "四…"}));
  });
}

TEST_F(QtTexts, AFramesCaptionIsItsCaption) {
  struct Framed : DemoForm {
    using DemoForm::DemoForm;
    void BuildDesign() override {
      const auto frame = Controls().Make<toolkit::Frame>("frmOne");
      frame->SetCaption("基本");
      frame->SetAccessibleName("基本信息的全部字段以及照片");
      frame->Move({300, 300, 6000, 2000});
      const auto narrow = Controls().Make<toolkit::Frame>("frmTwo");
      narrow->SetCaption("基本信息");
      narrow->Move({300, 3000, 900, 2000});
    }
  };
  const auto framed = std::make_shared<Framed>(desktop, "frmFramed", 9000, 6000);
  Play(*framed, [&] {
    QWidget& frame = *Native("frmOne");
    EXPECT_EQ(frame.accessibleName(), "基本信息的全部字段以及照片");
    const QImage picture = frame.grab().toImage();
    // The border runs on where the caption of two characters has ended.
    const int line = QFontMetrics(frame.font()).height() / 2;
    EXPECT_EQ(picture.pixelColor(60, line), picture.pixelColor(300, line));
    EXPECT_EQ(TipAt(frame, {20, 4}), "");
    EXPECT_EQ(TipAt(*Native("frmTwo"), {20, 4}), "基本信息") << "30 pixels hold two characters";
    EXPECT_EQ(TipAt(*Native("frmTwo"), {20, 60}), "") << "below the caption";
  });
}

TEST_F(QtTexts, AMenuItemWithoutRoomStandsInItsToolTip) {
  Play([&] {
    form->menu->set_menuitemcur(3);
    form->menu->set_menuitemcaption("国内外访问、进修、培训以及其他各种形式的学习和交流活动");
    form->menu->set_menuitemcur(2);
    auto& list = *Native<QListView>("VMenu1_Items");
    EXPECT_EQ(TipAt(*list.viewport(), list.visualRect(list.model()->index(2, 0)).center()),
              "国内外访问、进修、培训以及其他各种形式的学习和交流活动");
    EXPECT_EQ(TipAt(*list.viewport(), list.visualRect(list.model()->index(3, 0)).center()), "");
  });
}

TEST_F(QtTexts, ACellOrHeadingWithoutRoomStandsInItsToolTip) {
  Play([&] {
    auto& table = *Native<QTableView>("DGItems");
    const auto cell = [&](int column) {
      return TipAt(*table.viewport(), table.visualRect(table.model()->index(0, column)).center());
    };
    auto& heads = *table.horizontalHeader();
    const auto head = [&](int column) {
      return TipAt(*heads.viewport(), {heads.sectionViewportPosition(column) + 5, 5});
    };
    EXPECT_EQ(cell(1), "");
    EXPECT_EQ(head(1), "");
    form->page->grid->SetColumnWidth(1, 450);
    EXPECT_EQ(cell(1), "清华大学1");
    EXPECT_EQ(head(1), "就读院校");
    EXPECT_EQ(heads.textElideMode(), Qt::ElideRight);
  });
}

TEST_F(QtTexts, ToolbarButtonsHaveNoToolTips) {
  Play([&] {
    for (const char* key : {"Add", "Delete", "Save", "Cancel", "Exit"})
      EXPECT_EQ(TipAt(*Native(key), {5, 5}), "") << key;
  });
}

TEST_F(QtTexts, ThePromptsOfABlankMaskStandApart) {
  Play([&] {
    auto& box = *Native<QLineEdit>(*form->page->date);
    EXPECT_EQ(box.font().letterSpacing(), 1);
    EXPECT_EQ(Native<QLineEdit>(*form->page->name)->font().letterSpacing(), 0);
    // Between two prompts a column stays white.
    form->page->date->SetText("____年__月");
    const QImage picture = box.grab().toImage();
    int runs = 0;
    bool inked = false;
    const auto is_ink = [&](int x) {
      for (int y = box.height() * 3 / 5; y < box.height() - 3; ++y) {
        if (picture.pixelColor(x, y).lightness() < 200) return true;
      }
      return false;
    };
    const int one = QFontMetrics(box.font()).horizontalAdvance("_");
    for (int x = 4; x < 4 + 4 * one; ++x) {
      if (is_ink(x) && !inked) ++runs;
      inked = is_ink(x);
    }
    EXPECT_EQ(runs, 4);
  });
}

TEST(ElidedLines, BreakWhereTheTextSaysSoAndWhereThereIsNoMoreRoom) {
  QFont font = Metrics(1).ProgramFont();
  font.setPixelSize(12);
  int all = 0;
  EXPECT_EQ(ElidedLines("一二三四五\r\n\r\n六", font, 36, 0, 9, all),
            (QStringList{"一二三", "四五", "", "六"}));
  EXPECT_EQ(all, 4);
  EXPECT_EQ(ElidedLines("一二三四五", font, 36, 0, 1, all), QStringList{"一二…"});
  EXPECT_EQ(ElidedLines("", font, 36, 0, 2, all), QStringList{""});
}

TEST(Elided, NeverCutsACharacterInHalves) {
  QFont font;
  font.setPixelSize(12);
  const QFontMetrics metrics(font);
  const QString text = QString::fromUtf8("一𠮷二三四五");
  const QString cut = Elided(text, metrics, metrics.horizontalAdvance(QString::fromUtf8("一𠮷…")) - 1);
  EXPECT_EQ(cut, QString::fromUtf8("一…"));
  EXPECT_EQ(Elided(text, metrics, 1000), text);
}

}  // namespace
}  // namespace dossierkit::qt
