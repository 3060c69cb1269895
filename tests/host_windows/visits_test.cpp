// Visits as the demo host makes them: what it does before and after, and which boxes it shows.
#include "host/visits.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTimer>
#include <stdexcept>

#include "host/doubled_box.h"
#include "host/failure_box.h"
#include "host/people_window.h"
#include "metadata/loaders.h"
#include "platform/ado/tracing_connection.h"
#include "platform/environment/placed_failure.h"
#include "shell/component.h"
#include "tests/host_windows/boxes.h"
#include "tests/support/qt_user.h"
#include "tests/support/scripted_qt.h"
#include "tests/support/visit.h"
#include "tests/support/window_test.h"

namespace dossierkit::host {
namespace {

using tests::Column;
using tests::kPerson;
using tests::One;
using tests::Rows;
using Texts = std::vector<std::string>;

constexpr auto kRefused = "无法维护此人信息。可能不存在此人Id号或Id号重复。";

class HostVisits : public testing::Test {
 protected:
  void Script(const std::string& sql) { database_->RunScript(sql); }
  frmDossier& Window() { return dynamic_cast<frmDossier&>(*TheRuntime().window); }
  bool Open(const VisitRequest& request, const std::function<void()>& scene) {
    stage_.WillRun([scene](toolkit::Form&) { scene(); });
    return visits_.Open(request);
  }
  void ClickMenu(const std::string& set) {
    const auto& items = Window().VMenu1().Items();
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (items[i].key == set) user_.ClickMenu(static_cast<int>(i + 1));
    }
  }
  Texts Numbers(const std::string& person = kPerson) {
    return Column(*database_, "select A0399 from A03 where A00='" + person + "' order by A0399");
  }
  Texts Messages() const {
    Texts texts;
    for (const auto& message : stage_.messages) texts.push_back(message.text);
    return texts;
  }

