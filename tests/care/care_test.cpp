// The care for a host's users, on the sample database and behind real visits.
#include "host/care/care.h"

#include <gtest/gtest.h>

#include "platform/environment/failure.h"
#include "tests/support/failing_connection.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using Lines = std::vector<std::string>;

class Care : public testing::Test {
 protected:
  void Script(const std::string& sql) { visit.database->RunScript(sql); }
  Lines Read(const std::string& query) { return Rows(*visit.database, query); }
  // Every row of every table, to see that nothing else changed.
  std::string Everything() {
    std::string all;
    for (const std::string& table :
         Column(*visit.database, "select tblname from s_infotable order by tblname")) {
      for (const std::string& row : Rows(*visit.database, "select * from " + table + " order by A00")) {
        all += table + ": " + row + "\n";
      }
    }
    return all;
  }
  int Renumber(const std::string& person = kPerson) { return care::RenumberRecords(*visit.database, person); }
  Lines WorkHistory() {
    return Read("select A0399,A0301,A0301A,A0302,A0303,A0304 from A03 where A00='" + kPerson +
                "' order by A0399");
  }

  Lines Numbers() { return Read("select A0399 from A03 where A00='" + kPerson + "' order by A0399"); }

  Visit visit;
};

// Types the fields without which a person is not stored.
void EnterRequired(Visit& visit, const std::string& name) {
  visit.Text("A01_A0101").SetText(name);
  visit.Masked("A01_A0104").SetText("1980年05月06日");
  visit.Text("A01_A0131").SetText("110101198005060011");
  for (const char* field : {"A01_A0110", "A01_A0115"}) visit.Text(field).SetText("某");
  visit.EnterCode("A01_A0102", "1");
  visit.EnterCode("A01_A0103", "01");
  visit.EnterCode("A01_A0106", "11");
}

TEST_F(Care, RecordsInOrderAreNotTouched) {
  const std::string before = Everything();
  const auto traced = std::make_shared<ado::TracingConnection>(
      visit.database, [&](const ado::Trace& trace) { visit.statements.push_back(trace.statement); });
  EXPECT_EQ(care::RenumberRecords(*traced, kPerson), 0);
  EXPECT_EQ(Everything(), before);
  ASSERT_FALSE(visit.statements.empty());
  for (const std::string& statement : visit.statements) EXPECT_EQ(statement.substr(0, 7), "select ");
}

TEST_F(Care, GapsAreClosedInTheOrderOfTheList) {
  const Lines before = WorkHistory();
  ASSERT_EQ(before.size(), 5U);
  Script("update A03 set A0399=A0399*10 where A00='" + kPerson + "'");
  EXPECT_EQ(Renumber(), 1);
  EXPECT_EQ(WorkHistory(), before);
}

TEST_F(Care, EqualNumbersArePartedAndEveryColumnStays) {
  const Lines before = WorkHistory();
  Script("update A03 set A0399=4 where A00='" + kPerson + "'");
  EXPECT_EQ(Renumber(), 1);
  EXPECT_EQ(WorkHistory(), before);
}

TEST_F(Care, MissingAndNegativeNumbersAreGivenToo) {
  const Lines before = WorkHistory();
  Script("update A03 set A0399=null where A00='" + kPerson + "' and A0399=1");
  Script("update A03 set A0399=-5 where A00='" + kPerson + "' and A0399=3");
  EXPECT_EQ(Renumber(), 1);
  EXPECT_EQ(WorkHistory(), before);
}

TEST_F(Care, TheOrderIsThatOfTheSetsList) {
  Script("update s_infotable set orderfield='A0302 desc' where tblname='A03'");
  EXPECT_EQ(Renumber(), 1);
  EXPECT_EQ(Read("select A0302 from A03 where A00='" + kPerson + "' order by A0399"),
            Read("select A0302 from A03 where A00='" + kPerson + "' order by A0302 desc"));
  EXPECT_EQ(Numbers(), (Lines{"1", "2", "3", "4", "5"}));
}

