// The loaders: metadata of a set, values of one record, the identifier of a new person.
#include "metadata/loaders.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <set>
#include <vector>

#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {
namespace {

using Statements = std::vector<std::string>;

// Set Z01 holds a text, a coded field, a date and a number; person P1 has the records 1 and 2.
constexpr const char* kScript = R"(
create table Z01 (A00 varchar(36) collate nocase, Z0101 varchar(30), Z0102 varchar(10), Z0103 datetime,
                  Z0104 integer, Z0199 integer);
create table ZC (dmcod varchar(10) collate nocase, dmcpt varchar(30), dmhnd varchar(10), dmattr boolean);
insert into ZC values ('1','一','y',1), ('2',null,'e',1);
insert into Z01 values ('P1','first','1','1990-03-01',7,1), ('P1','second','2',null,null,2),
                       ('P2','gone','9',null,null,1), ('P3','none',null,null,null,1);
insert into s_infoitem values
  ('Z01','Z0101','文字','Varchar','30',null,'@','L 6','01',1600,'说明',0),
  ('Z01','Z0102','代码','Varchar','10','ZC',null,null,'02',0,null,1),
  ('Z01','Z0103','日期','datetime',null,null,'yyyy-mm',null,'03',1100,null,1),
  ('Z01','Z0104','数字','int',null,null,null,null,'04',900,null,1);
)";

class Loaders : public ::testing::Test {
 protected:
  Loaders() {
    visit.database->RunScript(kScript);
    visit.runtime.connection = visit.component.Connection();
  }

  static std::string Code(const cFieldItems& items, const std::string& key) {
    return environment::TextOf(items.Item(key)->Dmcod);
  }

  Visit visit;
};

TEST_F(Loaders, MetadataIsReadByOneStatement) {
  const auto items = LoadFieldItems("Z01");
  EXPECT_EQ(visit.statements, Statements{" select * from s_infoitem  where tblname ='Z01'"});
  EXPECT_EQ(items->Count(), 4);
}

TEST_F(Loaders, EveryPropertyComesFromItsColumn) {
  const auto item = LoadFieldItems("Z01")->Item("Z01_Z0101");
  EXPECT_EQ(item->TblName, "Z01");
  EXPECT_EQ(item->ItemName, "Z0101");
  EXPECT_EQ(item->ItemDesc, "文字");
  EXPECT_EQ(item->FieldType, "Varchar");
  EXPECT_EQ(item->FieldLength, "30");
  EXPECT_EQ(item->CodeTable, "");
  EXPECT_EQ(item->Style, "@");
  EXPECT_EQ(item->Check, "L 6");
  EXPECT_EQ(item->FldOrder, "01");
  EXPECT_EQ(item->FldWidth, 1600);
  EXPECT_EQ(item->FldExplain, "说明");
  EXPECT_FALSE(item->IsNUll);
  EXPECT_EQ(LoadFieldItems("Z01")->Item("Z01_Z0102")->CodeTable, "ZC");
  EXPECT_TRUE(LoadFieldItems("Z01")->Item("Z01_Z0102")->IsNUll);
}

TEST_F(Loaders, NullColumnsReadAsTheirDefaults) {
  visit.database->RunScript("insert into s_infoitem(tblname) values ('Z02')");
  const auto items = LoadFieldItems("Z02");
  ASSERT_EQ(items->Count(), 1);
  const auto item = items->Item("Z02_");
  EXPECT_EQ(item->TblName, "Z02");
  EXPECT_EQ(item->ItemName, "");
  EXPECT_EQ(item->ItemDesc, "");
  EXPECT_EQ(item->FieldType, "");
  EXPECT_EQ(item->FieldLength, "");
  EXPECT_EQ(item->CodeTable, "");
  EXPECT_EQ(item->Style, "");
  EXPECT_EQ(item->Check, "");
  EXPECT_EQ(item->FldOrder, "");
  EXPECT_EQ(item->FldWidth, 2000);
  EXPECT_EQ(item->FldExplain, "");
  EXPECT_TRUE(item->IsNUll);
}

