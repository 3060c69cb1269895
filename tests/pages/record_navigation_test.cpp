// Moves in the record list, the question before them, and the mark of edits.
#include <gtest/gtest.h>

#include <algorithm>

#include "metadata/field_items.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using environment::Failure;
using headless::Message;
using toolkit::kAnswerNo;
using toolkit::kAnswerYes;
using Texts = std::vector<std::string>;

const std::string kContinue = "数据已被修改并未保存，是否继续？";
const std::string kSave = "数据已被修改并未保存，是否保存？";

// The statements since `from`, without those that look for the caption of a code.
Texts Since(const Visit& visit, std::size_t from) {
  Texts texts(visit.statements.begin() + static_cast<std::ptrdiff_t>(from), visit.statements.end());
  std::erase_if(texts, [](const auto& text) { return text.starts_with("select dmcpt from"); });
  return texts;
}

TEST(RecordMove, ShowsTheRecordOfTheClickedRow) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.Window().TbMain().Button("Add").SetEnabled(false);
    visit.Window().TbMain().Button("Delete").SetEnabled(false);
    visit.user.ClickRow(3);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 3);
    EXPECT_EQ(visit.Masked("A02_A0201").Text(), "1993年09月");
    EXPECT_EQ(visit.Masked("A02_A0201A").Text(), "1996年07月");
    EXPECT_EQ(visit.Text("A02_A0203").Text(), "作物遗传育种");
    EXPECT_EQ(environment::TextOf(visit.OnShow().FieldItems()->Item("A02_A0204")->Dmcod), "209");
    EXPECT_TRUE(visit.Enabled("Add"));
    EXPECT_TRUE(visit.Enabled("Delete"));
    EXPECT_EQ(visit.Focus(), "A02_A0201_v");
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(RecordMove, RequiredTheOperationEndsInABlank) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
    visit.user.ClickRow(2);
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改 ");
  });
}

TEST(RecordMove, ReadsTheRecordByItsNumber) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    const auto from = visit.statements.size();
    visit.user.ClickRow(2);
    EXPECT_EQ(Since(visit, from),
              (Texts{"select itemdesc from s_infoitem where itemdesc <>'' and  tblname = 'A04' and itemname "
                     "= 'A0499' ",
                     " select * from s_infoitem  where tblname ='A04'",
                     "select * from A04 where a00 ='47EAA099-2CB6-416D-A6DC-283CF0480FF9' and A0499=2"}));
  });
}

TEST(RecordMove, ListAndFormAreThoseOfThePagesPerson) {
  Visit visit;
  visit.database->RunScript("insert into A04(A00,A0404,A0499) values('Q','甲',1),('Q','乙',2)");
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.OnShow().WhInfo().personID = "Q";
    visit.OnShow().setDGItems();
    EXPECT_EQ(visit.OnShow().AdodcRs()->RecordCount(), 2);
    const auto from = visit.statements.size();
    visit.user.ClickRow(2);
    ASSERT_FALSE(Since(visit, from).empty());
    EXPECT_EQ(Since(visit, from).back(), "select * from A04 where a00 ='Q' and A0499=2");
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "乙");
  });
}

TEST(RecordMove, AClickOnTheCurrentRowReadsItAgain) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.database->RunScript("update A04 set A0404='改了' where A00='" + kPerson + "' and A0499=1");
    visit.user.ClickRow(1);
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "改了");
  });
}

TEST(RecordMove, ANewRecordIsLeftForTheClickedOne) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.user.Press('N', toolkit::kCtrl);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 5);
    EXPECT_FALSE(visit.Enabled("Add"));
    visit.user.ClickRow(1);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
    EXPECT_TRUE(visit.Enabled("Add"));
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "副理事长");
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(RecordMove, WithoutEditsNothingIsAsked) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const char* set : {"A02", "A03", "A21"}) {
      visit.GoTo(set);
      visit.user.Tab();
      visit.user.ClickRow(2);
    }
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST(QuestionToContinue, YesMovesAndDropsTheEdits) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("未保存");
    visit.script.WillAnswer(kAnswerYes);
    visit.user.ClickRow(2);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 2);
    EXPECT_EQ(visit.OnShow().AdodcRs()->AbsolutePosition(), 2);
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "副主编");
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
  });
  EXPECT_EQ(visit.script.messages, (std::vector<Message>{{kContinue, 4, "DossierKit"}}));
  EXPECT_EQ(One(*visit.database, "select count(*) from A04 where A0404='未保存'"), "0");
}

