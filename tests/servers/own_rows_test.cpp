#include "tests/server/own_rows.h"

#include "host/server/copy.h"
#include "host/server/rights.h"
#include "tests/support/paths.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

constexpr char kDatabase[] = "own_rows";

void MakeSample(const std::string& engine) {
  MakeDatabase(engine, kDatabase);
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  const auto made = OpenServer(engine, kDatabase);
  server::CopyDatabase(server::StoreOf(sample), server::StoreOf(*made));
}

}  // namespace

SharedDatabase OpenSharedDatabase() {
  const std::string engine = ServerOfThisRun();
  MakeSample(engine);
  server::PrepareRights(*OpenServer(engine, kDatabase));
  const auto connection = OpenServer(engine, kDatabase);
  return {connection, OpenServer(engine, kDatabase), [connection](const std::string& person) {
            return std::make_unique<server::OwnRows>(*connection, person);
          }};
}

TEST_F(RowsOfAVisit, RightsThatArePreparedTwiceAreTheSame) {
  server::PrepareRights(*OpenServer(ServerOfThisRun(), kDatabase));
  const auto visit = database_.visit("P");
  EXPECT_EQ(One("select count(*) from A02"), "3");
}

// As a connection of the same number may have done that ended without taking its visit down.
TEST_F(RowsOfAVisit, WhatWasLeftBehindByAnotherVisitIsNotShownAndNothingIsLeft) {
  auto& server = dynamic_cast<odbc::OdbcConnection&>(*database_.connection);
  const bool is_postgresql = server.EngineName() == "PostgreSQL";
  server.RunNative(is_postgresql
                       ? "select set_config('dossierkit.persons', '{q}', false)"
                       : "insert into dossierkit_visit values (connection_id(), dossierkit_node(), 'Q')");
  {
    const auto visit = database_.visit("P");
    EXPECT_EQ(One("select count(*) from A02"), "3");
  }
  Draw();  // of no visit
  EXPECT_EQ(
      environment::TextOf(
          server
              .RunNative(is_postgresql
                             ? "select length(current_setting('dossierkit.persons'))"
                             : "select count(*) from dossierkit_visit where connection = connection_id()")
              .ValueAt(0, 0)),
      "0");
}

TEST_F(RowsOfAVisit, TwoVisitsAtOnceSeeTheirOwn) {
  Run("delete from A02 where A00='Q'  and A0299 = 3");
  const auto visit = database_.visit("P");
  const server::OwnRows anothers(dynamic_cast<odbc::OdbcConnection&>(*database_.another), "Q");
  EXPECT_EQ(One("select count(*) from A02"), "3");
  EXPECT_EQ(One(*database_.another, "select count(*) from A02"), "2");
}

TEST(UnpreparedServers, AreToldAndStayAsTheyAre) {
  const std::string engine = ServerOfThisRun();
  OpenServer(engine)->RunNative("drop database if exists own_rows_visit");
  MakeSample(engine);
  const auto connection = OpenServer(engine, kDatabase);
  try {
    const server::OwnRows visit(*connection, "P");
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_TRUE(failure.description().starts_with("数据库没有为“只看本人的记录”做好准备（"))
        << failure.description();
    EXPECT_TRUE(failure.description().ends_with("），请由管理员运行 dossier create-rights。"))
        << failure.description();
  }
  EXPECT_NE(environment::TextOf(connection->Execute("select count(*) from A02")->Fields(0)), "0");
}

}  // namespace dossierkit::tests
