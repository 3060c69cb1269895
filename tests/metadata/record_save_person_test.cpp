// Saving the basic data of a person: the insert of a new one, the update of a stored one.
#include "tests/metadata/save_test.h"

namespace dossierkit::tests {
namespace {

constexpr const char* kIdNumber = "320481196803120316";

class NewPersonSave : public SaveTest {
 protected:
  // Saves the page as that of a new person of type 2.
  bool SaveNew(const std::shared_ptr<ScratchPage>& page) {
    visit.Window().DealType = 0;
    visit.Window().PersonType = 2;
    return Save(page);
  }

  // Fields of each kind: a text, a code, a date, an empty date, an empty masked text, the identity number.
  static std::shared_ptr<ScratchPage> FilledPage() {
    auto page = ScratchPage::Single("A01", "P-1");
    page->AddText(FieldOf("A0101", "Varchar", "姓名"), "张三");
    cFieldItem sex = FieldOf("A0102", "Varchar", "性别");
    sex.CodeTable = "GB2261";
    sex.Dmcod = "1";
    sex.Dmcpt = "男性";
    page->AddText(sex, "男性");
    page->AddMasked(FieldOf("A0104", "datetime", "出生日期"), "####年##月##日", "1968年03月12日");
    page->AddMasked(FieldOf("A0108", "datetime", "毕业时间"), "####年##月");
    page->AddMasked(FieldOf("A0117", "Varchar", "邮政编码"), "######");
    page->AddText(FieldOf("A0131", "Varchar", "身份证号"), kIdNumber);
    return page;
  }
};

TEST_F(NewPersonSave, RunsTheseStatements) {
  InWindow([&] {
    visit.database->RunScript("update A01 set A0199 = 1; update A01 set A0199 = 41 where A0101 = '陆怀谷'");
    EXPECT_TRUE(SaveNew(FilledPage()));
    EXPECT_EQ(
        visit.statements,
        (Statements{
            "select iif(max(A0199) is null,0,max(A0199)) from a01  ",
            "insert into A01( A00 ,A0136,A0199,A0101,A0102,A0104,A0117,A0131) "
            "values('P-1',2 ,42,'张三','1','1968年03月12日','','320481196803120316')",
            "select iif(a0101 is null,'',a0101) from a01 where a00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'",
        }));
  });
  EXPECT_TRUE(visit.Messages().empty());
  EXPECT_EQ(Rows("select A0136,A0199,A0101,A0102,A0104,A0108,A0117,A0131 from A01 where A00='P-1'"),
            Lines{"2|42|张三|1|1968/3/12|NULL||320481196803120316"});
}

TEST_F(NewPersonSave, ShowsTheNameOfTheWindowsPerson) {
  InWindow([&] {
    visit.Window().personID = "P-1";
    EXPECT_TRUE(SaveNew(FilledPage()));
    EXPECT_EQ(visit.statements.back(), "select iif(a0101 is null,'',a0101) from a01 where a00='P-1'");
    EXPECT_EQ(visit.Caption("labPersonName"), "张三");
  });
}

TEST_F(NewPersonSave, ANameThatIsNotFoundFailsThoughThePersonIsWritten) {
  InWindow([&] {
    visit.Window().personID = "nobody";
    EXPECT_FALSE(SaveNew(FilledPage()));
  });
  ExpectTrapped();
  EXPECT_EQ(One("select count(*) from A01 where A00='P-1'"), "1");
}

TEST_F(NewPersonSave, AnEmptyNameIsShownAsNone) {
  InWindow([&] {
    visit.Window().personID = "P-1";
    auto page = ScratchPage::Single("A01", "P-1");
    EXPECT_TRUE(SaveNew(page));
    EXPECT_EQ(visit.Caption("labPersonName"), "");
  });
}

TEST_F(NewPersonSave, APageWithoutFieldsInsertsThePersonAlone) {
  InWindow([&] {
    visit.database->RunScript("update A01 set A0199 = 9");
    EXPECT_TRUE(SaveNew(ScratchPage::Single("A01", "P-1")));
    EXPECT_EQ(visit.statements.at(1), "insert into A01( A00 ,A0136,A0199) values('P-1',2 ,10)");
  });
}

TEST_F(NewPersonSave, TheFirstPersonOfAnEmptyTableIsNumberOne) {
  InWindow([&] {
    visit.database->RunScript("delete from A01");
    visit.Window().personID = "P-1";
    EXPECT_TRUE(SaveNew(FilledPage()));
  });
  EXPECT_EQ(Rows("select A00,A0199 from A01"), Lines{"P-1|1"});
}

TEST_F(NewPersonSave, NumbersThatAreAllNullCountAsNone) {
  InWindow([&] {
    visit.database->RunScript("update A01 set A0199 = null");
    EXPECT_TRUE(SaveNew(FilledPage()));
  });
  EXPECT_EQ(One("select A0199 from A01 where A00='P-1'"), "1");
}

TEST_F(NewPersonSave, TheLastNumberIs32767) {
  InWindow([&] {
    visit.database->RunScript("update A01 set A0199 = 32766");
    EXPECT_TRUE(SaveNew(FilledPage()));
  });
  EXPECT_EQ(One("select A0199 from A01 where A00='P-1'"), "32767");
}

TEST_F(NewPersonSave, RequiredBehindNumber32767NobodyIsStored) {
  InWindow([&] {
    visit.database->RunScript("update A01 set A0199 = 32767");
    EXPECT_FALSE(SaveNew(FilledPage()));
    EXPECT_EQ(visit.statements, Statements{"select iif(max(A0199) is null,0,max(A0199)) from a01  "});
  });
  ExpectMessage("溢出", "信息保存");
  EXPECT_EQ(One("select count(*) from A01 where A00='P-1'"), "0");
}

TEST_F(NewPersonSave, ABadFieldWritesNothing) {
  InWindow([&] {
    auto page = FilledPage();
    page->AddText(RequiredFieldOf("A0110", "Varchar", "从事专业"), "");
    EXPECT_FALSE(SaveNew(page));
    EXPECT_EQ(visit.statements, Statements{"select iif(max(A0199) is null,0,max(A0199)) from a01  "});
  });
  ExpectMessage("从事专业 为必填项", "错误信息");
}

TEST_F(NewPersonSave, AWrongBirthDateWritesNothing) {
  InWindow([&] {
    auto page = ScratchPage::Single("A01", "P-1");
    page->AddMasked(FieldOf("A0104", "datetime", "出生日期"), "####年##月##日", "1968年03月13日");
    page->AddText(FieldOf("A0131", "Varchar", "身份证号"), kIdNumber);
    EXPECT_FALSE(SaveNew(page));
  });
  ExpectMessage("身份证号中的出生日期与您实际填写的出生日期不对应，请确认。", "错误信息");
}

TEST_F(NewPersonSave, AWrongBirthDateIsToldBehindOtherErrors) {
  InWindow([&] {
    auto page = ScratchPage::Single("A01", "P-1");
    page->AddText(RequiredFieldOf("A0101", "Varchar", "姓名"), "");
    page->AddMasked(FieldOf("A0104", "datetime", "出生日期"), "####年##月##日", "1968年03月13日");
    page->AddText(FieldOf("A0131", "Varchar", "身份证号"), kIdNumber);
    EXPECT_FALSE(SaveNew(page));
  });
  ExpectMessage("姓名 为必填项\r\n身份证号中的出生日期与您实际填写的出生日期不对应，请确认。", "错误信息");
}

TEST_F(NewPersonSave, RequiredASetOfManyAsksForItsNumberByAColumnThatNoSetHas) {
  InWindow([&] {
    auto page = FilledPage();
    page->WhInfo().IsMult = true;
    EXPECT_FALSE(SaveNew(page));
    EXPECT_EQ(visit.statements, (Statements{
                                    "select iif(max(A0199) is null,0,max(A0199)) from a01  ",
                                    "select max(A0199)+1 from A01 where personid = 'P-1'",
                                }));
  });
  ExpectTrapped();
  EXPECT_EQ(One("select count(*) from A01 where A00='P-1'"), "0");
}

TEST_F(NewPersonSave, ThatColumnGivenTheNumberItFindsIsWrittenLast) {
  visit.database->RunScript(
      "alter table A01 add column personid varchar(36); update A01 set personid = 'P-1', A0199 = 6");
  InWindow([&] {
    auto page = ScratchPage::Single("A01", "P-1");
    page->AddText(FieldOf("A0101", "Varchar"), "x");
    page->WhInfo().IsMult = true;
    SaveNew(page);
    EXPECT_EQ(visit.statements.at(2),
              "insert into A01( A00 ,A0136,A0199,A0101,A0199) values('P-1',2 ,7,'x','7')");
  });
}

class StoredPersonSave : public SaveTest {
 protected:
  static std::shared_ptr<ScratchPage> Page() { return ScratchPage::Single("A01", kPerson); }
};

TEST_F(StoredPersonSave, RunsTheseStatements) {
  InWindow([&] {
    auto page = Page();
    page->AddText(FieldOf("A0101", "Varchar", "姓名"), "陆怀");
    page->AddMasked(FieldOf("A0104", "datetime", "出生日期"), "####年##月##日", "1968年03月12日");
    page->AddMasked(FieldOf("A0108", "datetime", "毕业时间"), "####年##月");
    page->AddMasked(FieldOf("A0117", "Varchar", "邮政编码"), "######");
    page->AddText(FieldOf("A0131", "Varchar", "身份证号"), kIdNumber);
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(
        visit.statements,
        (Statements{
            "update A01 set A0101 = '陆怀',A0104 = '1968年03月12日',A0108 = null,A0117 = '',"
            "A0131 = '320481196803120316' where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'",
            "select iif(a0101 is null,'',a0101) from a01 where a00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'",
        }));
    EXPECT_EQ(visit.Caption("labPersonName"), "陆怀");
  });
  EXPECT_TRUE(visit.Messages().empty());
}

TEST_F(StoredPersonSave, ASetOfManyIsUpdatedByItsNumberToo) {
  InWindow([&] {
    auto page = ScratchPage::Multi("A01", kPerson, 7, "");
    page->AddText(FieldOf("A0101", "Varchar"), "x");
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(visit.statements.at(0),
              "update A01 set A0101 = 'x' where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' and A0199 = 7");
  });
}

TEST_F(StoredPersonSave, APageWithoutAnythingToWriteRunsNoStatement) {
  InWindow([&] {
    auto page = Page();
    page->AddText(FieldOf("A0101", "money"), "x");
    page->AddMasked(FieldOf("A0102", "int"), "##");
    visit.Window().labPersonName().SetCaption("as before");
    EXPECT_TRUE(Save(page));
    EXPECT_TRUE(visit.statements.empty());
    EXPECT_EQ(visit.Caption("labPersonName"), "as before");
  });
}

TEST_F(StoredPersonSave, IdentifierTypeAndRunningNumberStay) {
  const std::string query = "select A00,A0136,A0199,A0115 from A01 where A00='" + kPerson + "'";
  const Lines before = Rows(query);
  InWindow([&] {
    auto page = Page();
    page->AddText(FieldOf("A0101", "Varchar"), "x");
    visit.Window().PersonType = 3;
    EXPECT_TRUE(Save(page));
  });
  EXPECT_EQ(Rows(query), before);
  EXPECT_EQ(One("select A0101 from A01 where A00='" + kPerson + "'"), "x");
}

TEST_F(StoredPersonSave, RequiredAClearedNumberSurvivesWhileDateAndTextAreCleared) {
  visit.database->RunScript("alter table A01 add column A0150 integer; update A01 set A0150 = 12");
  InWindow([&] {
    auto page = Page();
    page->AddText(FieldOf("A0150", "int"), "");
    page->AddText(FieldOf("A0116", "datetime"), "");
    page->AddMasked(FieldOf("A0108", "datetime"), "####年##月");
    page->AddText(FieldOf("A0115", "Varchar"), "");
    page->AddMasked(FieldOf("A0117", "Varchar"), "######");
    EXPECT_TRUE(Save(page));
  });
  EXPECT_EQ(Rows("select A0150,A0116,A0108,A0115,A0117 from A01 where A00='" + kPerson + "'"),
            Lines{"12|NULL|NULL||"});
}

TEST_F(StoredPersonSave, ABadFieldWritesNothing) {
  InWindow([&] {
    auto page = Page();
    page->AddText(FieldOf("A0101", "Varchar", "姓名"), "x");
    page->AddText(FieldOf("A0131", "Varchar", "身份证号"), "1");
    EXPECT_FALSE(Save(page));
    EXPECT_TRUE(visit.statements.empty());
  });
  ExpectMessage("身份证号码必须为15或18位", "错误信息");
}

TEST_F(StoredPersonSave, TheRowIsThatOfThePageAndTheNameThatOfTheWindow) {
  InWindow([&] {
    visit.Window().personID = "56670B14-1509-4B0A-8BF1-3331CA118783";
    auto page = Page();
    page->AddText(FieldOf("A0101", "Varchar"), "x");
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(
        visit.statements,
        (Statements{
            "update A01 set A0101 = 'x' where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'",
            "select iif(a0101 is null,'',a0101) from a01 where a00='56670B14-1509-4B0A-8BF1-3331CA118783'",
        }));
    EXPECT_EQ(visit.Caption("labPersonName"), "沈若璞");
  });
}

TEST_F(StoredPersonSave, RequiredAnApostropheCanChangeAnotherColumn) {
  EXPECT_EQ(One("select A0136 from A01 where A00='" + kPerson + "'"), "1");
  InWindow([&] {
    auto page = Page();
    page->AddText(FieldOf("A0110", "Varchar"), "x',A0136='9");
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(visit.statements.at(0),
              "update A01 set A0110 = 'x',A0136='9' where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'");
  });
  EXPECT_TRUE(visit.Messages().empty());
  EXPECT_EQ(Rows("select A0110,A0136 from A01 where A00='" + kPerson + "'"), Lines{"x|9"});
}

TEST_F(StoredPersonSave, AWrongBirthDateIsToldBehindOtherErrors) {
  InWindow([&] {
    auto page = Page();
    page->AddText(RequiredFieldOf("A0101", "Varchar", "姓名"), "");
    page->AddMasked(FieldOf("A0104", "datetime", "出生日期"), "####年##月##日", "1968年03月13日");
    page->AddText(FieldOf("A0131", "Varchar", "身份证号"), kIdNumber);
    EXPECT_FALSE(Save(page));
  });
  ExpectMessage("姓名 为必填项\r\n身份证号中的出生日期与您实际填写的出生日期不对应，请确认。", "错误信息");
}

TEST_F(StoredPersonSave, AnApostropheBreaksTheStatementAndTheRowStays) {
  InWindow([&] {
    auto page = Page();
    page->AddText(FieldOf("A0101", "Varchar"), "O'Neil");
    EXPECT_FALSE(Save(page));
    EXPECT_EQ(visit.statements,
              Statements{"update A01 set A0101 = 'O'Neil' where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9'"});
  });
  ExpectTrapped();
  EXPECT_EQ(One("select A0101 from A01 where A00='" + kPerson + "'"), "陆怀谷");
}

TEST_F(StoredPersonSave, AFailingNameLeavesThePersonWritten) {
  InWindow([&] {
    visit.failing->FailAt(2);
    auto page = Page();
    page->AddText(FieldOf("A0101", "Varchar"), "x");
    EXPECT_FALSE(Save(page));
  });
  ExpectMessage("磁盘或网络错误。", "信息保存");
  EXPECT_EQ(One("select A0101 from A01 where A00='" + kPerson + "'"), "x");
}

TEST_F(StoredPersonSave, AnotherWorkingModeReplacesTheRow) {
  InWindow([&] {
    visit.Window().DealType = 1;
    auto page = Page();
    page->AddText(FieldOf("A0101", "Varchar"), "x");
    EXPECT_TRUE(Save(page));
    EXPECT_EQ(visit.statements,
              (Statements{
                  "delete from A01 where A00='47EAA099-2CB6-416D-A6DC-283CF0480FF9' ",
                  "insert into A01( A00 ,A0101) values('47EAA099-2CB6-416D-A6DC-283CF0480FF9','x')",
              }));
  });
}

TEST_F(StoredPersonSave, AnotherWorkingModeKnowsNoRuleOfTheIdNumber) {
  InWindow([&] {
    visit.Window().DealType = 1;
    auto page = Page();
    page->AddMasked(FieldOf("A0104", "datetime", "出生日期"), "####年##月##日", "1968年03月13日");
    page->AddText(FieldOf("A0131", "Varchar", "身份证号"), "1");
    EXPECT_TRUE(Save(page));
  });
  EXPECT_TRUE(visit.Messages().empty());
  EXPECT_EQ(One("select A0131 from A01 where A00='" + kPerson + "'"), "1");
}

}  // namespace
}  // namespace dossierkit::tests
