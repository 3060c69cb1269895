// Single sets and sets of many records, the sort order, and what counts as present.
#include <filesystem>

#include "pages/page_design.h"
#include "tests/shell/shell_test.h"
#include "tests/support/photo_folder.h"

namespace dossierkit::tests {
namespace {

using SetKinds = ShellTest;

TEST_F(SetKinds, ThePropertyInTheTableOfSetsDecides) {
  visit.Open([&] {
    EXPECT_EQ(During([] { EXPECT_TRUE(IsMultSet("A04")); }),
              (Statements{" select Property from s_infotable  where TblName ='A04'"}));
    EXPECT_FALSE(IsMultSet("A01"));
    EXPECT_FALSE(IsMultSet("A12"));
    EXPECT_TRUE(IsMultSet("a21"));
  });
}

TEST_F(SetKinds, ASetWithoutARowIsSingle) {
  visit.Open([&] { EXPECT_FALSE(IsMultSet("A99")); });
}

TEST_F(SetKinds, OfSeveralRowsTheFirstDecides) {
  Script("insert into s_infotable values ('A04','again',50,null,null,1)");
  visit.Open([&] { EXPECT_TRUE(IsMultSet("A04")); });
}

TEST_F(SetKinds, RequiredANumberIsNegatedBitByBit) {
  visit.Open([&] {
    Script(
        "alter table s_infotable rename to old_sets;"
        "create table s_infotable (tblname text collate nocase, Property integer);"
        "insert into s_infotable values ('N1',-1),('N2',0),('N3',1),('N4',2)");
    EXPECT_FALSE(IsMultSet("N1"));
    EXPECT_TRUE(IsMultSet("N2"));
    EXPECT_TRUE(IsMultSet("N3"));
    EXPECT_TRUE(IsMultSet("N4"));
  });
}

TEST_F(SetKinds, ANullIsAFailure) {
  visit.Open([&] {
    Script(
        "alter table s_infotable rename to old_sets;"
        "create table s_infotable (tblname text collate nocase, Property boolean);"
        "insert into s_infotable values ('N1',null)");
    EXPECT_EQ(NumberOfFailure([] { IsMultSet("N1"); }), environment::kInvalidUseOfNull);
  });
}

TEST_F(SetKinds, WithoutASortFieldTheRecordNumberSorts) {
  Script(
      "update s_infotable set orderfield = null where tblname = 'A04';"
      "update s_infotable set orderfield = '' where tblname = 'A05';"
      "update s_infotable set orderfield = 'A1201' where tblname = 'A12'");
  visit.Open([&] {
    visit.GoTo("A04");
    EXPECT_EQ(visit.OnShow().WhInfo().FldOrder, "A0499");
    visit.GoTo("A05");
    EXPECT_EQ(visit.OnShow().WhInfo().FldOrder, "A0599");
    visit.GoTo("A12");
    EXPECT_EQ(visit.OnShow().WhInfo().FldOrder, "A1201");
    visit.GoTo("A13");
    EXPECT_EQ(visit.OnShow().WhInfo().FldOrder, "");
  });
}

TEST_F(SetKinds, OnlyRowsNumberedAboveZeroCountAsPresent) {
  Script("update A04 set A0499 = 0 where A00 = '" + kPerson + "'");
  visit.Open([&] {
    visit.GoTo("A04");
    EXPECT_EQ(State(), "当前操作：增加 on off off");
    EXPECT_EQ(visit.OnShow().WhInfo().id, 1);
  });
}

TEST_F(SetKinds, RequiredRowsNumberedZeroFillTheLimitAndLeaveThePageClosed) {
  Script("update A04 set A0499 = 0 where A00 = '" + kPerson +
         "';"
         "update s_infotable set maxnumber = 4 where tblname = 'A04'");
  visit.Open([&] {
    visit.GoTo("A04");
    EXPECT_EQ(State(), " off on on");
    visit.GoTo("A01");
    EXPECT_EQ(State(), "当前操作：修改 on on on");
  });
  EXPECT_EQ(Shown(), (Messages{{"此信息集最多只能录入4条记录。", kOk, kWindow}}));
}

TEST_F(SetKinds, OnlyTheBasicSetAndSetsOfManyRecordsMayAddAndDelete) {
  visit.Open([&] {
    for (const char* set :
         {"A01", "A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10", "A11", "A15", "A21"}) {
      visit.GoTo(set);
      EXPECT_EQ(visit.Enabled("Add"), true) << set;
      EXPECT_EQ(visit.Enabled("Delete"), true) << set;
    }
    for (const char* set : {"A12", "A13", "A14", "B01"}) {
      visit.GoTo(set);
      EXPECT_EQ(visit.Enabled("Add"), false) << set;
      EXPECT_EQ(visit.Enabled("Delete"), false) << set;
    }
  });
}

TEST_F(SetKinds, RequiredInAnyOtherModeTheFieldsStayWithoutMetadata) {
  visit.Open([&] {
    visit.Window().DealType = 1;
    const auto statements = During([&] { visit.GoTo("A04"); });
    Statements expected = kOpenA04;
    expected.erase(expected.begin() + 2, expected.begin() + 4);  // the metadata and the first record
    EXPECT_EQ(statements, expected);
    EXPECT_EQ(visit.OnShow().FieldItems()->Count(), 0);
    EXPECT_EQ(visit.Text("A04_A0403").Text(), "江淮省作物学会");
    visit.Window().DealType = 3;
  });
}

TEST_F(SetKinds, RequiredTheBasicSetIsKnownByItsCapitalAlone) {
  PhotoFolder folder;
  PhotoFolder::Write(folder.Photo(kPerson), Jpeg("photo"));
  visit.component.PhotoPath = folder.Photos().string();
  visit.desktop.RegisterClass("DossierKit.ctrlUsera01", [](const std::string& name) {
    return std::make_shared<ctrlUser>(name, *FindPageDesign("A01"));
  });
  Script("drop trigger tr_A01_delete; update s_infotable set tblname = 'a01' where tblname = 'A01'");
  visit.Open([&] {
    EXPECT_EQ(visit.OnShow().WhInfo().TabId, "a01");
    EXPECT_EQ(State(), "当前操作：修改 on off off");
    // It is replaced as the other sets are.
    const auto saved = During([&] { visit.user.ClickToolbar("Save"); });
    ASSERT_GE(saved.size(), 2U);
    EXPECT_EQ(saved[0], "delete from a01 where A00='" + kPerson + "' ");
    EXPECT_TRUE(saved[1].starts_with("insert into a01( A00 ,A0101,")) << saved[1];
    auto& bar = visit.Window().TbMain();
    visit.Window().TbMain_ButtonClick(bar.Button("Add"));
    EXPECT_EQ(visit.Window().personID, kPerson) << "no new person begins";
    Answer(toolkit::kAnswerYes);
    visit.Window().TbMain_ButtonClick(bar.Button("Delete"));
  });
  EXPECT_TRUE(std::filesystem::exists(folder.Photo(kPerson)));
  EXPECT_EQ(Shown(), (Messages{{"是否删除此条记录？", kYesOrNo, kWindow}, {kBasicFirst, kOk, kWindow}}));
}

// --- the page on show ------------------------------------------------------------------------------

TEST_F(SetKinds, OnePageAtATime) {
  visit.Open([&] {
    for (const char* set : {"A02", "A12", "A12", "A01"}) {
      visit.GoTo(set);
      int pages = 0;
      for (const auto& control : visit.Window().Controls())
        pages += control->Name().starts_with("ctrlUser") ? 1 : 0;
      EXPECT_EQ(pages, 1);
      EXPECT_EQ(visit.Window().GetUserCtrl()->Name(), std::string("ctrlUser") + set);
    }
  });
}

TEST_F(SetKinds, ThePageOnShowIsFoundByItsCapitalsAndDroppedWithoutRegardToThem) {
  visit.Open([&] {
    auto& window = visit.Window();
    RemoveUCtrl(window, "CTRLUSER");
    EXPECT_EQ(window.GetUserCtrl(), nullptr);
    window.Controls().Make<toolkit::Label>("CtrlUserA01");
    EXPECT_EQ(window.GetUserCtrl(), nullptr);
    window.Controls().Make<toolkit::Label>("ctrlUser");
    const auto page = window.Controls().Add("DossierKit.ctrlUserA12", "ctrlUserA12");
    EXPECT_EQ(window.GetUserCtrl(), page) << "the name must be longer than the prefix";
    const auto count = window.Controls().Count();
    RemoveUCtrl(window, "ctrlUser");
    EXPECT_EQ(window.Controls().Count(), count - 3);
    EXPECT_FALSE(IsUCtrlChanged(window, "ctrlUser"));
  });
}

TEST_F(SetKinds, ThePagesMarkOfEditsIsFound) {
  visit.Open([&] {
    EXPECT_FALSE(IsUCtrlChanged(visit.Window(), "ctrlUser"));
    visit.OnShow().WhInfo().IsChange = true;
    EXPECT_TRUE(IsUCtrlChanged(visit.Window(), "ctrlUser"));
    EXPECT_TRUE(IsUCtrlChanged(visit.Window(), "CtRlUsEr"));
    EXPECT_FALSE(IsUCtrlChanged(visit.Window(), "frmOther"));
    visit.OnShow().WhInfo().IsChange = false;
  });
}

TEST_F(SetKinds, OfTwoPagesTheLastHasTheMarkOfEditsAndTheFirstIsOnShow) {
  visit.Open([&] {
    auto& window = visit.Window();
    const auto first = window.GetUserCtrl();
    const auto second = std::dynamic_pointer_cast<DossierPage>(
        window.Controls().Add("DossierKit.ctrlUserA12", "ctrlUserA12"));
    first->WhInfo().IsChange = true;
    EXPECT_FALSE(IsUCtrlChanged(window, "ctrlUser"));
    first->WhInfo().IsChange = false;
    second->WhInfo().IsChange = true;
    EXPECT_TRUE(IsUCtrlChanged(window, "ctrlUser"));
    EXPECT_EQ(window.GetUserCtrl(), first);
  });
}

// --- the label of the operation ----------------------------------------------------------------------

TEST_F(SetKinds, TheOperationIsShownOnThePage) {
  visit.Open([&] {
    auto& window = visit.Window();
    window.SetLabOpt(visit.OnShow(), "Add");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
    window.SetLabOpt(visit.OnShow(), "other");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：增加");
    window.SetLabOpt(visit.OnShow(), "Mod");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
    window.SetLabOpt(visit.OnShow(), "add");
    EXPECT_EQ(visit.Caption("labOpt"), "当前操作：修改");
  });
}

TEST_F(SetKinds, APageWithoutTheLabelIsLeftAlone) {
  visit.Open([&] {
    auto& controls = visit.OnShow().Controls();
    for (std::size_t i = controls.Count(); i-- > 0;) {
      if (controls.At(i)->Name() == "labOpt") controls.Remove(i);
    }
    visit.Window().SetLabOpt(visit.OnShow(), "Add");
    controls.Make<toolkit::Label>("LABOPT");
    const auto second = controls.Make<toolkit::Label>("LabOpt");
    visit.Window().SetLabOpt(visit.OnShow(), "Add");
    EXPECT_EQ(visit.Caption("LABOPT"), "当前操作：增加");
    EXPECT_EQ(second->Caption(), "") << "the first label alone";
  });
}

TEST_F(SetKinds, RequiredSetStateDoesNothing) {
  visit.Open([&] {
    const std::string before = State();
    EXPECT_TRUE(During([&] { visit.Window().SetState(0, "Add"); }).empty());
    EXPECT_EQ(State(), before);
    EXPECT_EQ(visit.Window().DealType, 3);
  });
}

}  // namespace
}  // namespace dossierkit::tests