TEST_F(Care, WithoutAnOrderTheNumberIsIt) {
  Script("update s_infotable set orderfield=null where tblname='A03'");
  Script("update A03 set A0399=A0399+7 where A00='" + kPerson + "'");
  const Lines before = Read("select A0302 from A03 where A00='" + kPerson + "' order by A0399");
  EXPECT_EQ(Renumber(), 1);
  EXPECT_EQ(Read("select A0302 from A03 where A00='" + kPerson + "' order by A0399"), before);
  EXPECT_EQ(Numbers(), (Lines{"1", "2", "3", "4", "5"}));
}

TEST_F(Care, OtherPersonsAndSingleSetsAreLeftAlone) {
  Script("update A03 set A0399=9 where A00='" + kPerson + "' and A0399=3");
  Script("update A03 set A0399=A0399+1 where A00<>'" + kPerson + "'");
  const Lines others = Read("select * from A03 where A00<>'" + kPerson + "' order by A00,A0399");
  const Lines single = Read("select * from A01 order by A00");
  EXPECT_EQ(Renumber(), 1);
  EXPECT_EQ(Read("select * from A03 where A00<>'" + kPerson + "' order by A00,A0399"), others);
  EXPECT_EQ(Read("select * from A01 order by A00"), single);
}

TEST_F(Care, EverySetOfManyRecordsIsPutInOrder) {
  const std::string before = Everything();
  Script("update A02 set A0299=A0299+3 where A00='" + kPerson + "'");
  Script("update A03 set A0399=A0399+3 where A00='" + kPerson + "'");
  Script("update A04 set A0499=A0499+3 where A00='" + kPerson + "'");
  EXPECT_EQ(Renumber(), 3);
  EXPECT_EQ(Read("select A0299 from A02 where A00='" + kPerson + "' order by A0299").front(), "1");
  EXPECT_EQ(Read("select A0499 from A04 where A00='" + kPerson + "' order by A0499").front(), "1");
}

TEST_F(Care, ValuesOfEveryKindComeBackAsTheyWere) {
  Script(
      "create table A90 (A00 varchar(36) collate nocase, A9001 varchar(50), A9002 ntext, A9003 datetime,"
      " A9004 boolean, A9005 double, A9006 integer, A9007 varchar(9), A9099 integer);"
      "insert into s_infotable(tblname,Property) values('A90',0);"
      "insert into A90 values('P','O''Hara',' 多\r\n行 ','2024-02-29 13:07:09',1,0.1,-7,null,3);"
      "insert into A90 values('P','','；--','1990-03-01',0,1e20,2147483647,'',3);"
      "insert into A90 values('P','[a]','%_?*',null,null,-2.5e-9,null,'x',3);");
  const Lines before = Read("select A9001,A9002,A9003,A9004,A9006,A9007 from A90");
  // Compared by the engine itself, to the last bit.
  Script("create table Kept as select A9001,A9005 from A90");
  EXPECT_EQ(Renumber("P"), 1);
  EXPECT_EQ(Read("select A9001,A9002,A9003,A9004,A9006,A9007 from A90 order by A9099"), before);
  EXPECT_EQ(Read("select A9099 from A90 order by A9099"), (Lines{"1", "2", "3"}));
  EXPECT_EQ(
      Read("select Kept.A9001 from Kept, A90 where Kept.A9001=A90.A9001 and Kept.A9005=A90.A9005").size(),
      3U);
}

TEST_F(Care, AValueThatCannotBeWrittenAsItWasReadLeavesAllAsItWas) {
  Script("update A02 set A0299=A0299+3 where A00='" + kPerson + "'");
  Script("update A03 set A0399=7, A0302=cast(x'ff41' as text) where A00='" + kPerson + "' and A0399=2");
  const std::string bytes = visit.database->Bytes();
  EXPECT_THROW(Renumber(), environment::Failure);
  EXPECT_EQ(visit.database->Bytes(), bytes);
  EXPECT_EQ(visit.database->BeginTrans(), 1) << "no transaction stays open";
  visit.database->RollbackTrans();
}

