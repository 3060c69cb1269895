// What a server makes of a schema of the embedded engine.
#include "host/server/schema.h"

#include <gtest/gtest.h>

#include "platform/environment/failure.h"
#include "tests/support/memory_database.h"

namespace dossierkit::server {
namespace {

using Statements = std::vector<std::string>;

constexpr char kSmall[] = R"(
  create table s_infoitem (
    tblname varchar(10) collate nocase,   -- name, of a set
    "Check" varchar(60) collate nocase,
    "IsNUll" boolean not null
  );
  create index ix_item on s_infoitem (tblname);
  create table S_GUID (id varchar(38) collate nocase default ('{' || hex(randomblob(4)) || '}'), val varchar(10));
  create table GB1 (dmcod varchar(10) collate nocase, dmattr boolean);
  create index ix_GB1_level on GB1 (length(dmcod), dmcod, dmattr);
  create table A01 (A00 varchar(36) collate nocase, A0104 datetime, A0140 ntext, A0199 integer);
  create table A02 (A00 varchar(36) collate nocase, A0299 integer);
)";

Schema Of(const std::string& script) {
  const auto database = tests::OpenInMemory();
  database->RunScript(script);
  return SchemaOf(StoreOf(*database));
}

Schema Small() { return Of(kSmall); }

TEST(Schemas, AreReadWithTypesOfTheirOwn) {
  const Schema schema = Small();
  ASSERT_EQ(schema.tables.size(), 5U);
  const Table& item = schema.tables[0];
  EXPECT_EQ(item.name, "s_infoitem");
  ASSERT_EQ(item.columns.size(), 3U);
  EXPECT_EQ(item.columns[0].name, "tblname");
  EXPECT_EQ(item.columns[0].type, "varchar(10)");
  EXPECT_FALSE(item.columns[0].not_null);
  EXPECT_EQ(item.columns[1].name, "Check");
  EXPECT_EQ(item.columns[2].type, "boolean");
  EXPECT_TRUE(item.columns[2].not_null);
  EXPECT_TRUE(schema.tables[1].columns[0].draws_identifier);
  EXPECT_FALSE(schema.tables[1].columns[1].draws_identifier);
  ASSERT_EQ(schema.indexes.size(), 2U);
  EXPECT_EQ(schema.indexes[1].name, "ix_GB1_level");
  EXPECT_EQ(schema.indexes[1].table, "GB1");
  EXPECT_EQ(schema.indexes[1].items, (Statements{"length(dmcod)", "dmcod", "dmattr"}));
}

TEST(Schemas, OfAnUnknownServerAreRefused) {
  try {
    TableStatements("Oracle", Small());
    FAIL();
  } catch (const environment::Failure& failure) {
    EXPECT_EQ(failure.description(), "没有为数据库服务器“Oracle”准备的表结构。");
  }
}

TEST(Schemas, OnPostgresqlFoldNamesAndTexts) {
  const Statements statements = TableStatements("PostgreSQL", Small());
  ASSERT_EQ(statements.size(), 9U);
  EXPECT_EQ(
      statements[0],
      R"(create table "s_infoitem" ("tblname" varchar(10), "check" varchar(60), "isnull" boolean not null))");
  EXPECT_EQ(
      statements[1],
      "create table dossierkit_guid (connection integer not null default pg_backend_pid(), id varchar(38) "
      "default ('{' || upper(cast(gen_random_uuid() as text)) || '}'), val varchar(10))");
  EXPECT_EQ(statements[3],
            "create view s_guid as select id, val from dossierkit_guid where connection = pg_backend_pid()");
  EXPECT_EQ(statements[5],
            R"(create table "a01" ("a00" varchar(36), "a0104" timestamp(0), "a0140" text, "a0199" integer))");
  EXPECT_EQ(statements[7], R"(create index "ix_item" on "s_infoitem" (lower("tblname") nulls first))");
  EXPECT_EQ(statements[8],
            R"(create index "ix_gb1_level" on "gb1" (length(dmcod) nulls first, lower("dmcod") nulls first, )"
            R"("dmattr" nulls first))");
  EXPECT_EQ(
      TriggerStatements("PostgreSQL", Small())[0],
      "create function tr_a01_delete() returns trigger language plpgsql as $$ begin if not exists (select "
      "1 from a01 where lower(a00) = lower(old.a00)) then delete from \"a02\" where lower(a00) = "
      "lower(old.a00); end if; return null; end $$");
}

TEST(Schemas, OnMariadbHaveAKeyOfTheirOwn) {
  const Statements statements = TableStatements("MariaDB", Small());
  ASSERT_EQ(statements.size(), 8U) << "it has no index on a function";
  EXPECT_EQ(
      statements[0],
      "create table `s_infoitem` (entry_number bigint unsigned not null auto_increment invisible primary "
      "key, `tblname` varchar(10), `Check` varchar(60), `IsNUll` tinyint(1) not null, key `ix_item` "
      "(`tblname`)) engine = InnoDB "
      "character set utf8mb4 collate utf8mb4_general_nopad_ci");
  EXPECT_EQ(
      statements[4],
      "create view S_GUID as select id, val from dossierkit_guid where connection = connection_id() and "
      "node = dossierkit_node()");
  EXPECT_EQ(
      statements[6],
      "create table `A01` (entry_number bigint unsigned not null auto_increment invisible primary key, "
      "`A00` varchar(36), `A0104` datetime, `A0140` mediumtext, `A0199` integer) engine = InnoDB character "
      "set utf8mb4 collate utf8mb4_general_nopad_ci");
  EXPECT_EQ(
      TriggerStatements("MariaDB", Small())[0],
      "create trigger tr_A01_delete after delete on A01 for each row begin if not exists (select 1 from A01 "
      "where A00 = old.A00) then delete from `A02` where A00 = old.A00; end if; end");
}

// Nothing is lost on the way from a file to a file.
TEST(Schemas, OfAFileAreWrittenAsTheyWereRead) {
  const auto other = tests::OpenInMemory();
  for (const auto& statements : {TableStatements("SQLite", Small()), TriggerStatements("SQLite", Small())}) {
    for (const std::string& statement : statements) other->RunScript(statement);
  }
  const Schema schema = SchemaOf(StoreOf(*other));
  const Schema small = Small();
  EXPECT_EQ(TableStatements("SQLite", schema), TableStatements("SQLite", small));
  EXPECT_EQ(TableStatements("SQLite", small)[0],
            R"(create table "s_infoitem" ("tblname" varchar(10) collate nocase, "Check" varchar(60) collate )"
            R"(nocase, "IsNUll" boolean not null))");
  EXPECT_EQ(TriggerStatements("SQLite", small)[0],
            "create trigger tr_A01_delete after delete on A01 when not exists (select 1 from A01 where A00 = "
            "old.A00) begin delete from \"A02\" where A00 = old.A00;  end");
}

TEST(Schemas, KeepAUniqueIndex) {
  const Schema schema = Of("create table T (a integer); create unique index ix_T on T (a)");
  ASSERT_EQ(schema.indexes.size(), 1U);
  EXPECT_TRUE(schema.indexes[0].is_unique);
  EXPECT_EQ(TableStatements("SQLite", schema)[1], R"(create unique index "ix_T" on "T" ("a"))");
}

// As a server has them on which an index belongs to its table.
TEST(Schemas, KeepIndexesOfOneNameApart) {
  Schema schema = Of("create table GB1 (dmcod varchar(10)); create table GB2 (DMCOD varchar(10), n integer)");
  schema.indexes = {{"dmcod", "GB1", {"dmcod"}, false},
                    {"DMCOD", "GB2", {"DMCOD"}, true},
                    {"gb1", "GB2", {"n"}, false},
                    {"GB2_dmcod", "GB1", {"dmcod"}, false}};
  const Statements postgresql = TableStatements("PostgreSQL", schema);
  ASSERT_EQ(postgresql.size(), 6U);
  EXPECT_EQ(postgresql[2], R"(create index "dmcod" on "gb1" (lower("dmcod") nulls first))");
  EXPECT_EQ(postgresql[3], R"(create unique index "gb2_dmcod" on "gb2" (lower("dmcod") nulls first))");
  EXPECT_EQ(postgresql[4], R"(create index "gb2_gb1" on "gb2" ("n" nulls first))");
  EXPECT_EQ(postgresql[5], R"(create index "gb1_gb2_dmcod" on "gb1" (lower("dmcod") nulls first))");
  const Statements sqlite = TableStatements("SQLite", schema);
  EXPECT_EQ(sqlite[3], R"(create unique index "GB2_DMCOD" on "GB2" ("DMCOD"))");
  const auto file = tests::OpenInMemory();
  for (const std::string& statement : sqlite) file->RunScript(statement);
  EXPECT_EQ(SchemaOf(StoreOf(*file)).indexes.size(), 4U);
  EXPECT_NE(TableStatements("MariaDB", schema)[1].find("unique key `DMCOD` (`DMCOD`), key `gb1` (`n`)"),
            std::string::npos);
}

// The file of a host of its own, in whatever words.
TEST(Schemas, OfAFileAreUnderstoodHoweverTheyAreWritten) {
  const Schema schema =
      Of("CREATE TABLE [A02] (\n\t[A00]\tVARCHAR(36) NOT NULL DEFAULT '',\n\t`A0202` text /* a, b */,\n"
         "\t'A0203'  TimeStamp, -- (\n\tA0299\tINT NOT\nNULL DEFAULT 0, PRIMARY KEY (A00, A0299),"
         " CHECK (A0299 > 0));"
         "CREATE TABLE \"no te\" (\"of, all\" nvarchar ( 30 ), b BIT, s SHORT, d decimal(8,2), g INT AS (s + "
         "1))");
  ASSERT_EQ(schema.tables.size(), 2U);
  EXPECT_TRUE(IsSetOfMany(schema.tables[0]));
  EXPECT_EQ(TableStatements("PostgreSQL", schema)[0],
            R"(create table "a02" ("a00" varchar(36) not null, "a0202" text, "a0203" timestamp(0), )"
            R"("a0299" integer not null))");
  EXPECT_EQ(TableStatements("SQLite", schema)[1],
            R"(create table "no te" ("of, all" varchar(30) collate nocase, "b" boolean, "s" smallint, )"
            R"("d" double, "g" integer))");
}

TEST(Schemas, OfAFileDrawIdentifiersInSGuidAlone) {
  const Schema schema =
      Of("create table B (id varchar(60) default '', n integer default 0);"
         "create table s_guid (ID varchar(38) DEFAULT ('x'), val varchar(10) default 'a')");
  EXPECT_FALSE(schema.tables[0].columns[0].draws_identifier);
  EXPECT_FALSE(schema.tables[0].columns[1].draws_identifier);
  EXPECT_TRUE(schema.tables[1].columns[0].draws_identifier);
  EXPECT_FALSE(schema.tables[1].columns[1].draws_identifier);
  EXPECT_EQ(TableStatements("MariaDB", schema)[0],
            "create table `B` (entry_number bigint unsigned not null auto_increment invisible primary key, "
            "`id` varchar(60), `n` integer) engine = InnoDB character set utf8mb4 collate "
            "utf8mb4_general_nopad_ci");
}

TEST(Schemas, OfAFileKeepItsIndexesOnColumnsAndTheirLengths) {
  const Schema schema =
      Of("create table T (a varchar(9), \"b c\" integer);"
         "create index ix_unique_a on T ([a] collate nocase desc, \"b c\");"
         "CREATE\tUNIQUE  INDEX plain ON T (`b c`);"
         "create index level on T (a, -- (first\n LENGTH ( \"a\" ), \"b c\");"
         "create index of_some on T (a) where a <> '';"
         "create index calculated on T (a, lower(a));"
         "create index longer on T (length(a) + 1)");
  ASSERT_EQ(schema.indexes.size(), 3U);
  EXPECT_EQ(schema.indexes[0].name, "ix_unique_a");
  EXPECT_FALSE(schema.indexes[0].is_unique);
  EXPECT_EQ(schema.indexes[0].items, (Statements{"a", "b c"}));
  EXPECT_EQ(schema.indexes[1].name, "plain");
  EXPECT_TRUE(schema.indexes[1].is_unique);
  EXPECT_EQ(schema.indexes[1].items, Statements{"b c"});
  EXPECT_EQ(schema.indexes[2].name, "level");
  EXPECT_EQ(schema.indexes[2].table, "T");
  EXPECT_EQ(schema.indexes[2].items, (Statements{"a", "length(a)", "b c"}));
}

TEST(Schemas, ATypeThatNotEveryEngineHasIsRefusedByItsName) {
  const auto told = [](const char* script) {
    try {
      Of(script);
    } catch (const environment::Failure& failure) {
      return failure.description();
    }
    return std::string("read");
  };
  EXPECT_EQ(told("create table T (a integer, b blob)"),
            "表 T 的列 b 的类型“BLOB”不能复制，没有做任何改动：请改用本系统的类型。");
  EXPECT_EQ(told("create table notes (id, text)"),
            "表 notes 的列 id 的类型“”不能复制，没有做任何改动：请改用本系统的类型。");
  EXPECT_EQ(told("create table T (a integer, b varchar, c json_text)"), "read");
}

}  // namespace
}  // namespace dossierkit::server
