#include "tests/adapters/conformance.h"

#include "platform/environment/text.h"
#include "tests/support/servers.h"

namespace dossierkit::conformance {
namespace {

// As in conformance_fixture.h; in braces what each server has its own word for.
constexpr char kTables[] = R"(
  create table s_infotable(tblname varchar(10), tbldesc varchar(60), OtherProp integer, orderfield varchar(60),
    maxnumber integer, Property boolean);
  create table s_infoitem(tblname varchar(10), itemname varchar(10), itemdesc varchar(60), FieldType varchar(20),
    FieldLength varchar(10), CodeTable varchar(30), style varchar(20), {quote}check{quote} varchar(60),
    FldOrder varchar(10), FldWidth integer, FldExplain varchar(255), {quote}isnull{quote} boolean);
  create table s_CodeTableDefine(dmgrp varchar(30), codtbldsc varchar(60));
  create table s_CodeLevDefine(dmgrp varchar(30), levelnum integer, {quote}bit{quote} integer);
  create table S_GUID(id varchar(38) default {guid}, val varchar(10));
  create table GB1(dmcod varchar(10), dmcpt varchar(60), dmhnd varchar(30), dmattr boolean);
  create table GB2(dmcod varchar(10), dmcpt varchar(60), dmhnd varchar(30), dmattr boolean);
  create table A01(A00 varchar(36), A0101 varchar(20), A0104 {datetime}, A0136 integer, A0199 integer);
  create table A02(A00 varchar(36), A0201 {datetime}, A0201A {datetime}, A0202 varchar(60), A0203 varchar(60),
    A0204 varchar(10), A0205 smallint, A0206 {bit}, A0207 double precision, A0299 integer);
)";

struct Words {
  const char* quote;
  const char* datetime;
  const char* bit;
  const char* guid;
};
constexpr Words kPostgresql{"\"", "timestamp", "boolean", "('{' || gen_random_uuid() || '}')"};
constexpr Words kMariadb{"`", "datetime", "bit(1)", "(concat('{', uuid(), '}'))"};

}  // namespace

std::shared_ptr<ado::Connection> OpenConformanceDatabase() {
  const std::string engine = tests::ServerOfThisRun();
  const bool is_postgresql = engine == "postgresql";
  const Words& words = is_postgresql ? kPostgresql : kMariadb;
  tests::MakeDatabase(engine, "conformance");
  auto connection = tests::OpenServer(engine, "conformance");
  std::string tables = kTables;
  tables = environment::Replace(tables, "{quote}", words.quote);
  tables = environment::Replace(tables, "{datetime}", words.datetime);
  tables = environment::Replace(tables, "{bit}", words.bit);
  tables = environment::Replace(tables, "{guid}", words.guid);
  for (const std::string& table : environment::Split(tables, ";\n")) {
    if (table.find("create") != std::string::npos) connection->RunNative(table);
  }
  return connection;
}

}  // namespace dossierkit::conformance