TEST_F(Care, AValueThatWouldComeBackAsAnotherLeavesAllAsItWas) {
  // A column without a kind: its number would be stored as a text.
  Script(
      "create table A90 (A00 varchar(36) collate nocase, A9001, A9099 integer);"
      "insert into s_infotable(tblname,Property) values('A90',0);"
      "insert into A90 values('P',5,3)");
  const std::string bytes = visit.database->Bytes();
  EXPECT_THROW(Renumber("P"), environment::Failure);
  EXPECT_EQ(visit.database->Bytes(), bytes);
}

TEST_F(Care, AFailureAtAnyStatementLeavesAllAsItWas) {
  Script("update A02 set A0299=4 where A00='" + kPerson + "'");
  Script("update A03 set A0399=4 where A00='" + kPerson + "'");
  const Lines second = Read("select * from A02 order by A00,A0201");
  const Lines third = Read("select * from A03 order by A00,A0301");
  std::size_t statement = 1;
  for (;; ++statement) {
    const auto failing = std::make_shared<tests::FailingConnection>(visit.database);
    failing->FailAt(statement);
    try {
      care::RenumberRecords(*failing, kPerson);
      break;
    } catch (const environment::Failure&) {
      EXPECT_EQ(Read("select * from A02 order by A00,A0201"), second) << statement;
      EXPECT_EQ(Read("select * from A03 order by A00,A0301"), third) << statement;
    }
  }
  EXPECT_EQ(statement, 29U) << "28 statements were made to fail, one by one";
  EXPECT_EQ(Numbers(), (Lines{"1", "2", "3", "4", "5"}));
}

TEST_F(Care, AnApostropheInAnIdentifierIsPlainText) {
  Script("insert into A03(A00,A0302,A0399) values('x'' or ''1''=''1','某',5)");
  const Lines others = Read("select * from A03 where A0302<>'某' order by A00,A0399");
  EXPECT_EQ(Renumber("x' or '1'='1"), 1);
  EXPECT_EQ(Read("select A0399 from A03 where A0302='某'"), Lines{"1"});
  EXPECT_EQ(Read("select * from A03 where A0302<>'某' order by A00,A0399"), others);
}

TEST_F(Care, AWildcardInAnIdentifierIsPlainText) {
  Script("insert into A03(A00,A0302,A0399) values('%','某',5)");
  const Lines others = Read("select * from A03 where A00<>'%' order by A00,A0399");
  EXPECT_EQ(Renumber("%"), 1);
  EXPECT_EQ(Read("select A0399 from A03 where A00='%'"), Lines{"1"});
  EXPECT_EQ(Read("select * from A03 where A00<>'%' order by A00,A0399"), others);
}

TEST_F(Care, ASetWithoutATableIsPassedOver) {
  Script(
      "insert into s_infotable(tblname,Property) values(null,0); insert into s_infotable values('',null,9,"
      "null,null,0)");
  Script("update A03 set A0399=A0399+7 where A00='" + kPerson + "'");
  EXPECT_EQ(Renumber(), 1);
  EXPECT_EQ(Numbers(), (Lines{"1", "2", "3", "4", "5"}));
}

TEST_F(Care, OnlyTrueAsANumberOrNothingAtAllIsOneRecordAPerson) {
  Script(
      "alter table s_infotable rename column Property to former;"
      "alter table s_infotable add column Property integer;"
      "update s_infotable set Property=-1");
  Script("update A03 set A0399=A0399+7 where A00='" + kPerson + "'");
  EXPECT_EQ(Renumber(), 0);
  Script("update s_infotable set Property=null where tblname='A03'");
  EXPECT_EQ(Renumber(), 0);
  EXPECT_EQ(Numbers(), (Lines{"8", "9", "10", "11", "12"}));
  for (const char* many : {"1", "0", "-2"}) {
    Script("update s_infotable set Property=" + std::string(many) + " where tblname='A03'");
    Script("update A03 set A0399=A0399+7 where A00='" + kPerson + "'");
    EXPECT_EQ(Renumber(), 1) << many;
    EXPECT_EQ(Numbers(), (Lines{"1", "2", "3", "4", "5"})) << many;
  }
}

