// The check of a whole database: nothing on a sound one, nothing changed, and what it cannot read.
#include "platform/ado/tracing_connection.h"
#include "platform/environment/failure.h"
#include "tests/check/check_test.h"
#include "tests/support/failing_connection.h"

namespace dossierkit::tests {
namespace {

class CheckedDatabase : public Check {};

// Refuses to write into the metadata and the code tables, as the rights of a careful host do.
class CarefulConnection : public FailingConnection {
 public:
  using FailingConnection::FailingConnection;
  ado::Snapshot Run(const std::string& statement) override {
    for (const char* table :
         {"insert into s_info", "insert into s_Code", "insert into GB", "insert into LC"}) {
      if (statement.starts_with(table))
        throw environment::Failure(environment::kEngineFailure, "没有权限", statement);
    }
    return FailingConnection::Run(statement);
  }
};

TEST_F(CheckedDatabase, OfTheSampleHasNoFault) { EXPECT_EQ(Faults(), Texts{}); }

TEST_F(CheckedDatabase, WithoutPeopleHasNoFault) {
  for (const std::string& set : Column(*database, "select tblname from s_infotable"))
    database->RunScript("delete from " + set);
  EXPECT_EQ(Faults(), Texts{});
}

TEST_F(CheckedDatabase, IsNotChanged) {
  database->RunScript("insert into S_GUID values('{kept}','b')");
  const std::string before = database->Bytes();
  Faults();
  EXPECT_EQ(Rows(*database, "select * from S_GUID"), Texts{"{kept}|b"});
  EXPECT_TRUE(database->Bytes() == before);
}

TEST_F(CheckedDatabase, IsNotChangedInATransactionOfTheHost) {
  database->BeginTrans();
  database->Run("update A01 set A0101='改名' where A00='" + kPerson + "'");
  EXPECT_EQ(Faults(), Texts{});
  database->CommitTrans();
  EXPECT_EQ(One(*database, "select A0101 from A01 where A00='" + kPerson + "'"), "改名");
}

TEST_F(CheckedDatabase, IsWrittenInATransactionAlone) {
  Texts writing;
  ado::TracingConnection traced(database, [&](const ado::Trace& trace) {
    if (!trace.statement.starts_with("select ")) writing.push_back(trace.statement);
  });
  check::CheckDatabase(traced);
  ASSERT_GT(writing.size(), 4U);
  EXPECT_EQ(writing.front(), "BeginTrans");
  EXPECT_EQ(writing.back(), "RollbackTrans");
  for (std::size_t i = 1; i + 1 < writing.size(); ++i)
    EXPECT_TRUE(writing[i] == "delete from S_GUID" || writing[i].starts_with("insert into ")) << writing[i];
}

TEST_F(CheckedDatabase, MayRefuseToWriteItsMetadata) {
  CarefulConnection careful(database);
  EXPECT_EQ(TextsOf(check::CheckDatabase(careful)), Texts{});
}

TEST_F(CheckedDatabase, ThatCannotBeReadOrIsBusyIsAFailure) {
  for (const std::string beginning : {"select * from s_infotable", "select itemname", "select A00,[A0102]",
                                      "select dmcod,dmcpt from GB2260", "BeginTrans"}) {
    FailingConnection failing(database);
    failing.FailAt(1, environment::kEngineFailure, "数据库正被占用，请稍后再试。",
                   [&](const std::string& statement) { return statement.starts_with(beginning); });
    EXPECT_THROW(check::CheckDatabase(failing), environment::Failure) << beginning;
    EXPECT_TRUE(failing.HasFailed()) << beginning;
  }
}

TEST_F(CheckedDatabase, IsReadInTheCaseOfItsNames) {
  database->RunScript("update s_infotable set tblname='a03' where tblname='A03'");
  database->RunScript("update s_infoitem set tblname='a03',itemname='a0302' where itemname='A0302'");
  EXPECT_EQ(Faults(), Texts{});
}

TEST_F(CheckedDatabase, MayLeaveOutASet) {
  database->RunScript(
      "delete from s_infotable where tblname='A05'; delete from s_infoitem where tblname='A05'");
  EXPECT_EQ(Faults(), Texts{});
}

TEST_F(CheckedDatabase, MayHoldFieldsThatNoPageShows) {
  database->RunScript(
      "alter table A03 add column A0305 varchar(20) collate nocase;"
      "insert into s_infoitem(tblname,itemname,itemdesc,FieldType) values('A03','A0305','备注','text')");
  EXPECT_EQ(Faults(), Texts{});
}

TEST_F(CheckedDatabase, SaysWhereAFaultLies) {
  database->RunScript("update s_infoitem set FldWidth='宽' where itemname='A0302'");
  const auto faults = check::CheckDatabase(*database);
  ASSERT_EQ(faults.size(), 1U);
  EXPECT_EQ(faults[0].table, "s_infoitem");
  EXPECT_EQ(faults[0].row, "A03.A0302");
  EXPECT_EQ(faults[0].column, "FldWidth");
}

}  // namespace
}  // namespace dossierkit::tests
