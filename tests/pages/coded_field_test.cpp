// Coded fields: typed, double-clicked, and every way out of the picker.
#include "pages/page_design.h"
#include "tests/pages/entry_test.h"

namespace dossierkit::tests {
namespace {

using toolkit::kAnswerNo;
using toolkit::kCtrl;
using toolkit::kKeyReturn;

using CodedField = EntryTest;

// --- typed ---------------------------------------------------------------------------------------

TEST_F(CodedField, ATypedShorthandBecomesItsCaptionWithoutAWindow) {
  Open([&] {
    Enter("A01_A0103", "baz");
    EXPECT_EQ(Item("A01_A0103"), "01|汉族");
    EXPECT_EQ(During([&] { visit.user.Tab(); }),
              (Statements{"select * from GB3304 where dmattr =true and  (dmcod='baz' or dmcpt ='baz' or "
                          "dmhnd='baz')"}));
    EXPECT_EQ(visit.Text("A01_A0103").Text(), "保安族");
    EXPECT_EQ(Item("A01_A0103"), "47|保安族");
    EXPECT_EQ(visit.Focus(), "A01_A0114_v");
    EXPECT_TRUE(Changed());
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodedField, ATypedCodeBecomesItsCaption) {
  Open([&] {
    EnterAndLeave("A01_A0102", "2");
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "女性");
    EXPECT_EQ(Item("A01_A0102"), "2|女性");
  });
}

TEST_F(CodedField, AnEmptiedFieldIsClearedWithoutALookup) {
  Script("update s_infoitem set [IsNUll] = 1 where CodeTable is not null");
  Open([&] {
    EXPECT_TRUE(During([&] { EnterAndLeave("A01_A0102", ""); }).empty());
    EXPECT_EQ(Item("A01_A0102"), "|");
    EXPECT_EQ(visit.Focus(), "A01_A0103_v");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(Stored("A0102"), "");
}

TEST_F(CodedField, AnUntouchedFieldOfAnUnchangedRecordIsNotLookedUp) {
  Open([&] {
    visit.Text("A01_A0102").SetFocus();
    EXPECT_TRUE(During([&] { visit.user.Tab(); }).empty());
  });
}

TEST_F(CodedField, AnUntouchedFieldOfAChangedRecordIsLookedUpByItsCaption) {
  Open([&] {
    EnterAndLeave("A01_A0101", "新名");
    EXPECT_EQ(visit.Focus(), "A01_A0102_v");
    EXPECT_EQ(
        During([&] { visit.user.Tab(); }),
        (Statements{
            "select * from GB2261 where dmattr =true and  (dmcod='男性' or dmcpt ='男性' or dmhnd='男性')"}));
    EXPECT_EQ(Item("A01_A0102"), "1|男性");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodedField, ARuleDoesNotApplyToIt) {
  Script("update s_infoitem set \"Check\"='L 99' where itemname='A0102'");
  Open([&] {
    EnterAndLeave("A01_A0102", "2");
    EXPECT_EQ(visit.Focus(), "A01_A0103_v");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodedField, RequiredAnUnresolvedTextOpensThePickerOnItAndCancelEmptiesTheField) {
  Open([&] {
    InPicker([&] {
      const fmGrpCod& picker = CodePicker();
      EXPECT_EQ(picker.DmGrp, "GB2261");
      EXPECT_EQ(picker.SearchText, "nx");
      EXPECT_TRUE(picker.Cancelled);
      EXPECT_EQ(picker.Dmcod + picker.Dmcpt, "");
      EXPECT_EQ(visit.user.Window().Caption(), "性别代码表");
      EXPECT_EQ(visit.user.Find<toolkit::TabStrip>("Tab1")->Tab(), 1);
      const auto list = visit.user.Find<toolkit::ListBox>("lstDmCpt");
      ASSERT_EQ(list->ListCount(), 2);
      EXPECT_EQ(list->List(0) + list->List(1), "男性女性");
      // The field keeps what was typed until the window is left.
      EXPECT_EQ(
          std::dynamic_pointer_cast<toolkit::TextBox>(visit.OnShow().Controls().Find("A01_A0102_v"))->Text(),
          "nx");
    });
    EnterAndLeave("A01_A0102", "nx");
    EXPECT_EQ(visit.Focus(), "A01_A0103_v");
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "");
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodedField, ACodePrefixOpensThePickerOnAnEmptyList) {
  Open([&] {
    InPicker([&] {
      EXPECT_EQ(visit.user.Find<toolkit::TabStrip>("Tab1")->Tab(), 1);
      EXPECT_EQ(visit.user.Find<toolkit::ListBox>("lstDmCpt")->ListCount(), 0);
    });
    EnterAndLeave("A01_A0114", "32048");
    EXPECT_EQ(Item("A01_A0114"), "|");
  });
}

TEST_F(CodedField, AHeadingOpensThePicker) {
  Open([&] {
    InPicker([&] { EXPECT_EQ(CodePicker().SearchText, "研究生教育类"); });
    EnterAndLeave("A01_A0106", "研究生教育类");
    EXPECT_EQ(Item("A01_A0106"), "|");
  });
}

TEST_F(CodedField, AnApostropheIsShownAndOpensThePicker) {
  std::string description;
  try {
    visit.database->Run(
        "select * from GB2261 where dmattr =true and  (dmcod='n'x' or dmcpt ='n'x' or dmhnd='n'x')");
  } catch (const std::exception& failure) {
    description = failure.what();
  }
  Open([&] {
    InPicker([&] {
      EXPECT_EQ(Shown(), (Messages{{description, 48, "信息校对"}}));
      EXPECT_EQ(CodePicker().SearchText, "n'x");
      EXPECT_EQ(visit.user.Find<toolkit::ListBox>("lstDmCpt")->ListCount(), 0);
    });
    EnterAndLeave("A01_A0102", "n'x");
    EXPECT_EQ(Item("A01_A0102"), "|");
    EXPECT_EQ(visit.Focus(), "A01_A0103_v");
  });
  EXPECT_EQ(Shown().size(), 1U);
}

TEST_F(CodedField, RequiredARowWithoutACodeGivesItsCaptionAndKeepsTheOldCode) {
  Script("insert into GB2261 values('','待定','dd',1)");
  Open([&] {
    EnterAndLeave("A01_A0102", "dd");
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "待定");
    EXPECT_EQ(Item("A01_A0102"), "1|男性");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(Stored("A0102"), "1");
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodedField, EnterLeavesTheFieldAfterThePicker) {
  Open([&] {
    InPicker([&] {
      SearchFemale(visit);
      visit.user.Click("cmdOK");
    });
    Enter("A01_A0102", "nx");
    visit.user.Press(kKeyReturn);
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "女性");
    EXPECT_EQ(visit.Focus(), "A01_A0103_v");
  });
}

TEST_F(CodedField, AClickOnAnotherSetWaitsForThePickerAndIsDoneOnce) {
  Open([&] {
    InPicker([&] {
      SearchFemale(visit);
      visit.user.Click("cmdOK");
    });
    Enter("A01_A0102", "nx");
    visit.script.WillAnswer(toolkit::kAnswerYes);
    visit.GoTo("A12");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA12");
  });
  EXPECT_EQ(visit.Messages(), (Statements{"数据被修改且未保存，是否保存？"}));
  EXPECT_EQ(Stored("A0102"), "2");
}

TEST_F(CodedField, ARewrittenTextIsLookedUpAgainByItsCaption) {
  Open([&] {
    EnterAndLeave("A01_A0102", "2");
    visit.user.BackTab();
    EXPECT_EQ(
        During([&] { visit.user.Tab(); }),
        (Statements{
            "select * from GB2261 where dmattr =true and  (dmcod='女性' or dmcpt ='女性' or dmhnd='女性')"}));
    EXPECT_EQ(Item("A01_A0102"), "2|女性");
  });
}

// --- double click --------------------------------------------------------------------------------

TEST_F(CodedField, ADoubleClickOpensTheWholeTableWithTheFieldsOwnValues) {
  Open([&] {
    InPicker([&] {
      const fmGrpCod& picker = CodePicker();
      EXPECT_EQ(picker.DmGrp, "GB2261");
      EXPECT_EQ(picker.SearchText, "");
      EXPECT_TRUE(picker.Cancelled);
      EXPECT_EQ(picker.Dmcod, "1");
      EXPECT_EQ(picker.Dmcpt, "男性");
      EXPECT_EQ(visit.user.Find<toolkit::TabStrip>("Tab1")->Tab(), 0);
      EXPECT_EQ(visit.user.Find<toolkit::TreeView>("tvGrpCod")->Nodes().Count(), 4);
    });
    EXPECT_EQ(
        During([&] { visit.user.DoubleClick("A01_A0102_v"); }),
        (Statements{
            "select codtbldsc from s_CodeTableDefine where dmgrp ='GB2261' ",
            "select bit from s_CodeLevDefine where dmgrp ='GB2261' order by levelnum",
            "select dmcod,dmcpt,iif(dmattr is null,false,dmattr) as dmattr  from GB2261 where dmcod<>''  "
            "and dmcpt<>''    and len(dmcod) =1  order by dmcod"}));
  });
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodedField, ADoubleClickOnAPlainFieldDoesNothing) {
  Open([&] {
    EXPECT_TRUE(During([&] {
                  visit.user.DoubleClick("A01_A0101_v");
                  visit.user.DoubleClick("A01_A0140_v");
                }).empty());
    EXPECT_FALSE(visit.runtime.picker);
  });
}

// The basic data with a second box on the field of the sex, whose name has not the ending of a value.
class PageWithAnotherBox : public ctrlUser {
 public:
  explicit PageWithAnotherBox(const std::string& name) : ctrlUser(name, *FindPageDesign("A01")) {
    Controls().Make<toolkit::TextBox>("A01_A0102_x")->SetTabIndex(900);
  }
};

TEST_F(CodedField, ABoxWithoutTheEndingOfAValueIsNeitherCheckedNorChosenFor) {
  visit.desktop.RegisterClass("DossierKit.ctrlUserA01", [](const std::string& name) {
    return std::make_shared<PageWithAnotherBox>(name);
  });
  Open([&] {
    visit.OnShow().WhInfo().IsChange = true;
    visit.user.Find("A01_A0102_x")->SetFocus();
    visit.user.Type("nx");
    EXPECT_TRUE(During([&] {
                  visit.user.DoubleClick("A01_A0102_x");
                  visit.user.Find("A01_A0101_v")->SetFocus();
                }).empty());
    EXPECT_EQ(visit.Focus(), "A01_A0101_v");
    EXPECT_FALSE(visit.runtime.picker);
    EXPECT_EQ(Item("A01_A0102"), "1|男性");
  });
}

TEST_F(CodedField, AfterAFillThatFailedLeavingChecksNothingAndADoubleClickChooses) {
  Open([&] {
    Enter("A01_A0101", "新名");
    auto& first = *visit.OnShow().FieldItems()->Item("A01_A0101");
    first.FieldType = "Varchar";
    first.FieldLength = "viele";
    EXPECT_EQ(NumberOfFailure([&] { visit.OnShow().setCtrl(visit.OnShow().FieldItems()); }),
              environment::kTypeMismatch);
    EXPECT_TRUE(Changed());
    Enter("A01_A0102", "nx");
    EXPECT_TRUE(During([&] { visit.user.Tab(); }).empty());
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "nx");
    EXPECT_EQ(Item("A01_A0102"), "1|男性");
    InPicker([&] { SearchFemale(visit), visit.user.Click("cmdOK"); });
    visit.user.DoubleClick("A01_A0102_v");
    EXPECT_EQ(Item("A01_A0102"), "2|女性");
  });
}

TEST_F(CodedField, ADoubleClickAfterSearchTextOfAFormerOneOpensOnTheTree) {
  Open([&] {
    InPicker([] {});
    EnterAndLeave("A01_A0102", "nx");
    InPicker([&] { EXPECT_EQ(visit.user.Find<toolkit::TabStrip>("Tab1")->Tab(), 0); });
    visit.user.DoubleClick("A01_A0102_v");
  });
}

TEST_F(CodedField, AFormerChoiceDoesNotComeBack) {
  Open([&] {
    InPicker([&] {
      visit.user.ClickNode("tvGrpCod", "G2");
      visit.user.Click("cmdOK");
    });
    visit.user.DoubleClick("A01_A0102_v");
    EXPECT_EQ(Item("A01_A0102"), "2|女性");
    InPicker([] {});
    EnterAndLeave("A01_A0103", "没有的");
    EXPECT_EQ(Item("A01_A0103"), "|");
  });
}

TEST_F(CodedField, RequiredAStoredCodeThatTheTableLacksIsShownBareAndEmptiedByCancel) {
  Script("update A01 set A0102='7' where A00='" + kPerson + "'");
  Open([&] {
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "7");
    InPicker([&] {
      EXPECT_EQ(CodePicker().Dmcod, "7");
      EXPECT_EQ(CodePicker().Dmcpt, "");
      visit.user.Click("cmdCancel");
    });
    visit.user.DoubleClick("A01_A0102_v");
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "");
    EXPECT_EQ(Item("A01_A0102"), "|");
    EXPECT_TRUE(Changed());
  });
}

TEST_F(CodedField, ACancelThatRewritesATypedTextMarksTheRecord) {
  Open([&] {
    Enter("A01_A0102", "zz");
    visit.OnShow().WhInfo().IsChange = false;
    InPicker([&] { visit.user.Click("cmdCancel"); });
    visit.user.DoubleClick("A01_A0102_v");
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "男性");
    EXPECT_EQ(Item("A01_A0102"), "1|男性");
    EXPECT_TRUE(Changed());
  });
}

// --- commands ------------------------------------------------------------------------------------

TEST_F(CodedField, AClickOnSaveResolvesTheTypedCodeFirst) {
  Open([&] {
    Enter("A01_A0102", "wz");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(Stored("A0102"), "0");
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodedField, AClickOnSaveWaitsForThePicker) {
  Open([&] {
    Enter("A01_A0102", "nx");
    InPicker([&] {
      EXPECT_EQ(Stored("A0102"), "1");
      SearchFemale(visit);
      visit.user.Click("cmdOK");
    });
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(Stored("A0102"), "2");
}

TEST_F(CodedField, AClickOnAddResolvesTheTypedCodeFirst) {
  Open([&] {
    visit.GoTo("A02");
    Enter("A02_A0204", "nxssxw");
    visit.script.WillAnswer(toolkit::kAnswerYes);
    visit.user.ClickToolbar("Add");
  });
  EXPECT_EQ(Value("select A0204 from A02 where A0299=1 and A00='" + kPerson + "'"), "309");
}

TEST_F(CodedField, RequiredTheShortCutOfSaveWritesTheFormerCode) {
  Open([&] {
    visit.GoTo("A02");
    Enter("A02_A0204", "nxssxw");
    visit.user.Press('S', kCtrl);
  });
  EXPECT_EQ(Value("select A0204 from A02 where A0299=1 and A00='" + kPerson + "'"), "409");
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodedField, RequiredEnterInTheLastFieldWritesTheFormerCode) {
  Open([&] {
    visit.GoTo("A02");
    Enter("A02_A0204", "nxssxw");
    visit.user.Press(kKeyReturn);
  });
  EXPECT_EQ(Value("select A0204 from A02 where A0299=1 and A00='" + kPerson + "'"), "409");
}

TEST_F(CodedField, RequiredASaveByAQuestionWritesTheFormerCode) {
  struct Way {
    const char* button;
    int questions;
  };
  for (const auto& [button, questions] : {Way{"Exit", 1}, Way{"Cancel", 2}}) {
    const std::string school = std::string("新学校") + button;
    Open([&, button = button, questions = questions] {
      visit.GoTo("A02");
      EnterAndLeave("A02_A0202", school);
      Enter("A02_A0204", "nxssxw");
      for (int i = 0; i < questions; ++i) visit.script.WillAnswer(toolkit::kAnswerYes);
      visit.user.ClickToolbar(button);
    });
    EXPECT_EQ(Value("select A0204 from A02 where A0202='" + school + "' and A00='" + kPerson + "'"), "409")
        << button;
  }
}

// --- hazards -------------------------------------------------------------------------------------

TEST_F(CodedField, RequiredAnotherCodeOfTheSameCaptionIsNoChangeAndIsLostUnasked) {
  Script("insert into GB2261 values('3','男性','nx',1)");
  Open([&] {
    InPicker([&] {
      visit.user.ClickNode("tvGrpCod", "G3");
      visit.user.Click("cmdOK");
    });
    visit.user.DoubleClick("A01_A0102_v");
    EXPECT_EQ(Item("A01_A0102"), "3|男性");
    EXPECT_FALSE(Changed());
    visit.GoTo("A12");
    EXPECT_EQ(visit.OnShow().Name(), "ctrlUserA12");
  });
  EXPECT_TRUE(Shown().empty());
  EXPECT_EQ(Stored("A0102"), "1");
}

TEST_F(CodedField, RequiredAnUntouchedAmbiguousCaptionOpensThePickerAfterAnEditAndCancelEmptiesIt) {
  Script("insert into GB2261 values('3','男性','nx',1)");
  Script("update s_infoitem set [IsNUll] = 1 where CodeTable is not null");
  Open([&] {
    visit.user.Tab();
    visit.user.Tab();
    EXPECT_FALSE(visit.runtime.picker);
    EnterAndLeave("A01_A0101", "新名");
    EXPECT_EQ(Item("A01_A0102"), "1|男性");
    InPicker([&] {
      EXPECT_EQ(CodePicker().SearchText, "男性");
      visit.user.Click("cmdCancel");
    });
    visit.user.Tab();
    EXPECT_EQ(visit.Text("A01_A0102").Text(), "");
    EXPECT_EQ(Item("A01_A0102"), "|");
    EXPECT_EQ(visit.Focus(), "A01_A0103_v");
    visit.user.ClickToolbar("Save");
  });
  EXPECT_EQ(Stored("A0102"), "");
}

// --- failures ------------------------------------------------------------------------------------

TEST_F(CodedField, RequiredAFailingSearchLeavesThePickerAndTheVisit) {
  for (const bool typed : {false, true}) {
    EXPECT_EQ(NumberOfFailure([&] {
                Open([&] {
                  InPicker([&] {
                    visit.user.SelectTab("Tab1", 1);
                    visit.user.Click("txtDm");
                    visit.user.Press('A', kCtrl);
                    visit.user.Paste("n'x");
                    visit.user.Press(kKeyReturn);
                  });
                  if (typed) {
                    EnterAndLeave("A01_A0102", "nx");
                  } else {
                    visit.user.DoubleClick("A01_A0102_v");
                  }
                  EXPECT_TRUE(visit.Window().LoopEnded());
                });
              }),
              environment::kSyntaxError);
    EXPECT_FALSE(visit.Window().Loaded());
    EXPECT_FALSE(CodePicker().Loaded());
    EXPECT_EQ(Stored("A0102"), "1");
    Open([&] {
      InPicker([&] { SearchFemale(visit), visit.user.Click("cmdOK"); });
      visit.user.DoubleClick("A01_A0102_v");
      EXPECT_EQ(Item("A01_A0102"), "2|女性");
    });
  }
  EXPECT_TRUE(Shown().empty());
}

TEST_F(CodedField, ThePickerServesOneVisitAfterTheOther) {
  const fmGrpCod* picker = nullptr;
  for (int i = 0; i < 2; ++i) {
    Open([&] {
      InPicker([&] { SearchFemale(visit), visit.user.Click("cmdOK"); });
      visit.user.DoubleClick("A01_A0102_v");
      EXPECT_EQ(Item("A01_A0102"), "2|女性");
    });
    if (!picker) picker = &CodePicker();
    EXPECT_EQ(&CodePicker(), picker);
  }
}

}  // namespace
}  // namespace dossierkit::tests
