// The window with the people of the database, as its users see it.
#include "host/people_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QInputMethodEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QTableView>

#include "adapters/qt/qt_platform.h"
#include "tests/support/paths.h"
#include "tests/support/visit.h"
#include "tests/support/window_test.h"

namespace dossierkit::host {
namespace {

using tests::SampleDatabase;

class PeopleWindows : public testing::Test {
 protected:
  void SetUp() override {
    window_.resize(860, 560);
    window_.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
  }

  QStringList Names() const {
    QStringList names;
    const auto* model = Table().model();
    for (int row = 0; row < model->rowCount(); ++row) names << model->index(row, 0).data().toString();
    return names;
  }
  QString Selected() const {
    const auto rows = Table().selectionModel()->selectedRows();
    return rows.isEmpty() ? QString() : rows.front().data().toString();
  }
  QTableView& Table() const { return *window_.findChild<QTableView*>(); }
  QLineEdit& Search() const { return *window_.findChild<QLineEdit*>(); }
  QPushButton& Button(const QString& caption) const {
    for (auto* button : window_.findChildren<QPushButton*>()) {
      if (button->text() == caption) return *button;
    }
    throw std::logic_error("no button " + caption.toStdString());
  }
  // A text from an input method.
  void Type(const QString& text) const {
    QInputMethodEvent commit;
    commit.setCommitString(text);
    QApplication::sendEvent(&Search(), &commit);
  }
  QStringList Labels() const {
    QStringList texts;
    for (const auto* label : window_.findChildren<QLabel*>()) texts << label->text();
    return texts;
  }

