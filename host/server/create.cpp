#include "host/server/create.h"

#include <cstddef>
#include <cstdint>

#include "host/server/schema.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/jet/renderer.h"

namespace dossierkit::server {
namespace {

constexpr std::int32_t kRowsOfAStatement = 200;

void RequireEmpty(const Schema& schema, odbc::OdbcConnection& to) {
  for (const Table& table : schema.tables) {
    try {
      to.Run("select count(*) from " + table.name);
    } catch (const environment::Failure& failure) {
      if (failure.number() == environment::kNoSuchTable) continue;
      throw;
    }
    throw environment::Failure(environment::kEngineFailure,
                               "数据库中已有表 " + table.name + "，没有做任何改动：请指定一个空的数据库。");
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
  RequireEmpty(schema, to);
  for (const std::string& statement : StatementsFor(to.EngineName(), schema)) to.RunNative(statement);
  to.BeginTrans();
  try {
    for (const Table& table : schema.tables) CopyRows(from, to, table);
    to.CommitTrans();
  } catch (...) {
    to.RollbackTrans();
    throw;
  }
}

}  // namespace dossierkit::server
