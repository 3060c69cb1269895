#include "host/server/create.h"

#include <cstddef>
#include <cstdint>

#include "host/server/schema.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/value.h"
#include "platform/jet/renderer.h"

namespace dossierkit::server {
namespace {

constexpr std::int32_t kRowsOfAStatement = 200;

// The first cell of what a question gives, empty where it gives no row.
std::string Answer(odbc::OdbcConnection& server, const std::string& question) {
  const ado::Snapshot rows = server.RunNative(question);
  return rows.RowCount() == 0 ? std::string() : environment::TextOf(rows.ValueAt(0, 0));
}

void RequireEmpty(odbc::OdbcConnection& to) {
  const std::string table = Answer(to, AnyTableQuestion(to.EngineName()));
  if (!table.empty()) {
    throw environment::Failure(environment::kEngineFailure,
                               "数据库中已有表 " + table + "，没有做任何改动：请指定一个空的数据库。");
  }
  const auto question = UnfitQuestion(to.EngineName());
  if (!question) return;
  const std::string settings = Answer(to, *question);
  if (!settings.empty()) {
    throw environment::Failure(environment::kEngineFailure,
                               "数据库的编码和排序规则是 " + settings +
                                   "，没有做任何改动：请建立编码为 UTF8、排序规则为 C 的数据库。");
  }
}

// What was made before a failure, where the server keeps it.
void DropMade(const Schema& schema, odbc::OdbcConnection& to) {
  for (const Table& table : schema.tables) {
    try {
      to.RunNative("drop table if exists " + QuotedName(to.EngineName(), table.name));
    } catch (const environment::Failure&) {
      // The server has gone; the first failure tells it.
    }
  }
}

std::string Written(const environment::Value& value, const jet::Renderer& renderer) {
  return value.IsNull() ? "null" : jet::ConstantOf(value, renderer);
}

void CopyRows(ado::Connection& from, odbc::OdbcConnection& to, const Table& table) {
  const auto rows = from.Execute("select * from " + table.name);
  std::string beginning = "insert into " + QuotedName(to.EngineName(), table.name) + " (";
  for (std::size_t column = 0; column < table.columns.size(); ++column) {
    beginning += (column > 0 ? "," : "") + QuotedName(to.EngineName(), table.columns[column].name);
  }
  beginning += ") values ";
  std::string statement;
  for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
    statement += statement.empty() ? beginning + "(" : ",(";
    for (std::size_t column = 0; column < table.columns.size(); ++column) {
      statement += (column > 0 ? "," : "") + Written(rows->ValueAt(row, column), to.EngineRenderer());
    }
    statement += ")";
    if (row % kRowsOfAStatement == 0 || row == rows->RecordCount()) {
      to.RunNative(statement);
      statement.clear();
    }
  }
}

}  // namespace

void CreateFrom(ado::Connection& from, odbc::OdbcConnection& to) {
  const Schema schema = SchemaOf(from);
  RequireEmpty(to);
  to.BeginTrans();
  try {
    for (const std::string& statement : StatementsFor(to.EngineName(), schema)) to.RunNative(statement);
    for (const Table& table : schema.tables) CopyRows(from, to, table);
    to.CommitTrans();
  } catch (...) {
    to.RollbackTrans();
    DropMade(schema, to);
    throw;
  }
}

}  // namespace dossierkit::server