  qt::QtPlatform platform_;
  std::shared_ptr<tests::Database> database_ = SampleDatabase();
  std::vector<VisitRequest> visits_;
  std::function<void()> in_visit_ = [] {};
  PeopleWindow window_{database_, [this](const VisitRequest& request, QWidget&) {
                         visits_.push_back(request);
                         in_visit_();
                       }};
};

TEST_F(PeopleWindows, TheWindowFitsOnASmallScreenWithItsFrame) {
  ASSERT_EQ(window_.screen()->availableGeometry().size(), QSize(800, 800));
  PeopleWindow window(database_, [](const VisitRequest&, QWidget&) {});
  window.show();
  EXPECT_EQ(window.size(), QSize(792, 560));
}

TEST_F(PeopleWindows, AllPersonsStandInTheOrderOfTheirNumbers) {
  EXPECT_EQ(Names().size(), 12);
  EXPECT_EQ(Names().front(), "陆怀谷");
  const auto* model = Table().model();
  EXPECT_EQ(model->columnCount(), 4);
  QStringList headings;
  for (int column = 0; column < 4; ++column) headings << model->headerData(column, Qt::Horizontal).toString();
  EXPECT_EQ(headings, (QStringList{"姓名", "出生日期", "工作单位", "所学专业"}));
  EXPECT_EQ(Selected(), "陆怀谷");
  EXPECT_TRUE(Labels().contains("共 12 人"));
}

TEST_F(PeopleWindows, AKeyNarrowsTheListAndBackspaceWidensIt) {
  Type("沈");
  EXPECT_EQ(Names(), QStringList{"沈若璞"});
  EXPECT_EQ(Selected(), "沈若璞");
  EXPECT_TRUE(Labels().contains("共 1 人"));
  QTest::keyClick(&Search(), Qt::Key_Backspace);
  EXPECT_EQ(Names().size(), 12);
  EXPECT_EQ(Selected(), "沈若璞");
}

TEST_F(PeopleWindows, ATextThatDoesNotHoldTheFormerOneLooksAtAllPersonsAgain) {
  Search().setText("沈");
  Search().setText("陆");
  EXPECT_EQ(Names(), QStringList{"陆怀谷"});
  Search().setText("陆怀");
  EXPECT_EQ(Names(), QStringList{"陆怀谷"});
  Search().setText("怀");
  EXPECT_EQ(Names(), QStringList{"陆怀谷"});
}

TEST_F(PeopleWindows, APersonIsNotFoundAcrossTheEndOfHisName) {
  Search().setText("谷沈");
  EXPECT_EQ(Names(), QStringList{});
  EXPECT_FALSE(Button("打开(&O)").isEnabled());
  QTest::keyClick(&Search(), Qt::Key_Return);
  EXPECT_TRUE(visits_.empty());
}

TEST_F(PeopleWindows, WhereTheSelectedPersonIsGoneTheFirstOneIsSelected) {
  in_visit_ = [&] {
    database_->RunScript(
        "update A01 set A0101='乙'; update A01 set A0101='甲一' where A0199=1;"
        "update A01 set A0101='甲三' where A0199=3");
  };
  QTest::mouseClick(&Button("打开(&O)"), Qt::LeftButton);
  Table().selectRow(1);
  Type("甲");
  EXPECT_EQ(Names(), (QStringList{"甲一", "甲三"}));
  EXPECT_EQ(Selected(), "甲一");
}

TEST_F(PeopleWindows, ABlankChangesNothing) {
  Table().selectRow(3);
  const QString selected = Selected();
  Type(" ");
  EXPECT_EQ(Names().size(), 12);
  EXPECT_EQ(Selected(), selected);
}

TEST_F(PeopleWindows, WildcardsAndApostrophesArePlainText) {
  for (const char* text : {"%", "_", "'", "[陆]"}) {
    Search().setText(text);
    EXPECT_EQ(Names(), QStringList{}) << text;
  }
}

TEST_F(PeopleWindows, CaseAndOuterBlanksAreIgnored) {
  database_->RunScript("update A01 set A0101='Émile Ab' where A0199=1");
  in_visit_ = [] {};
  QTest::mouseClick(&Button("新增人员(&N)"), Qt::LeftButton);
  Search().setText(" éMILE aB ");
  EXPECT_EQ(Names(), QStringList{"Émile Ab"});
}

TEST_F(PeopleWindows, EnterInTheSearchOpensTheSelectedPerson) {
  Type("沈");
  QTest::keyClick(&Search(), Qt::Key_Return);
  ASSERT_EQ(visits_.size(), 1U);
  EXPECT_EQ(visits_[0].person, "56670B14-1509-4B0A-8BF1-3331CA118783");
}

TEST_F(PeopleWindows, EnterInTheListOpensItsRowAndADoubleClickDoes) {
  Table().setFocus();
  QTest::keyClick(&Table(), Qt::Key_Down);
  QTest::keyClick(&Table(), Qt::Key_Return);
  ASSERT_EQ(visits_.size(), 1U);
  EXPECT_EQ(visits_[0].person, tests::One(*database_, "select A00 from A01 where A0199=2"));
  const QPoint third = Table().visualRect(Table().model()->index(2, 1)).center();
  QTest::mouseClick(Table().viewport(), Qt::LeftButton, {}, third);
  QTest::mouseDClick(Table().viewport(), Qt::LeftButton, {}, third);
  ASSERT_EQ(visits_.size(), 2U);
  EXPECT_EQ(visits_[1].person, tests::One(*database_, "select A00 from A01 where A0199=3"));
}

TEST_F(PeopleWindows, TheEnterOfTheKeypadOpensToo) {
  Table().setFocus();
  QTest::keyClick(&Table(), Qt::Key_Enter, Qt::KeypadModifier);
  ASSERT_EQ(visits_.size(), 1U);
  EXPECT_EQ(visits_[0].person, tests::kPerson);
}

TEST_F(PeopleWindows, WithoutASelectionTheFirstPersonIsOpenedAndNoNewOneIsMade) {
  Table().clearSelection();
  QTest::mouseClick(&Button("打开(&O)"), Qt::LeftButton);
  ASSERT_EQ(visits_.size(), 1U);
  EXPECT_EQ(visits_[0].person, tests::kPerson);
}

TEST_F(PeopleWindows, TabLeavesTheList) {
  Table().setFocus();
  Table().setCurrentIndex(Table().model()->index(0, 0));
  QTest::keyClick(&Table(), Qt::Key_Tab);
  EXPECT_FALSE(Table().hasFocus());
  EXPECT_EQ(Table().currentIndex(), Table().model()->index(0, 0));
}

TEST_F(PeopleWindows, ANewPersonHasNoIdentifier) {
  QTest::mouseClick(&Button("新增人员(&N)"), Qt::LeftButton);
  ASSERT_EQ(visits_.size(), 1U);
  EXPECT_EQ(visits_[0].person, "");
}

TEST_F(PeopleWindows, ANewPersonHasTheTypeOfTheBoxAndAStoredOneHisOwn) {
  auto& types = *window_.findChild<QComboBox*>();
  types.setCurrentIndex(2);
  QTest::mouseClick(&Button("新增人员(&N)"), Qt::LeftButton);
  QTest::mouseClick(&Button("打开(&O)"), Qt::LeftButton);
  ASSERT_EQ(visits_.size(), 2U);
  EXPECT_EQ(visits_[0].person_type, 3);
  EXPECT_FALSE(visits_[1].person_type);
  window_.ChoosePersonType(2);
  EXPECT_EQ(types.currentIndex(), 1);
  window_.ChoosePersonType(9);
  EXPECT_EQ(types.currentIndex(), 0);
}

TEST_F(PeopleWindows, SetsWithoutAPageAreAnnounced) {
  const auto& types = *window_.findChild<QComboBox*>();
  EXPECT_EQ(types.itemText(0), "单位推荐");
  EXPECT_EQ(types.itemText(1), "个人自荐（B02 没有页面）");
  EXPECT_EQ(types.itemText(2), "获奖者推荐（B03 没有页面）");
  EXPECT_EQ(Labels().filter("没有页面"), QStringList{});
  database_->RunScript("update A01 set A0136=2 where A0199=1; update A01 set A0136=3 where A0199=2");
  QTest::mouseClick(&Button("打开(&O)"), Qt::LeftButton);
  EXPECT_EQ(Labels().filter("没有页面"),
            QStringList{"此人是个人自荐：信息集“个人自荐情况”（B02）没有页面，点击它会关闭窗口。"});
  Table().selectRow(1);
  EXPECT_EQ(Labels().filter("没有页面"),
            QStringList{"此人是获奖者推荐：信息集“获奖者推荐情况”（B03）没有页面，点击它会关闭窗口。"});
  Table().selectRow(2);
  EXPECT_EQ(Labels().filter("没有页面"), QStringList{});
}

TEST_F(PeopleWindows, AfterAVisitTheListIsReadAnewAndTheFilterStays) {
  Type("沈");
  in_visit_ = [&] { database_->RunScript("update A01 set A0101='沈一' where A0101 in ('沈若璞','陆怀谷')"); };
  QTest::mouseClick(&Button("打开(&O)"), Qt::LeftButton);
  EXPECT_EQ(Names(), (QStringList{"沈一", "沈一"}));
  const auto rows = Table().selectionModel()->selectedRows();
  ASSERT_EQ(rows.size(), 1);
  EXPECT_EQ(rows[0].row(), 1);  // the person who was open
}

TEST_F(PeopleWindows, APersonWithoutANameStandsInTheList) {
  in_visit_ = [&] { database_->RunScript("update A01 set A0101=null where A0199=1"); };
  QTest::mouseClick(&Button("打开(&O)"), Qt::LeftButton);
  EXPECT_EQ(Names().front(), "");
  EXPECT_EQ(Names().size(), 12);
}

}  // namespace
}  // namespace dossierkit::host