TEST_F(Care, TheNumberIsFoundInSmallLettersToo) {
  Script("alter table A03 rename column A0399 to a0399");
  Script("update A03 set A0399=A0399+7 where A00='" + kPerson + "'");
  EXPECT_EQ(Renumber(), 1);
  EXPECT_EQ(Numbers(), (Lines{"1", "2", "3", "4", "5"}));
}

// The hazard itself: delete record 2, open the person again, correct the first record.
TEST_F(Care, BehindADeletionTheNextVisitWritesIntoTheRecordOnShow) {
  const auto delete_and_correct = [&](bool cared_for) {
    Script(
        "delete from A03; insert into A03(A00,A0301,A0302,A0303,A0304,A0399) select "
        "A00,'2001-01-01','甲','006',"
        "'082',1 from A01 union all select A00,'2002-01-01','乙','006','082',2 from A01 union all"
        " select A00,'2003-01-01','丙','006','082',3 from A01");
    visit.OpenPerson(kPerson, [&] {
      visit.GoTo("A03");
      visit.user.ClickRow(2);
      visit.script.WillAnswer(toolkit::kAnswerYes);
      visit.user.ClickToolbar("Delete");
    });
    if (cared_for) Renumber();
    visit.OpenPerson(kPerson, [&] {
      visit.GoTo("A03");
      visit.Text("A03_A0302").SetText("甲一");
      visit.user.ClickToolbar("Save");
    });
    return Read("select A0302,A0303,A0304 from A03 where A00='" + kPerson + "' order by A0301");
  };
  EXPECT_NE(delete_and_correct(false), (Lines{"甲一|006|082", "丙|006|082"}));
  EXPECT_EQ(delete_and_correct(true), (Lines{"甲一|006|082", "丙|006|082"}));
}

// --- doubled persons ---------------------------------------------------------------------------

TEST_F(Care, TheSampleHasNoDoubledPerson) { EXPECT_TRUE(care::FindDoubledPersons(*visit.database).empty()); }

TEST_F(Care, OnePersonIsLookedForAlone) {
  EXPECT_FALSE(care::FindDoubledPerson(*visit.database, kPerson).has_value());
  Script("insert into A01(A00,A0101,A0199) values('p-other','另一人',901)");
  Script("insert into A01(A00,A0101,A0199) values('p-other','另一人',902)");
  EXPECT_FALSE(care::FindDoubledPerson(*visit.database, kPerson).has_value());
  const auto doubled = care::FindDoubledPerson(*visit.database, "p-other");
  ASSERT_TRUE(doubled.has_value());
  EXPECT_EQ(doubled->person, "p-other");
  EXPECT_EQ(doubled->rows.size(), 2U);
}

TEST_F(Care, APersonStoredByAQuestionAndSavedAgainIsFoundWithBothRows) {
  std::string person;
  visit.OpenNew([&] {
    EnterRequired(visit, "林知远");
    visit.script.WillAnswer(toolkit::kAnswerYes);
    visit.GoTo("A02");
    visit.GoTo("A01");
    EnterRequired(visit, "林知远二");
    visit.user.ClickToolbar("Save");
    person = visit.Window().personID;
  });
  ASSERT_EQ(Read("select A0101 from A01 where A00='" + person + "' order by A0199"),
            (Lines{"林知远", "林知远二"}));
  const auto doubled = care::FindDoubledPersons(*visit.database);
  ASSERT_EQ(doubled.size(), 1U);
  EXPECT_EQ(doubled[0].person, person);
  ASSERT_EQ(doubled[0].rows.size(), 2U);
  EXPECT_EQ(doubled[0].columns[1], "A0101");
  EXPECT_EQ(doubled[0].rows[0][1], environment::Value("林知远"));
  EXPECT_EQ(doubled[0].rows[1][1], environment::Value("林知远二"));
  care::DropDoubledRow(*visit.database, doubled[0], 0);
  EXPECT_EQ(Read("select A0101 from A01 where A00='" + person + "'"), Lines{"林知远二"});
  visit.OpenPerson(person, [&] { EXPECT_EQ(visit.Caption("labPersonName"), "林知远二"); });
}