TEST(QuestionToContinue, RequiredNoKeepsTheRowButRefillsTheFormAndDropsTheEdits) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("未保存");
    visit.script.WillAnswer(kAnswerNo);
    const auto from = visit.statements.size();
    visit.user.ClickRow(2);
    ASSERT_FALSE(Since(visit, from).empty());
    EXPECT_EQ(Since(visit, from).back(),
              "select * from A04 where a00 ='47EAA099-2CB6-416D-A6DC-283CF0480FF9' and A0499=1");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
    EXPECT_EQ(visit.OnShow().AdodcRs()->AbsolutePosition(), 1);
    EXPECT_EQ(visit.user.Find<toolkit::DataGrid>("DGItems")->Row(), 1);
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "副理事长");
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改 ");
    EXPECT_EQ(visit.Focus(), "A04_A0401_v");
  });
  EXPECT_EQ(visit.script.messages, (std::vector<Message>{{kContinue, 4, "DossierKit"}}));
}

TEST(QuestionToContinue, IsAskedOnEverySetOfManyRecordsButEducation) {
  for (const char* set : {"A03", "A04", "A05", "A06", "A08", "A09", "A10", "A11", "A15", "A21"}) {
    Visit visit;
    visit.OpenPerson(kPerson, [&] {
      visit.GoTo(set);
      visit.OnShow().WhInfo().IsChange = true;
      visit.script.WillAnswer(kAnswerYes);
      visit.user.ClickRow(2);
    });
    EXPECT_EQ(visit.script.messages, (std::vector<Message>{{kContinue, 4, "DossierKit"}})) << set;
  }
}

TEST(QuestionToSave, RequiredNoSavesAndTheMoveGoesOn) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.user.ClickRow(1);
    visit.Text("A02_A0203").SetText("新专业");
    visit.script.WillAnswer(kAnswerNo);
    visit.user.ClickRow(3);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 3);
    EXPECT_EQ(visit.OnShow().AdodcRs()->AbsolutePosition(), 3);
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
  });
  EXPECT_EQ(visit.script.messages, (std::vector<Message>{{kSave, 4, "DossierKit"}}));
  EXPECT_EQ(One(*visit.database, "select A0203 from A02 where A00='" + kPerson + "' and A0299=1"), "新专业");
}

TEST(QuestionToSave, RequiredYesGoesOnWithoutSaving) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.Text("A02_A0203").SetText("新专业");
    visit.script.WillAnswer(kAnswerYes);
    visit.user.ClickRow(3);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 3);
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
  });
  EXPECT_EQ(visit.script.messages, (std::vector<Message>{{kSave, 4, "DossierKit"}}));
  EXPECT_EQ(One(*visit.database, "select A0203 from A02 where A00='" + kPerson + "' and A0299=1"), "农学");
}

TEST(QuestionToSave, RequiredASaveThatFailedDoesNotStopTheMove) {
  Visit visit;
  const bool saved = visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A02");
    visit.Text("A02_A0202").SetText("");
    visit.script.WillAnswer(kAnswerNo);
    visit.user.ClickRow(2);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 2);
    EXPECT_EQ(visit.Text("A02_A0203").Text(), "作物遗传育种");
  });
  EXPECT_FALSE(saved);
  EXPECT_EQ(visit.script.messages,
            (std::vector<Message>{{kSave, 4, "DossierKit"}, {"就读院校 为必填项", 0, "错误信息"}}));
  // The old row was deleted before the check.
  EXPECT_EQ(One(*visit.database, "select count(*) from A02 where A00='" + kPerson + "'"), "2");
}

// The list shows the number of a record under the caption of its field.
class RecordNumber : public ::testing::Test {
 protected:
  void Number(const std::string& value) {
    visit_.database->RunScript("update A04 set A0499=" + value + " where A00='" + kPerson +
                               "' and A0404='副主编'");
  }
  Visit visit_;
};