  tests::ScriptedQt stage_;
  std::shared_ptr<tests::Database> database_ = tests::SampleDatabase();
  Component component_{stage_, "/opt/dossier"};
  Visits visits_{database_, database_, "/no photographs"};
  tests::QtUser user_{TheRuntime().desktop};
  Boxes boxes_;
};

TEST_F(HostVisits, AStoredPersonHasHisOwnType) {
  for (const char* type : {"1", "2", "3"}) {
    Script("update A01 set A0136=" + std::string(type) + " where A00='" + kPerson + "'");
    Open({kPerson, {}, {}}, [&] {
      EXPECT_EQ(std::to_string(Window().PersonType), type);
      EXPECT_EQ(Window().OperationType, 3);
      EXPECT_EQ(Window().PhotoPath, "/no photographs");
    });
  }
}

TEST_F(HostVisits, WithoutAKnownTypeTheFirstOneCounts) {
  for (const char* type : {"null", "0", "4"}) {
    Script("update A01 set A0136=" + std::string(type) + " where A00='" + kPerson + "'");
    Open({kPerson, {}, {}}, [&] { EXPECT_EQ(Window().PersonType, 1); });
  }
  Open({}, [&] {
    EXPECT_EQ(Window().PersonType, 1);
    EXPECT_EQ(Window().OperationType, 0);
  });
}

TEST_F(HostVisits, TypesThatAreAskedForCount) {
  Open({kPerson, 1, 3}, [&] {
    EXPECT_EQ(Window().PersonType, 3);
    EXPECT_EQ(Window().OperationType, 1);
  });
}

TEST_F(HostVisits, TheRecordsAreInOrderBeforeAndAfterAVisit) {
  Script("update A03 set A0399=A0399+5 where A00='" + kPerson + "'");
  const Texts before = {"1", "2", "3", "4", "5"};
  Open({kPerson, {}, {}}, [&] {
    EXPECT_EQ(Numbers(), before);
    ClickMenu("A03");
    user_.ClickRow(2);
    stage_.WillAnswer(toolkit::kAnswerYes);
    user_.ClickToolbar("Delete");
    EXPECT_NE(Numbers(), (Texts{"1", "2", "3", "4"}));
  });
  EXPECT_EQ(Numbers(), (Texts{"1", "2", "3", "4"}));
  EXPECT_EQ(boxes_.texts, Texts{});
}

TEST_F(HostVisits, AVisitThatFailsLeavesTheRecordsInOrderToo) {
  EXPECT_THROW(Open({kPerson, {}, {}},
                    [&] {
                      Script("update A03 set A0399=A0399+5 where A00='" + kPerson + "'");
                      throw environment::MakeFailure(environment::kOverflow);
                    }),
               environment::Failure);
  EXPECT_EQ(Numbers(), (Texts{"1", "2", "3", "4", "5"}));
}

TEST_F(HostVisits, PersonsWhomTheVisitBeganAreCaredForAndNobodyElse) {
  boxes_.WillPress("保留第 2 条(&2)");
  // The last person of the table, doubled and out of order before the visit.
  const std::string other = One(*database_, "select A00 from A01 where A0199=12");
  Script("insert into A01(A00,A0101,A0199) values('" + other +
         "','二',11);"
         "insert into A03(A00,A0302,A0399) values('" +
         other + "','某',77)");
  const Texts others = Numbers(other);
  std::string first;
  std::string second;
  Open({}, [&] {
    first = NewPersonId();
    second = NewPersonId();
    Script("insert into A01(A00,A0101,A0199) values('" + first +
           "','新一',13);"
           "insert into A01(A00,A0101,A0199) values('" +
           first +
           "','新二',14);"
           "insert into A03(A00,A0302,A0399) values('" +
           first +
           "','某',4);"
           "insert into A01(A00,A0101,A0199) values('" +
           second +
           "','新三',15);"
           "insert into A03(A00,A0302,A0399) values('" +
           second + "','某',9)");
  });
  EXPECT_EQ(Column(*database_, "select A0101 from A01 where A00='" + first + "'"), Texts{"新二"});
  EXPECT_EQ(Numbers(first), Texts{"1"});
  EXPECT_EQ(Numbers(second), Texts{"1"});
  EXPECT_EQ(Numbers(other), others);
  EXPECT_EQ(boxes_.texts.size(), 1U);
}

// Another clerk's, who has the window open on him.
TEST_F(HostVisits, APersonWhomSomebodyElseStoredMeanwhileIsLeftAlone) {
  Open({kPerson, {}, {}}, [&] {
    Script(
        "insert into A01(A00,A0101,A0199) values('NEW','新一',13);"
        "insert into A01(A00,A0101,A0199) values('NEW','新二',14);"
        "insert into A03(A00,A0302,A0399) values('NEW','某',4)");
  });
  EXPECT_EQ(Column(*database_, "select A0101 from A01 where A00='NEW' order by A0199"),
            (Texts{"新一", "新二"}));
  EXPECT_EQ(Numbers("NEW"), Texts{"4"});
  EXPECT_EQ(boxes_.texts, Texts{});
}

TEST_F(HostVisits, APersonWhoIsStoredAfterTheOpenOneWasDeletedIsCaredFor) {
  const std::string last = One(*database_, "select A00 from A01 where A0199=12");
  std::string stored;
  Open({last, {}, {}}, [&] {
    stored = NewPersonId();
    Script("delete from A01 where A0199=12; insert into A01(A00,A0101,A0199) values('" + stored +
           "','新一',12);"
           "insert into A03(A00,A0302,A0399) values('" +
           stored + "','某',4)");
  });
  EXPECT_EQ(Numbers(stored), Texts{"1"});
}

TEST_F(HostVisits, CareThatFailsIsToldAndTheVisitGoesOn) {
  Script("insert into s_infotable(tblname,Property) values('X77',0)");
  bool opened = false;
  Open({kPerson, {}, {}}, [&] { opened = true; });
  EXPECT_TRUE(opened);
  ASSERT_EQ(boxes_.texts.size(), 2U);
  EXPECT_EQ(boxes_.texts[0].find("整理此人的记录失败："), 0U) << boxes_.texts[0];
}

// What a host traces is the component's work and not the care for it.
TEST_F(HostVisits, TheComponentAloneUsesItsConnection) {
  Texts statements;
  const auto traced = std::make_shared<ado::TracingConnection>(
      database_, [&](const ado::Trace& trace) { statements.push_back(trace.statement); });
  Script("update A03 set A0399=A0399+5 where A00='" + kPerson + "'");
  stage_.WillRun([](toolkit::Form&) {});
  Visits(database_, traced, "/no photographs").Open({kPerson, {}, {}});
  EXPECT_EQ(Numbers(), (Texts{"1", "2", "3", "4", "5"}));
  ASSERT_FALSE(statements.empty());
  for (const std::string& statement : statements) {
    EXPECT_EQ(statement.find("tblname,orderfield,Property"), std::string::npos);
    EXPECT_NE(statement.substr(0, 6), "insert");
  }
}

// --- doubled persons ---------------------------------------------------------------------------

TEST_F(HostVisits, ADoubledPersonIsAskedAboutAndOpensThen) {
  Script("insert into A01(A00,A0101,A0199) values('" + kPerson + "','陆怀谷二',13)");
  boxes_.WillPress("保留第 1 条(&1)");
  Open({kPerson, {}, {}}, [&] { EXPECT_EQ(Window().labPersonName().Caption(), "陆怀谷"); });
  EXPECT_EQ(boxes_.texts,
            Texts{"此人在基本信息中有 2 条记录，以后无法打开。请选择保留哪一条，其余的将删除；此人"
                  "的其它信息集不受影响。"});
  EXPECT_EQ(Column(*database_, "select A0101 from A01 where A00='" + kPerson + "'"), Texts{"陆怀谷"});
  EXPECT_EQ(Numbers(), (Texts{"1", "2", "3", "4", "5"}));
}

TEST_F(HostVisits, OfThreeRowsTheOneInTheMiddleCanStay) {
  Script("insert into A01(A00,A0101,A0199) values('" + kPerson +
         "','二',13);"
         "insert into A01(A00,A0101,A0199) values('" +
         kPerson + "','三',14)");
  boxes_.WillPress("保留第 2 条(&2)");
  Open({kPerson, {}, {}}, [&] { EXPECT_EQ(Window().labPersonName().Caption(), "二"); });
  EXPECT_EQ(Column(*database_, "select A0101 from A01 where A00='" + kPerson + "'"), Texts{"二"});
}

TEST_F(HostVisits, TheFieldsThatDifferStandFirstUnderTheirCaptions) {
  Script("insert into A01(A00,A0101,A0199) values('" + kPerson + "','二',13)");
  Texts first;
  QTimer::singleShot(0, qApp, [&] {
    ASSERT_TRUE(QTest::qWaitFor([] { return QApplication::activeModalWidget() != nullptr; }));
    const auto* table = QApplication::activeModalWidget()->findChild<QTableWidget*>();
    for (int column = 0; column < 3; ++column) first.push_back(table->item(0, column)->text().toStdString());
    EXPECT_TRUE(table->item(0, 0)->font().bold());
    EXPECT_GT(table->rowCount(), 10);
  });
  EXPECT_THROW(visits_.Open({kPerson, {}, {}}), environment::Failure);
  EXPECT_EQ(first, (Texts{"姓名", "陆怀谷", "二"}));
}

TEST_F(HostVisits, BehindThemTheEqualFieldsAndNoneThatIsEmpty) {
  Script("insert into A01(A00,A0101,A0115,A0136,A0199) select A00,'二',A0115,A0136,13 from A01 where A00='" +
         kPerson + "'");
  Script("update s_infoitem set itemdesc='' where itemname='A0110'");
  Script("update A01 set A0110='某',A0106=null where A00='" + kPerson + "'");
  QStringList differing;
  QStringList equal;
  QTimer::singleShot(0, qApp, [&] {
    const auto* table = QApplication::activeModalWidget()->findChild<QTableWidget*>();
    for (int row = 0; row < table->rowCount(); ++row) {
      const QString text = table->item(row, 0)->text();
      const bool bold = table->item(row, 0)->font().bold();
      EXPECT_TRUE(!bold || equal.isEmpty()) << text.toStdString();
      (bold ? differing : equal) << text;
      for (int column = 0; column < 3; ++column)
        EXPECT_EQ(table->item(row, column)->toolTip(), table->item(row, column)->text());
      EXPECT_FALSE(table->item(row, 1)->text().isEmpty() && table->item(row, 2)->text().isEmpty());
    }
  });
  EXPECT_THROW(visits_.Open({kPerson, {}, {}}), environment::Failure);
  EXPECT_TRUE(differing.contains("人员序号"));
  EXPECT_EQ(equal, (QStringList{"A0110", "工作单位", "人员类别"}));
}

// As a server gives the names of columns.
TEST_F(HostVisits, ColumnsInSmallLettersHaveTheirCaptionsToo) {
  QStringList shown;
  QTimer::singleShot(0, qApp, [&] {
    const auto* table = QApplication::activeModalWidget()->findChild<QTableWidget*>();
    for (int row = 0; row < table->rowCount(); ++row) shown << table->item(row, 0)->text();
  });
  boxes_.WillPress("以后再说(&L)");
  AskWhichRowStays(*database_,
                   {kPerson, {"a00", "a0101", "a0199"}, {{kPerson, "一", "1"}, {kPerson, "二", "2"}}},
                   nullptr);
  EXPECT_EQ(shown, (QStringList{"姓名", "人员序号"}));
}

// Enter must not delete a row of somebody who only looks at the buttons.
TEST_F(HostVisits, EnterInTheBoxMeansLater) {
  Script("insert into A01(A00,A0101,A0199) values('" + kPerson + "','二',13)");
  QString by_default;
  QTimer::singleShot(0, qApp, [&] {
    for (auto* button : QApplication::activeModalWidget()->findChildren<QPushButton*>()) {
      if (button->isDefault()) by_default = button->text();
    }
    for (auto* button : QApplication::activeModalWidget()->findChildren<QPushButton*>()) {
      if (button->text() != "保留第 1 条(&1)") continue;
      button->setFocus();
      QTest::keyClick(button, Qt::Key_Return);
      break;
    }
  });
  EXPECT_THROW(visits_.Open({kPerson, {}, {}}), environment::Failure);
  EXPECT_EQ(by_default, "以后再说(&L)");
  EXPECT_EQ(One(*database_, "select count(*) from A01 where A00='" + kPerson + "'"), "2");
}

TEST_F(HostVisits, WhoDecidesLaterKeepsAllRowsAndThePersonIsRefused) {
  Script("insert into A01(A00,A0101,A0199) values('" + kPerson + "','二',13)");
  boxes_.WillPress("以后再说(&L)");
  EXPECT_THROW(visits_.Open({kPerson, {}, {}}), environment::Failure);
  EXPECT_EQ(One(*database_, "select count(*) from A01 where A00='" + kPerson + "'"), "2");
  EXPECT_EQ(Messages(), Texts{kRefused});
}

// --- the people window -------------------------------------------------------------------------

class HostBoxes : public HostVisits {
 protected:
  HostBoxes() {
    window_.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
  }
  void OpenSelected() {
    for (auto* button : window_.findChildren<QPushButton*>()) {
      if (button->text() == "打开(&O)") button->click();
    }
  }
  PeopleWindow window_{database_,
                       [this](const VisitRequest& request, QWidget& over) { visits_.Open(request, &over); }};
};

TEST_F(HostBoxes, AfterTheComponentsOwnRefusalThereIsNoSecondBox) {
  Script("delete from A01 where A00='" + kPerson + "'");
  OpenSelected();
  EXPECT_EQ(Messages(), Texts{kRefused});
  EXPECT_EQ(boxes_.texts, Texts{});
}

TEST_F(HostBoxes, AnyOtherFailureIsToldOnce) {
  Script("drop table s_CodeTableDefine; drop table s_infoitem");
  OpenSelected();
  ASSERT_EQ(boxes_.texts.size(), 1U);
  EXPECT_EQ(boxes_.texts[0].find("无法维护此人："), 0U) << boxes_.texts[0];
  EXPECT_NE(boxes_.texts[0].find("s_infoitem"), std::string::npos) << boxes_.texts[0];
}

TEST_F(HostBoxes, WhatIsNoFailureOfTheEnvironmentIsToldToo) {
  stage_.WillRun([](toolkit::Form&) { throw std::runtime_error("坏了"); });
  OpenSelected();
  EXPECT_EQ(boxes_.texts, Texts{"无法维护此人：坏了"});
}

TEST_F(HostBoxes, AListThatCouldNeverBeReadOpensNobody) {
  Script("alter table A01 drop column A0109");
  const PeopleWindow window(database_, [](const VisitRequest&, QWidget&) {});
  ASSERT_EQ(boxes_.texts.size(), 1U);
  QStringList labels;
  for (const auto* label : window.findChildren<QLabel*>()) labels << label->text();
  EXPECT_TRUE(labels.contains("共 0 人"));
  for (const auto* button : window.findChildren<QPushButton*>()) {
    EXPECT_EQ(button->isEnabled(), button->text() != "打开(&O)");
  }
}

TEST_F(HostBoxes, AListThatCannotBeReadIsTold) {
  stage_.WillRun([&](toolkit::Form&) { Script("alter table A01 drop column A0109"); });
  OpenSelected();
  ASSERT_EQ(boxes_.texts.size(), 1U);
  EXPECT_EQ(boxes_.texts[0].find("读取人员列表失败："), 0U) << boxes_.texts[0];
}

class FailureBoxes : public HostBoxes {
 protected:
  // Tells of the failure of a visit while `look` looks at the box, which is closed behind it.
  void Tell(const std::exception& failure, const std::function<void(QDialog&)>& look) {
    QTimer::singleShot(50, &timer_, [look] {
      auto& box = dynamic_cast<QDialog&>(*QApplication::activeModalWidget());
      look(box);
      Button(box, "确定")->click();
    });
    ShowFailureBox(nullptr, "无法维护此人：类型不匹配", failure);
  }
  static QPushButton* Button(const QDialog& box, const QString& caption) {
    for (auto* button : box.findChildren<QPushButton*>()) {
      if (button->text() == caption) return button;
    }
    return nullptr;
  }

