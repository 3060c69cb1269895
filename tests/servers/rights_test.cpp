// What the role for clerks may do on a server, and what it may not.
#include "host/server/rights.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/audit.h"
#include "host/server/copy.h"
#include "host/server/opened.h"
#include "host/server/own_rows.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "tests/support/paths.h"
#include "tests/support/program.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

constexpr char kDatabase[] = "rights";

class Rights : public testing::Test {
 protected:
  Rights() {
    MakeDatabase(engine_, kDatabase);
    sqlite::SqliteConnection sample(SampleDatabaseFile());
    const auto made = OpenServer(engine_, kDatabase);
    server::CopyDatabase(server::StoreOf(sample), server::StoreOf(*made));
    server::PrepareRights(*made);
    server::PrepareAudit(*made);
    made->RunNative("create table salaries (a integer)");
    if (engine_ == "postgresql") {
      made->RunNative("drop role if exists zhang");
      made->RunNative("create role zhang login password 'a clerk''s' in role dossierkit_clerk");
    } else {
      made->RunNative("create or replace user zhang@127.0.0.1 identified by 'a clerk''s'");
      made->RunNative("grant dossierkit_clerk to zhang@127.0.0.1");
      made->RunNative("set default role dossierkit_clerk for zhang@127.0.0.1");
    }
  }

  // The connection string of the clerk.
  std::string Clerk() const {
    std::string clerk;
    for (const std::string& attribute : environment::Split(ServerString(engine_, kDatabase), ";")) {
      if (!attribute.starts_with("Uid=") && !attribute.starts_with("Pwd=")) clerk += attribute + ";";
    }
    return clerk + "Uid=zhang;Pwd=a clerk's";
  }

  // What a role may do with each table and view of a database, in small letters and their order.
  std::map<std::string, std::string> RightsOf(const std::string& role, const std::string& database) const {
    const auto rows = OpenServer(engine_, database)
                          ->RunNative(engine_ == "postgresql"
                                          ? "select relname, string_agg(privilege_type, ',') from pg_class, "
                                            "aclexplode(relacl) where grantee = cast('" +
                                                role + "' as regrole) group by relname"
                                          : "select table_name, table_priv from mysql.tables_priv where "
                                            "user = '" +
                                                role + "' and db = '" + database + "'");
    std::map<std::string, std::string> rights;
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      auto each = environment::Split(environment::LowerCase(environment::TextOf(rows.ValueAt(row, 1))), ",");
      std::sort(each.begin(), each.end());
      std::string& told = rights[environment::TextOf(rows.ValueAt(row, 0))];
      for (const std::string& right : each) told += (told.empty() ? "" : " ") + right;
    }
    return rights;
  }

  const std::string engine_ = ServerOfThisRun();
};

TEST_F(Rights, OnEachTableAreThoseThatADossierNeeds) {
  std::map<std::string, std::string> wanted;
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  for (const server::CopiedTable& table : server::ChecksumsOf(server::StoreOf(sample)))
    wanted[environment::LowerCase(table.name)] = "select";
  ASSERT_EQ(wanted.size(), 39U);
  for (const char* written : {"a01", "a02", "a03", "a04", "a05", "a06", "a08", "a09", "a10", "a11", "a12",
                              "a13", "a14", "a15", "a21", "b01", "s_guid"})
    wanted[written] = "delete insert select update";
  ASSERT_EQ(wanted.size(), 40U);
  std::map<std::string, std::string> base = wanted;
  base["dossierkit_open"] = "delete insert select update";
  if (engine_ == "postgresql") {
    EXPECT_EQ(RightsOf("dossierkit_clerk", kDatabase), base);
    EXPECT_EQ(RightsOf("dossierkit_visit", kDatabase), base);
    return;
  }
  base["dossierkit_visit"] = "delete insert select";
  EXPECT_EQ(RightsOf("dossierkit_clerk", kDatabase), base);
  EXPECT_EQ(RightsOf("dossierkit_clerk", "rights_visit"), wanted);
}