TEST_F(RecordNumber, ZeroOrLessShowsAnEmptyFormAndKeepsTheOldNumber) {
  for (const char* number : {"0", "-1", "-32768"}) {
    Visit visit;
    visit.database->RunScript("update A04 set A0499=" + std::string(number) + " where A00='" + kPerson +
                              "' and A0404='副主编'");
    visit.OpenPerson(kPerson, [&] {
      visit.GoTo("A04");
      visit.user.ClickRow(3);
      visit.Window().TbMain().Button("Add").SetEnabled(false);
      visit.Window().TbMain().Button("Delete").SetEnabled(false);
      visit.OnShow().WhInfo().IsChange = true;
      visit.script.WillAnswer(kAnswerYes);
      visit.user.ClickRow(2);
      EXPECT_EQ(visit.OnShow().WhInfo().id, 3) << number;
      EXPECT_EQ(visit.Text("A04_A0404").Text(), "");
      EXPECT_EQ(visit.Masked("A04_A0401").Text(), "____年__月");
      EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
      EXPECT_FALSE(visit.Enabled("Add"));
      EXPECT_FALSE(visit.Enabled("Delete"));
      EXPECT_EQ(visit.Focus(), "A04_A0401_v");
    });
  }
}

TEST_F(RecordNumber, ThatIsMissingFails) {
  Number("null");
  try {
    visit_.OpenPerson(kPerson, [&] {
      visit_.GoTo("A04");
      visit_.user.ClickRow(2);
    });
    ADD_FAILURE() << "a missing number was taken";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), environment::kInvalidUseOfNull);
    EXPECT_EQ(failure.description(), "无效使用 Null");
  }
  EXPECT_FALSE(visit_.Window().Loaded());
}

TEST_F(RecordNumber, Beyond16BitsFails) {
  Number("40000");
  try {
    visit_.OpenPerson(kPerson, [&] {
      visit_.GoTo("A04");
      visit_.user.ClickRow(2);
    });
    ADD_FAILURE() << "a number of 40000 was taken";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), environment::kOverflow);
    EXPECT_EQ(failure.description(), "溢出");
  }
}

TEST_F(RecordNumber, OfTheGreatest16BitsIsShown) {
  Number("32767");
  visit_.OpenPerson(kPerson, [&] {
    visit_.GoTo("A04");
    visit_.user.ClickRow(2);
    EXPECT_EQ(visit_.OnShow().WhInfo().id, 32767);
    EXPECT_EQ(visit_.Text("A04_A0404").Text(), "副主编");
  });
}

TEST_F(RecordNumber, RequiredWithoutACaptionEveryRecordIsAnEmptyForm) {
  for (const char* caption : {"''", "null"}) {
    Visit visit;
    visit.database->RunScript(std::string("update s_infoitem set itemdesc=") + caption +
                              " where tblname='A04' and itemname='A0499'");
    visit.OpenPerson(kPerson, [&] {
      visit.GoTo("A04");
      EXPECT_EQ(visit.Text("A04_A0404").Text(), "");
      EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
      visit.user.ClickRow(2);
      EXPECT_EQ(visit.Text("A04_A0404").Text(), "");
      EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
      EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
    });
  }
}

TEST_F(RecordNumber, UnderAnotherCaptionIsFound) {
  visit_.database->RunScript(
      "update s_infoitem set itemdesc='编号' where tblname='A04' and itemname='A0499'");
  visit_.OpenPerson(kPerson, [&] {
    visit_.GoTo("A04");
    visit_.user.ClickRow(2);
    EXPECT_EQ(visit_.OnShow().WhInfo().id, 2);
  });
}

TEST_F(RecordNumber, IsReadByItsCaptionWhereverItsColumnStands) {
  visit_.database->RunScript("update s_infoitem set FldOrder='00' where itemname='A0499'");
  visit_.OpenPerson(kPerson, [&] {
    visit_.GoTo("A04");
    EXPECT_EQ(visit_.user.Find<toolkit::DataGrid>("DGItems")->Heading(0), "序号");
    visit_.user.ClickRow(2);
    EXPECT_EQ(visit_.OnShow().WhInfo().id, 2);
    EXPECT_EQ(visit_.Text("A04_A0404").Text(), "副主编");
  });
}

TEST(RecordMove, TheListIsAnIndexAndTheFormReadsTheTable) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.database->RunScript("delete from A04 where A00='" + kPerson + "' and A0499=3");
    visit.user.ClickRow(3);
    EXPECT_EQ(visit.OnShow().WhInfo().id, 3);
    EXPECT_EQ(visit.Text("A04_A0403").Text(), "");
    EXPECT_EQ(visit.user.Find<toolkit::DataGrid>("DGItems")->Cell(3, 3), "水稻专业组组长");
  });
}

// --- what happens when, on a click on another row of an edited record ---------------------------------

