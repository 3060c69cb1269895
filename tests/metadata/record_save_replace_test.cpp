// Saving a record of any other set: the old row goes, the new one comes.
#include "tests/metadata/save_test.h"

namespace dossierkit::tests {
namespace {

class ReplaceSave : public SaveTest {
 protected:
  static std::shared_ptr<ScratchPage> Visits(std::int16_t number) {
    return ScratchPage::Multi("A05", kPerson, number, "A0501");
  }
  std::string CountOfVisits(int number) {
    return One("select count(*) from A05 where A00='" + kPerson + "' and A0599 = " + std::to_string(number));
  }
};

TEST_F(ReplaceSave, ASetOfOneRecordRunsTheseStatements) {
  InWindow([&] {
    auto page = ScratchPage::Single("A13", kPerson);
    page->AddText(FieldOf("A1301", "int"), "8.5");
    page->AddText(FieldOf("A1302", "int"), "");
    page->AddText(FieldOf("A1305", "Ntext"), "概述");
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(
        visit.statements,
        (Statements{
            "delete from A13 where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' ",
            "insert into A13( A00 ,A1301,A1305) values('47EAA099-2CB6-416D-A6DC-283CF0480FF9','8.5','概述')",
        }));
  });
  EXPECT_TRUE(visit.Messages().empty());
  EXPECT_EQ(Rows("select A1302,A1305 from A13 where A00='" + kPerson + "'"), Lines{"NULL|概述"});
}

TEST_F(ReplaceSave, ASetOfManyRecordsRunsTheseStatements) {
  InWindow([&] {
    auto page = Visits(2);
    page->AddMasked(FieldOf("A0501", "datetime"), "####年##月", "2004年03月");
    page->AddText(FieldOf("A0503", "Varchar"), "北海道农业试验场");
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(visit.statements,
              (Statements{
                  "delete from A05 where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'  and A0599 = 2",
                  "insert into A05( A00 ,A0599,A0501,A0503) "
                  "values('47EAA099-2CB6-416D-A6DC-283CF0480FF9','2','2004年03月','北海道农业试验场')",
                  "update A05 set A0599 = A0599 +200 where a00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'",
                  "select * from A05 where A00 ='47EAA099-2CB6-416D-A6DC-283CF0480FF9' order by A0501",
                  "update A05 set A0599 = 1 where a00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' and A0599 = 201",
                  "update A05 set A0599 = 2 where a00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' and A0599 = 202",
                  "update A05 set A0599 = 3 where a00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' and A0599 = 203",
              }));
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST_F(ReplaceSave, CheckBoxesAddTheirStateWhateverTheirType) {
  visit.database->RunScript(
      "create table Z01 (A00 varchar(36) collate nocase, Z0101 boolean, Z0102 integer, Z0103 boolean)");
  InWindow([&] {
    auto page = ScratchPage::Single("Z01", "P1");
    page->AddCheck(FieldOf("Z0101", "bit"), 1);
    page->AddCheck(FieldOf("Z0102", "money"), 1);
    page->AddCheck(RequiredFieldOf("Z0103", "varchar"), 0);
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(visit.statements.at(1), "insert into Z01( A00 ,Z0101,Z0102,Z0103) values('P1','1','1','0')");
  });
  EXPECT_EQ(Rows("select Z0101,Z0102,Z0103 from Z01"), Lines{"True|1|False"});
}

TEST_F(ReplaceSave, TheThirdStateOfACheckBoxIsWrittenAsItsNumber) {
  visit.database->RunScript("create table Z01 (A00 varchar(36) collate nocase, Z0101 integer)");
  InWindow([&] {
    auto page = ScratchPage::Single("Z01", "P1");
    page->AddCheck(FieldOf("Z0101", "int"), 2);
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(visit.statements.at(1), "insert into Z01( A00 ,Z0101) values('P1','2')");
  });
  EXPECT_EQ(One("select Z0101 from Z01"), "2");
}

TEST_F(ReplaceSave, HiddenAndDisabledControlsAreCheckedAndWrittenLikeTheOthers) {
  InWindow([&] {
    auto page = Visits(2);
    page->AddText(FieldOf("A0503", "Varchar"), "北海道").SetVisible(false);
    page->AddText(FieldOf("A0504", "Varchar"), "筑波").SetEnabled(false);
    auto& content = page->AddText(RequiredFieldOf("A0505", "Ntext", "有关内容"), "");
    content.SetVisible(false);
    auto& role = page->AddText(RequiredFieldOf("A0506", "Varchar", "身份"), "");
    role.SetEnabled(false);
    EXPECT_FALSE(Save(page));
    ExpectMessage("有关内容 为必填项\r\n身份  为必填项", "错误信息");
    content.SetText("研究");
    role.SetText("访问学者");
    EXPECT_TRUE(Save(page));
  });
  EXPECT_EQ(Rows("select A0504,A0505,A0506 from A05 where A0503='北海道' and A00='" + kPerson + "'"),
            Lines{"筑波|研究|访问学者"});
}

TEST_F(ReplaceSave, CheckBoxesAreUpdatedByTheirState) {
  visit.database->RunScript("alter table A01 add column A0150 boolean");
  InWindow([&] {
    auto page = ScratchPage::Single("A01", kPerson);
    page->AddCheck(FieldOf("A0150", "bit"), 1);
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(visit.statements.at(0),
              "update A01 set A0150 = '1' where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'");
  });
}

TEST_F(ReplaceSave, APageOfEmptyOptionalFieldsPasses) {
  InWindow([&] {
    auto page = Visits(4);
    page->AddMasked(FieldOf("A0501", "datetime"), "####年##月");
    page->AddText(FieldOf("A0503", "Varchar"), "");
    page->AddText(FieldOf("A0505", "Ntext"), "");
    EXPECT_TRUE(Save(page));
  });
  EXPECT_TRUE(visit.Messages().empty());
  EXPECT_EQ(One("select count(*) from A05 where A00='" + kPerson + "'"), "4");
}

TEST_F(ReplaceSave, APageWithoutFieldsStillWritesTheRecord) {
  InWindow([&] {
    EXPECT_TRUE(Save(ScratchPage::Single("A12", kPerson)));
    EXPECT_EQ(visit.statements.back(),
              "insert into A12( A00 ) values('47EAA099-2CB6-416D-A6DC-283CF0480FF9')");
  });
}

TEST_F(ReplaceSave, ANewRecordDeletesNothing) {
  InWindow([&] {
    auto page = Visits(4);
    page->AddText(FieldOf("A0503", "Varchar"), "x");
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(visit.statements.at(0),
              "delete from A05 where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'  and A0599 = 4");
  });
  EXPECT_EQ(One("select count(*) from A05 where A00='" + kPerson + "'"), "4");
}

TEST_F(ReplaceSave, AColumnThatNoControlShowsDoesNotSurvive) {
  InWindow([&] {
    auto page = Visits(2);
    page->AddText(FieldOf("A0503", "Varchar"), "x");
    EXPECT_TRUE(Save(page));
  });
  EXPECT_EQ(Rows("select A0501,A0504 from A05 where A0503='x' and A00='" + kPerson + "'"),
            Lines{"NULL|NULL"});
}

TEST_F(ReplaceSave, RequiredOldRowIsDeletedBeforeTheCheck) {
  InWindow([&] {
    auto page = Visits(2);
    auto& place = page->AddText(RequiredFieldOf("A0503", "Varchar", "访问机构名称"), "");
    EXPECT_FALSE(Save(page));
    EXPECT_EQ(visit.statements,
              Statements{"delete from A05 where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'  and A0599 = 2"});
    EXPECT_EQ(CountOfVisits(2), "0");
    place.SetText("补");
    EXPECT_TRUE(Save(page));
  });
  ExpectMessage("访问机构名称 为必填项", "错误信息");
  EXPECT_EQ(One("select count(*) from A05 where A00='" + kPerson + "'"), "3");
  EXPECT_EQ(One("select count(*) from A05 where A0503='补'"), "1");
}

// A page whose fields are lost at once, or change while the old row is deleted.
class FetchedPage : public ScratchPage {
 public:
  using ScratchPage::ScratchPage;
  const std::shared_ptr<cFieldItems>& FieldItems() const override {
    ++fetched;
    if (fails) throw environment::Failure(91, "对象变量或 With 块变量未设置");
    return ScratchPage::FieldItems();
  }
  mutable int fetched = 0;
  bool fails = false;
};

TEST_F(ReplaceSave, RequiredTheFieldsAreFetchedBeforeTheOldRowIsDeleted) {
  InWindow([&] {
    const auto page = std::make_shared<FetchedPage>("A13", kPerson);
    page->AddText(FieldOf("A1301", "int"), "1");
    page->fails = true;
    EXPECT_FALSE(Save(page));
    EXPECT_EQ(visit.statements, Statements{});
    EXPECT_EQ(page->fetched, 1);
  });
  ExpectMessage("对象变量或 With 块变量未设置", "信息保存");
}

TEST_F(ReplaceSave, TheFieldsOfASaveAreThoseThatItFetched) {
  InWindow([&] {
    const auto page = std::make_shared<FetchedPage>("A13", kPerson);
    page->AddText(FieldOf("A1301", "int"), "8");
    visit.failing->FailAt(1, 0, "", [&](const std::string& statement) {
      if (statement.starts_with("delete")) page->SetFieldItems(std::make_shared<cFieldItems>());
      return false;
    });
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(page->fetched, 1);
  });
  EXPECT_EQ(One("select A1301 from A13 where A00='" + kPerson + "'"), "8");
}

TEST_F(ReplaceSave, EveryControlIsCheckedAndTheLinesStandInTheirOrder) {
  InWindow([&] {
    auto page = Visits(2);
    page->AddMasked(FieldOf("A0501", "datetime", "起始年月"), "####年##月", "2004年13月");
    page->AddText(FieldOf("A0504", "Varchar", "地点"), "x");
    page->AddText(FieldOf("A0509", "int", "人数"), "两");
    page->AddText(RequiredFieldOf("A0503", "Varchar", "访问机构名称"), "");
    EXPECT_FALSE(Save(page));
  });
  ExpectMessage(
      "起始年月 数据应该是日期型，例如1990年03月\r\n"
      "人数 数据应该输入数字\r\n"
      "访问机构名称  为必填项",
      "错误信息");
}

TEST_F(ReplaceSave, RequiredANumberBeyond16BitsEndsTheWalkAtOnce) {
  InWindow([&] {
    auto page = Visits(2);
    page->AddText(RequiredFieldOf("A0503", "Varchar", "访问机构名称"), "");
    page->AddText(FieldOf("A0509", "int", "人数"), "40000");
    // Its field is missing: it would fail in another way, if it were looked at.
    page->Controls().Make<toolkit::TextBox>("A05_A0598_v");
    EXPECT_FALSE(Save(page));
    EXPECT_EQ(visit.statements.size(), 1U);
  });
  ExpectMessage("溢出", "信息保存");
  EXPECT_EQ(CountOfVisits(2), "0");
}

TEST_F(ReplaceSave, AValueControlWithoutAFieldEndsSave) {
  InWindow([&] {
    auto page = Visits(2);
    page->AddText(FieldOf("A0503", "Varchar"), "x");
    page->Controls().Make<toolkit::TextBox>("A05_A0598_v");
    EXPECT_FALSE(Save(page));
    EXPECT_EQ(visit.statements.size(), 1U);
  });
  ExpectMessage("无效的过程调用或参数", "信息保存");
  EXPECT_EQ(CountOfVisits(2), "0");
}

TEST_F(ReplaceSave, TheFieldIsSoughtBeforeTheKindIsLookedAt) {
  InWindow([&] {
    auto page = ScratchPage::Single("A12", kPerson);
    page->Controls().Make<toolkit::Label>("A12_A1209_v");
    EXPECT_FALSE(Save(page));
  });
  ExpectMessage("无效的过程调用或参数", "信息保存");
}

TEST_F(ReplaceSave, ControlsOfOtherKindsAndNamesAreSkipped) {
  InWindow([&] {
    auto page = ScratchPage::Single("A12", "P1");
    page->AddField(RequiredFieldOf("A1201", "Ntext"));
    page->Controls().Make<toolkit::Label>("A12_A1201_v");
    for (const char* name : {"A12_A1201_c", "A12_A1201_V", "A12_A1201", "v", "DGItems"}) {
      page->Controls().Make<toolkit::TextBox>(name)->SetText("x");
    }
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(visit.statements.back(), "insert into A12( A00 ) values('P1')");
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST_F(ReplaceSave, AFieldIsFoundWithoutRegardToCase) {
  InWindow([&] {
    auto page = ScratchPage::Single("A12", "P1");
    page->AddField(FieldOf("A1201", "Ntext"));
    page->Controls().Make<toolkit::TextBox>("a12_a1201_v")->SetText("x");
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(visit.statements.back(), "insert into A12( A00 ,A1201) values('P1','x')");
  });
}

TEST_F(ReplaceSave, AnApostropheBreaksTheStatementAndTheOldRowIsGone) {
  InWindow([&] {
    auto page = Visits(2);
    page->AddText(FieldOf("A0503", "Varchar"), "O'Neil");
    EXPECT_FALSE(Save(page));
    EXPECT_EQ(
        visit.statements.back(),
        "insert into A05( A00 ,A0599,A0503) values('47EAA099-2CB6-416D-A6DC-283CF0480FF9','2','O'Neil')");
  });
  ExpectTrapped();
  EXPECT_EQ(CountOfVisits(2), "0");
  EXPECT_EQ(CountOfVisits(3), "1");
}

TEST_F(ReplaceSave, AValueThatItsColumnRefusesLosesTheOldRow) {
  InWindow([&] {
    auto page = Visits(2);
    page->AddText(FieldOf("A0501", "Varchar"), "no date");
    EXPECT_FALSE(Save(page));
  });
  ExpectMessage("标准表达式中数据类型不匹配。", "信息保存");
  EXPECT_EQ(CountOfVisits(2), "0");
}

TEST_F(ReplaceSave, AFailingDeleteIsTrappedBeforeAnyCheck) {
  InWindow([&] {
    visit.failing->FailAt(1);
    auto page = Visits(2);
    page->AddText(RequiredFieldOf("A0503", "Varchar", "访问机构名称"), "");
    EXPECT_FALSE(Save(page));
  });
  ExpectMessage("磁盘或网络错误。", "信息保存");
  EXPECT_EQ(CountOfVisits(2), "1");
}

TEST_F(ReplaceSave, RequiredAnEndDateIsNotComparedWithItsStart) {
  InWindow([&] {
    auto page = ScratchPage::Multi("A03", kPerson, 6, "A0301");
    page->AddMasked(FieldOf("A0301", "datetime", "起始年月"), "####年##月", "2020年01月");
    page->AddMasked(FieldOf("A0301A", "datetime", "截止年月"), "####年##月", "2010年01月");
    EXPECT_TRUE(Save(page));
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST_F(ReplaceSave, SavingChangesNothingOnThePage) {
  InWindow([&] {
    auto page = Visits(2);
    auto& box = page->AddText(RequiredFieldOf("A0503", "Varchar"), "");
    page->WhInfo().IsChange = true;
    const std::string focus = visit.Focus();
    EXPECT_FALSE(Save(page));
    box.SetText("x");
    EXPECT_TRUE(Save(page));
    EXPECT_TRUE(page->WhInfo().IsChange);
    EXPECT_EQ(page->WhInfo().id, 2);
    EXPECT_EQ(box.Text(), "x");
    EXPECT_EQ(visit.Focus(), focus);
    EXPECT_EQ(visit.Window().DealType, 3);
    EXPECT_FALSE(visit.Window().IsSaved);
  });
}

}  // namespace
}  // namespace dossierkit::tests