TEST_F(Care, IdentifiersThatDifferInCaseAreOnePersonAndThreeRowsOneFinding) {
  for (const char* person : {"P-1", "p-1", "P-1", "P-2", "P-2", "p-2"})
    Script("insert into A01(A00,A0101) values('" + std::string(person) + "','某')");
  const auto doubled = care::FindDoubledPersons(*visit.database);
  ASSERT_EQ(doubled.size(), 2U);
  EXPECT_EQ(doubled[0].person, "P-1");
  EXPECT_EQ(doubled[0].rows.size(), 3U);
  EXPECT_EQ(doubled[1].person, "P-2");
  EXPECT_EQ(doubled[1].rows.size(), 3U);
}

TEST_F(Care, TheRecordsOfADoubledPersonStayWhenARowIsDropped) {
  Script("insert into A01(A00,A0101,A0199) values('" + kPerson + "','二',13)");
  const Lines records = Read("select * from A03 order by A00,A0399");
  care::DropDoubledRow(*visit.database, care::FindDoubledPersons(*visit.database).at(0), 1);
  EXPECT_EQ(Read("select A0101 from A01 where A00='" + kPerson + "'"), Lines{"陆怀谷"});
  EXPECT_EQ(Read("select * from A03 order by A00,A0399"), records);
  EXPECT_TRUE(care::FindDoubledPersons(*visit.database).empty());
}

TEST_F(Care, ARowWithoutANumberCanBeDropped) {
  Script("insert into A01(A00,A0101) values('" + kPerson + "','二')");
  const auto doubled = care::FindDoubledPersons(*visit.database);
  ASSERT_EQ(doubled.size(), 1U);
  EXPECT_EQ(doubled[0].rows[0][1], environment::Value("二"));
  care::DropDoubledRow(*visit.database, doubled[0], 0);
  EXPECT_EQ(Read("select A0101 from A01 where A00='" + kPerson + "'"), Lines{"陆怀谷"});
}

TEST_F(Care, RowsOfEqualNumberAreNotDropped) {
  Script("insert into A01(A00,A0101,A0199) select A00,'二',A0199 from A01 where A00='" + kPerson + "'");
  const auto doubled = care::FindDoubledPersons(*visit.database);
  EXPECT_THROW(care::DropDoubledRow(*visit.database, doubled.at(0), 0), environment::Failure);
  EXPECT_EQ(Read("select count(*) from A01 where A00='" + kPerson + "'"), Lines{"2"});
}

TEST_F(Care, ARowOfAnotherPersonWithTheSameNumberStays) {
  Script("insert into A01(A00,A0101,A0199) values('" + kPerson + "','二',12)");
  const Lines others = Read("select * from A01 where A00<>'" + kPerson + "' order by A0199");
  care::DropDoubledRow(*visit.database, care::FindDoubledPersons(*visit.database).at(0), 1);
  EXPECT_EQ(Read("select A0101 from A01 where A00='" + kPerson + "'"), Lines{"陆怀谷"});
  EXPECT_EQ(Read("select * from A01 where A00<>'" + kPerson + "' order by A0199"), others);
}

TEST_F(Care, ARowThatIsNotThereIsNotDropped) {
  Script("insert into A01(A00,A0101,A0199) values('" + kPerson + "','二',13)");
  const auto doubled = care::FindDoubledPersons(*visit.database);
  EXPECT_THROW(care::DropDoubledRow(*visit.database, doubled.at(0), 2), environment::Failure);
  EXPECT_EQ(Read("select count(*) from A01 where A00='" + kPerson + "'"), Lines{"2"});
}

TEST_F(Care, RowsThatChangedMeanwhileAreNotDropped) {
  Script("insert into A01(A00,A0101,A0199) values('" + kPerson + "','二',13)");
  const auto doubled = care::FindDoubledPersons(*visit.database);
  Script("delete from A01 where A0199=13");
  EXPECT_THROW(care::DropDoubledRow(*visit.database, doubled.at(0), 0), environment::Failure);
  EXPECT_EQ(Read("select A0101 from A01 where A00='" + kPerson + "'"), Lines{"陆怀谷"});
  EXPECT_EQ(visit.database->BeginTrans(), 1) << "no transaction stays open";
  visit.database->RollbackTrans();
}

}  // namespace
}  // namespace dossierkit::tests