TEST_F(Loaders, AHiddenColumnKeepsItsWidthOfZero) {
  EXPECT_EQ(LoadFieldItems("Z01")->Item("Z01_Z0102")->FldWidth, 0);
}

TEST_F(Loaders, AWidthBeyond16BitsFails) {
  visit.database->RunScript("update s_infoitem set FldWidth = 40000 where itemname = 'Z0103'");
  try {
    LoadFieldItems("Z01");
    ADD_FAILURE() << "accepted";
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.number(), 6);
  }
}

// Both loaders on a set of so many fields: the number of fields read, or -6 for an overflow.
std::vector<std::int32_t> FieldsOf(Visit& visit, int rows) {
  std::string fields;
  for (int i = 1; i <= rows; ++i) fields += (i > 1 ? ",('Z09','f" : "('Z09','f") + std::to_string(i) + "')";
  visit.database->RunScript(
      "delete from s_infoitem where tblname = 'Z09'; insert into s_infoitem(tblname,itemname) values " +
      fields);
  const auto count = [](const std::function<std::shared_ptr<cFieldItems>()>& load) {
    try {
      return load()->Count();
    } catch (const environment::Failure& failure) {
      EXPECT_EQ(failure.description(), "溢出");
      return -failure.number();
    }
  };
  return {count([] { return LoadFieldItems("Z09"); }), count([] { return LoadFieldValues("Z09", "P1", 0); })};
}

TEST_F(Loaders, RequiredACounterOf16BitsFailsBehindRow32767) {
  visit.database->RunScript("create table Z09 (A00 varchar(36))");
  EXPECT_EQ(FieldsOf(visit, 32766), (std::vector<std::int32_t>{32766, 32766}));
  EXPECT_EQ(FieldsOf(visit, 32767), (std::vector<std::int32_t>{-6, -6}));
  EXPECT_EQ(FieldsOf(visit, 32768), (std::vector<std::int32_t>{-6, -6}));
}

TEST_F(Loaders, MetadataAloneLeavesTheValuesUnset) {
  const auto items = LoadFieldItems("Z01");
  for (const auto& item : *items) {
    EXPECT_TRUE(item->Dmcod.IsUnset()) << item->ItemName;
    EXPECT_EQ(item->Dmcpt, "") << item->ItemName;
  }
}

TEST_F(Loaders, FieldsComeInTheOrderOfTheDatabase) {
  visit.database->RunScript("update s_infoitem set FldOrder = '99' where itemname = 'Z0101'");
  const auto items = LoadFieldItems("Z01");
  const bool in_place = EngineOfThisRun().updates_in_place;
  EXPECT_EQ(items->Item(1)->ItemName, in_place ? "Z0101" : "Z0102");
  EXPECT_EQ(items->Item(4)->ItemName, in_place ? "Z0104" : "Z0101");
}

TEST_F(Loaders, EachLoadMakesItsOwnCollection) {
  const auto first = LoadFieldItems("Z01");
  first->Item("Z01_Z0101")->ItemDesc = "changed";
  EXPECT_EQ(LoadFieldItems("Z01")->Item("Z01_Z0101")->ItemDesc, "文字");
}

TEST_F(Loaders, ASetWithoutRowsGivesAnEmptyCollection) { EXPECT_EQ(LoadFieldItems("Z09")->Count(), 0); }

TEST_F(Loaders, ASetWithoutRowsRunsNoValueQuery) {
  const auto items = LoadFieldValues("Z09", "P1", 1);
  EXPECT_EQ(items->Count(), 0);
  EXPECT_EQ(visit.statements, Statements{" select * from s_infoitem  where tblname ='Z09'"});
}

TEST_F(Loaders, ValuesAreReadByTheseStatements) {
  LoadFieldValues("Z01", "P1", 1);
  EXPECT_EQ(visit.statements, (Statements{
                                  " select * from s_infoitem  where tblname ='Z01'",
                                  "select * from Z01 where a00 ='P1' and Z0199=1",
                                  "select dmcpt from ZC where dmcod='1'",
                              }));
}