 private:
  QObject timer_;
};

TEST_F(FailureBoxes, SaysWhereUnderDetailsAndCopiesIt) {
  boxes_.Rest();
  environment::PlacedFailure failure(environment::MakeFailure(environment::kTypeMismatch));
  failure.Add({"A03", "A0302", "读取字段的定义", "select 1"});
  const QString details =
      "错误 13：类型不匹配\n信息集：A03\n字段：A0302\n正在：读取字段的定义\n语句：select 1";
  QApplication::clipboard()->setText("before");
  bool looked = false;
  Tell(failure, [&](QDialog& box) {
    looked = true;
    EXPECT_EQ(box.findChild<QLabel*>()->text(), "无法维护此人：类型不匹配");
    auto* shown = box.findChild<QPlainTextEdit*>();
    ASSERT_TRUE(shown);
    EXPECT_FALSE(shown->isVisible());
    EXPECT_FALSE(Button(box, "复制(&C)")->isVisible());
    Button(box, "详细信息(&D)")->click();
    EXPECT_TRUE(shown->isVisible());
    EXPECT_EQ(shown->toPlainText(), details);
    Button(box, "复制(&C)")->click();
    Button(box, "详细信息(&D)")->click();
    EXPECT_FALSE(shown->isVisible());
  });
  EXPECT_TRUE(looked);
  EXPECT_EQ(QApplication::clipboard()->text(), details);
}

// A failure of the engine's outside a visit has no place, but its statement.
TEST_F(FailureBoxes, HasTheStatementUnderDetailsToRead) {
  boxes_.Rest();
  bool looked = false;
  Tell(environment::Failure(environment::kSyntaxError, "语法错误", "select 2"), [&](QDialog& box) {
    looked = true;
    EXPECT_EQ(box.focusWidget(), Button(box, "确定"));
    EXPECT_TRUE(Button(box, "确定")->isDefault());
    EXPECT_TRUE(box.findChild<QLabel*>()->textInteractionFlags() & Qt::TextSelectableByMouse);
    Button(box, "详细信息(&D)")->click();
    auto* shown = box.findChild<QPlainTextEdit*>();
    ASSERT_TRUE(shown);
    const QString details = shown->toPlainText();
    EXPECT_TRUE(details.contains("语句：select 2")) << details.toStdString();
    shown->setFocus();
    QTest::keyClick(shown, Qt::Key_X);
    QTest::keyClick(shown, Qt::Key_Tab);
    EXPECT_EQ(shown->toPlainText(), details);
    EXPECT_FALSE(shown->hasFocus());
  });
  EXPECT_TRUE(looked);
}

TEST_F(FailureBoxes, HasNoDetailsOfAFailureThatSaysNone) {
  boxes_.Rest();
  bool looked = false;
  Tell(environment::MakeFailure(environment::kPathAccess), [&](QDialog& box) {
    looked = true;
    EXPECT_FALSE(box.findChild<QPlainTextEdit*>());
    EXPECT_FALSE(Button(box, "详细信息(&D)"));
  });
  Tell(std::runtime_error("x"), [&](QDialog& box) { EXPECT_FALSE(Button(box, "复制(&C)")); });
  EXPECT_TRUE(looked);
}

}  // namespace
}  // namespace dossierkit::host