TEST(RowClick, RunsInTheOrderOfItsSixSteps) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.user.Tab();
    Texts told;
    auto& field = visit.Masked("A04_A0402");
    auto& grid = *visit.user.Find<toolkit::DataGrid>("DGItems");
    auto& first = visit.Masked("A04_A0401");
    std::vector<environment::Subscription> hooks;
    hooks.push_back(
        field.Validate.Subscribe([&](bool&) { told.push_back("validate " + visit.Caption("labExplain")); }));
    hooks.push_back(
        field.LostFocus.Subscribe([&] { told.push_back("lost [" + visit.Caption("labExplain") + "]"); }));
    hooks.push_back(grid.GotFocus.Subscribe([&] { told.push_back("grid"); }));
    hooks.push_back(
        visit.OnShow().AdodcRs()->MoveComplete.Subscribe([&](std::int32_t, std::int32_t&, ado::Recordset&) {
          told.push_back("done " + visit.Caption("labOpt") +
                         (visit.OnShow().WhInfo().IsChange ? "edited" : "clean"));
        }));
    hooks.push_back(
        first.GotFocus.Subscribe([&] { told.push_back("first " + visit.Caption("labExplain")); }));
    visit.script.on_message = [&](const Message& message) {
      told.push_back("asks " + message.text + " focus " + visit.Focus());
    };
    visit.Text("A04_A0404").SetText("未保存");
    visit.script.WillAnswer(kAnswerYes);
    visit.user.ClickRow(2);
    // The page's own handlers run ahead of those of this test.
    EXPECT_EQ(told, (Texts{"validate 填写兼职结束的年月，仍在任的不填，例如：2017年04月。", "lost []", "grid",
                           "asks 数据已被修改并未保存，是否继续？ focus DGItems",
                           "first 填写兼职开始的年月，例如：2012年05月。", "done 当前操作：修改 clean"}));
    EXPECT_EQ(visit.Focus(), "A04_A0401_v");
  });
}

TEST(RowClick, AFieldThatRefusesToBeLeftKeepsFocusCursorAndEdits) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.GoTo("A04");
    visit.Text("A04_A0404").SetText("未保存");
    const auto hook = visit.Masked("A04_A0401").Validate.Subscribe([](bool& cancel) { cancel = true; });
    const auto from = visit.statements.size();
    visit.user.ClickRow(2);
    EXPECT_EQ(visit.Focus(), "A04_A0401_v");
    EXPECT_EQ(visit.OnShow().AdodcRs()->AbsolutePosition(), 1);
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
    EXPECT_EQ(visit.Text("A04_A0404").Text(), "未保存");
    EXPECT_EQ(visit.statements.size(), from);
  });
  EXPECT_TRUE(visit.Messages().empty());
}

// --- the mark of edits ------------------------------------------------------------------------------

TEST(MarkOfEdits, IsSetByEveryTextAndMaskOfAPage) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const char* set : {"A01", "A02", "A05", "A09", "A12", "B01"}) {
      visit.GoTo(set);
      for (const auto& control : visit.OnShow().Controls()) {
        auto& info = visit.OnShow().WhInfo();
        EXPECT_FALSE(info.IsChange) << set;
        if (auto* text = dynamic_cast<toolkit::TextBox*>(control.get())) text->SetText(text->Text() + "1");
        if (auto* masked = dynamic_cast<toolkit::MaskEdBox*>(control.get())) masked->SetText("1");
        EXPECT_EQ(info.IsChange, control->Name().ends_with("_v")) << control->Name();
        info.IsChange = false;
      }
    }
  });
}

TEST(MarkOfEdits, AnAssignmentOfTheSameTextDoesNotSetIt) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.Text("A01_A0101").SetText("陆怀谷");
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
  });
}

TEST(MarkOfEdits, TypingAndTakingBackLeavesIt) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    visit.user.Type("x");
    visit.user.Press(toolkit::kKeyBack);
    EXPECT_EQ(visit.Text("A01_A0101").Text(), "陆怀谷");
    EXPECT_TRUE(visit.OnShow().WhInfo().IsChange);
  });
}

TEST(MarkOfEdits, IsGoneOnEveryNewPageAndNewRecord) {
  Visit visit;
  visit.OpenPerson(kPerson, [&] {
    for (const char* set : {"A02", "A03", "A12", "A21", "B01", "A01"}) {
      visit.GoTo(set);
      EXPECT_FALSE(visit.OnShow().WhInfo().IsChange) << set;
    }
    visit.GoTo("A15");
    visit.user.ClickToolbar("Add");
    EXPECT_FALSE(visit.OnShow().WhInfo().IsChange);
  });
}

}  // namespace
}  // namespace dossierkit::tests