TEST_F(Loaders, ValuesStandInTheirFields) {
  const auto items = LoadFieldValues("Z01", "P1", 1);
  EXPECT_EQ(Code(*items, "Z01_Z0101"), "first");
  EXPECT_EQ(items->Item("Z01_Z0101")->Dmcpt, "");
  EXPECT_EQ(Code(*items, "Z01_Z0102"), "1");
  EXPECT_EQ(items->Item("Z01_Z0102")->Dmcpt, "一");
  EXPECT_EQ(Code(*items, "Z01_Z0103"), "1990/3/1");
  EXPECT_EQ(Code(*items, "Z01_Z0104"), "7");
  EXPECT_EQ(items->Item("Z01_Z0101")->FldWidth, 1600);
}

TEST_F(Loaders, ANullValueReadsAsAnEmptyText) {
  const auto items = LoadFieldValues("Z01", "P1", 2);
  EXPECT_EQ(items->Item("Z01_Z0103")->Dmcod, environment::Value(""));
  EXPECT_EQ(items->Item("Z01_Z0104")->Dmcod, environment::Value(""));
}

TEST_F(Loaders, ARecordNumberBelowOneIsNoCondition) {
  const auto items = LoadFieldValues("Z01", "P1", 0);
  EXPECT_EQ(visit.statements.at(1), "select * from Z01 where a00 ='P1'");
  EXPECT_EQ(Code(*items, "Z01_Z0101"), "first");
  visit.statements.clear();
  LoadFieldValues("Z01", "P1", -1);
  EXPECT_EQ(visit.statements.at(1), "select * from Z01 where a00 ='P1'");
}

TEST_F(Loaders, WithoutARowTheValuesStayUnsetAndNoCodeIsLookedUp) {
  for (const auto& [person, number] : {std::pair{"P1", 3}, std::pair{"nobody", 1}, std::pair{"nobody", 0}}) {
    visit.statements.clear();
    const auto items = LoadFieldValues("Z01", person, static_cast<std::int16_t>(number));
    EXPECT_EQ(visit.statements.size(), 2U);
    ASSERT_EQ(items->Count(), 4);
    for (const auto& item : *items) {
      EXPECT_TRUE(item->Dmcod.IsUnset()) << item->ItemName;
      EXPECT_EQ(item->Dmcpt, "") << item->ItemName;
    }
  }
}

TEST_F(Loaders, ANullCodeIsLookedUpAsAnEmptyCode) {
  const auto items = LoadFieldValues("Z01", "P3", 1);
  EXPECT_EQ(visit.statements.back(), "select dmcpt from ZC where dmcod=''");
  EXPECT_EQ(items->Item("Z01_Z0102")->Dmcod, environment::Value(""));
  EXPECT_EQ(items->Item("Z01_Z0102")->Dmcpt, "");
}

TEST_F(Loaders, ACodeThatItsTableLacksHasNoCaption) {
  const auto items = LoadFieldValues("Z01", "P2", 1);
  EXPECT_EQ(visit.statements.back(), "select dmcpt from ZC where dmcod='9'");
  EXPECT_EQ(Code(*items, "Z01_Z0102"), "9");
  EXPECT_EQ(items->Item("Z01_Z0102")->Dmcpt, "");
}

TEST_F(Loaders, ANullCaptionReadsAsAnEmptyText) {
  const auto items = LoadFieldValues("Z01", "P1", 2);
  EXPECT_EQ(Code(*items, "Z01_Z0102"), "2");
  EXPECT_EQ(items->Item("Z01_Z0102")->Dmcpt, "");
}

TEST_F(Loaders, TheFirstOfSeveralRowsOfACodeGivesTheCaption) {
  visit.database->RunScript("insert into ZC values ('1','壹','y',1)");
  EXPECT_EQ(LoadFieldValues("Z01", "P1", 1)->Item("Z01_Z0102")->Dmcpt, "一");
}

TEST_F(Loaders, ACodedNumberIsLookedUpByItsDigits) {
  visit.database->RunScript("update s_infoitem set CodeTable = 'ZC' where itemname = 'Z0104'");
  LoadFieldValues("Z01", "P1", 1);
  EXPECT_EQ(visit.statements.back(), "select dmcpt from ZC where dmcod='7'");
}