TEST_F(Rights, AClerkWorksDossiers) {
  odbc::OdbcConnection clerk(Clerk(), kPatience);
  const auto one = [&](const std::string& query) {
    return environment::TextOr(clerk.Execute(query)->Fields(0), "NULL");
  };
  clerk.Run(" delete from S_GUID ");
  clerk.Run("insert into S_GUID(val) values('a')");
  const std::string person = one("select id from S_GUID where val='a'").substr(1, 36);
  ASSERT_EQ(person.size(), 36U);
  clerk.Run("insert into A01( A00 ,A0136,A0199) values('" + person + "',1 ,1)");
  EXPECT_EQ(one("select A0199 from A01 where A00='" + person + "'"), "13") << "1 is taken";
  clerk.Run("insert into A02( A00 ,A0299,A0202) values('" + person + "','1','大学')");
  clerk.Run("update A02 set A0299 = A0299 +200 where a00='" + person + "'");
  clerk.Run("insert into A12( A00 ,A1201) values('" + person + "','成就')");
  EXPECT_EQ(one("select count(*) from A02 where A00='" + person + "'  and A0299 = 201"), "1");
  EXPECT_NE(one("select count(*) from A02"), "1") << "he sees all";
  {
    const server::OwnRows visit(clerk, person);
    EXPECT_EQ(one("select count(*) from A02"), "1");
    clerk.Run("insert into A02( A00 ,A0299) values('" + person + "','2')");
    EXPECT_EQ(one("select count(*) from A02"), "2");
    EXPECT_NE(one("select count(*) from A12"), "1");
    EXPECT_NE(one("select count(*) from s_infoitem"), "0");
    clerk.Run(" delete from S_GUID ");
    clerk.Run("insert into S_GUID(val) values('a')");
    EXPECT_EQ(one("select count(*) from S_GUID"), "1");
  }
  clerk.Run("delete from A01 where A00='" + person + "' ");
  EXPECT_EQ(one("select count(*) from A02 where A00='" + person + "'"), "0");
  EXPECT_EQ(one("select count(*) from A12 where A00='" + person + "'"), "0");
}

TEST_F(Rights, WhatAClerkChangesIsWrittenDownUnderHisName) {
  odbc::OdbcConnection clerk(Clerk(), kPatience);
  {
    const server::OwnRows visit(clerk, "P");
    clerk.Run("insert into A02( A00 ,A0299) values('P','1')");
  }
  const auto changes = server::HistoryOf(*OpenServer(engine_, kDatabase), "P");
  ASSERT_EQ(changes.size(), 1U);
  EXPECT_TRUE(changes[0].user.starts_with("zhang")) << changes[0].user;
}

TEST_F(Rights, AClerkMarksWhomHeHasOpen) {
  odbc::OdbcConnection clerk(Clerk(), kPatience);
  EXPECT_EQ(server::MarkOpen(clerk, "P", "张", std::chrono::seconds(60)), std::nullopt);
  server::UnmarkOpen(clerk, "P", "张");
}

TEST_F(Rights, AClerkMayDoNothingElse) {
  odbc::OdbcConnection clerk(Clerk(), kPatience);
  for (const char* statement :
       {"create table mine (a integer)", "drop table A01", "drop view S_GUID",
        "alter table A02 add x integer", "create view mine as select * from A01", "truncate table A01",
        "update s_infotable set tbldesc = 'x'", "delete from s_infoitem",
        "insert into GB2261 (dmcod) values ('x')", "select * from salaries",
        "insert into salaries values (1)", "select * from dossierkit_guid", "select * from dossierkit_audit",
        "delete from dossierkit_audit", "drop trigger tr_A01_delete on a01", "create database mine",
        "create role mine"}) {
    EXPECT_THROW(clerk.RunNative(statement), environment::Failure) << statement;
  }
  try {
    clerk.Run("delete from s_infoitem");
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_TRUE(failure.description().starts_with("数据库错误：")) << failure.description();
    EXPECT_EQ(failure.description().find("a clerk's"), std::string::npos);
  }
}

}  // namespace
}  // namespace dossierkit::tests