TEST_F(Loaders, TwoRowsOfOneFieldInAnyCaseAreRefused) {
  visit.database->RunScript("insert into s_infoitem(tblname,itemname) values ('z01','z0103')");
  for (const bool values : {false, true}) {
    try {
      if (values) {
        LoadFieldValues("Z01", "P1", 1);
      } else {
        LoadFieldItems("Z01");
      }
      ADD_FAILURE() << "accepted";
    } catch (const environment::Failure& failure) {
      EXPECT_EQ(failure.number(), 457);
    }
  }
}

TEST_F(Loaders, AColumnThatTheSetLacksFailsOnceARowIsRead) {
  visit.database->RunScript("insert into s_infoitem(tblname,itemname) values ('Z01','Z0177')");
  EXPECT_NO_THROW(LoadFieldItems("Z01"));
  EXPECT_NO_THROW(LoadFieldValues("Z01", "nobody", 1));
  EXPECT_THROW(LoadFieldValues("Z01", "P1", 1), environment::Failure);
}

TEST_F(Loaders, AMissingTableFails) {
  visit.database->RunScript("insert into s_infoitem(tblname,itemname) values ('Z03','Z0301')");
  EXPECT_THROW(LoadFieldValues("Z03", "P1", 1), environment::Failure);
  visit.database->RunScript("drop table ZC");
  EXPECT_THROW(LoadFieldValues("Z01", "P1", 1), environment::Failure);
}

// Before the first of them is read: the second one would fail as a field that is there twice.
TEST_F(Loaders, MoreFieldsThanSixteenBitsCountFail) {
  std::string rows = "('Z09','Z0901')";
  for (int row = 2; row <= 32768; ++row) rows += ",('Z09','Z0901')";
  visit.database->RunScript("insert into s_infoitem(tblname,itemname) values " + rows);
  for (const bool values : {false, true}) {
    try {
      if (values) {
        LoadFieldValues("Z09", "P1", 1);
      } else {
        LoadFieldItems("Z09");
      }
      ADD_FAILURE() << "accepted";
    } catch (const environment::Failure& failure) {
      EXPECT_EQ(failure.number(), 6);
      EXPECT_EQ(failure.description(), "溢出");
    }
  }
}

TEST_F(Loaders, AnApostropheInIdentifierOrCodeBreaksTheStatement) {
  EXPECT_THROW(LoadFieldValues("Z01", "O'Neil", 1), environment::Failure);
  EXPECT_EQ(visit.statements.back(), "select * from Z01 where a00 ='O'Neil' and Z0199=1");
  visit.database->RunScript("update Z01 set Z0102 = 'a''b'");
  EXPECT_THROW(LoadFieldValues("Z01", "P1", 1), environment::Failure);
  EXPECT_EQ(visit.statements.back(), "select dmcpt from ZC where dmcod='a'b'");
}

TEST_F(Loaders, ANewIdentifierIsDrawnByTheseStatements) {
  NewPersonId();
  EXPECT_EQ(visit.statements, (Statements{
                                  " delete from S_GUID ",
                                  "insert into S_GUID(val) values('a')",
                                  "select id from S_GUID where val='a'",
                              }));
}

TEST_F(Loaders, ANewIdentifierIsTheDrawnOneWithoutItsBraces) {
  const std::string id = NewPersonId();
  EXPECT_EQ(environment::Length(id), 36U);
  EXPECT_EQ("{" + id + "}", One(*visit.database, "select id from S_GUID"));
}

TEST_F(Loaders, ExactlyOneRowIsLeftInTheScratchTable) {
  visit.database->RunScript("insert into S_GUID(val) values ('a'), ('b'), ('a')");
  NewPersonId();
  EXPECT_EQ(Column(*visit.database, "select val from S_GUID"), std::vector<std::string>{"a"});
  NewPersonId();
  EXPECT_EQ(One(*visit.database, "select count(*) from S_GUID"), "1");
}

TEST_F(Loaders, NewIdentifiersDiffer) {
  std::set<std::string> ids;
  for (int i = 0; i < 100; ++i) ids.insert(NewPersonId());
  EXPECT_EQ(ids.size(), 100U);
}

}  // namespace
}  // namespace dossierkit::tests
