#include "adapters/odbc/odbc_statements.h"

#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>

#include "platform/environment/text.h"
#include "platform/jet/coerce.h"
#include "platform/jet/statement.h"
#include "platform/jet/tokens.h"

namespace dossierkit::odbc {
namespace {

using ado::ColumnKind;

ado::Column ColumnAt(Query& query, int index, const jet::Statement& statement) {
  const auto at = static_cast<std::size_t>(index);
  ado::Column column = statement.ColumnAt(at, query.ColumnName(index), {});
  // Of an expression the statement may know better.
  if (column.kind == ColumnKind::kUnknown) column.kind = query.KindOf(index);
  return column;
}

template <typename Cell, typename Append>
void AppendOr(ado::Snapshot& rows, const Cell& cell, Append append) {
  if (cell) {
    append(*cell);
  } else {
    rows.AppendNull();
  }
}

void AppendCell(ado::Snapshot& rows, Query& query, int index) {
  switch (rows.ColumnAt(static_cast<std::size_t>(index)).kind) {
    case ColumnKind::kBoolean:
    case ColumnKind::kInteger:
      return AppendOr(rows, query.Integer(index), [&](std::int64_t value) { rows.AppendInteger(value); });
    case ColumnKind::kFloating:
      return AppendOr(rows, query.Floating(index), [&](double value) { rows.AppendFloating(value); });
    case ColumnKind::kDate:
      return AppendOr(rows, query.Date(index),
                      [&](const environment::DateTime& value) { rows.AppendText(jet::TextOfDate(value)); });
    case ColumnKind::kText:
    case ColumnKind::kUnknown: break;
  }
  AppendOr(rows, query.Text(index), [&](const std::string& text) { rows.AppendText(text); });
}

}  // namespace

Statements::Statements(Session& session)
    : session_(session),
      tables_({[this] {
                 const std::string answer = session_.Ask(std::string(session_.engine().schema_version));
                 std::int64_t version = 0;
                 std::from_chars(answer.data(), answer.data() + answer.size(), version);
                 return version;
               },
               [this](const std::string& table) { return ColumnsOf(table); },
               // The question costs as much as the insert itself, or ten times that.
               session_.engine().renderer.is_strict}) {}

ado::Snapshot Statements::Run(const std::string& statement) {
  while (true) {
    const jet::Statement translated = tables_.Translate(statement, session_.engine().renderer);
    try {
      return session_.Told(statement, [&] { return Rows(translated); });
    } catch (const environment::Failure&) {
      // The tables may have changed since their columns were read; but nothing is repeated behind a
      // transaction that has gone.
      if (session_.IsLost() || session_.IsUndone() || !tables_.ForgetOldSchema()) throw;
    }
  }
}

ado::Snapshot Statements::RunNative(const std::string& text) {
  tables_.Forget();
  jet::Statement native;
  native.text = text;
  return session_.Told(text, [&] { return Rows(native); });
}

jet::TableColumns Statements::ColumnsOf(const std::string& table) {
  const std::string text = environment::Replace(session_.engine().columns, "%",
                                                jet::ConstantOf(table, session_.engine().renderer));
  return session_.Told(text, [&] {
    Query query(session_.link());
    query.Execute(text);
    jet::TableColumns columns;
    while (query.Fetch()) {
      const std::string* name = query.Text(0);
      if (name == nullptr) continue;
      std::string column = *name;
      const std::string* type = query.Text(1);
      columns.push_back(jet::ColumnOfDeclaration(std::move(column), type == nullptr ? "" : *type));
    }
    return columns;
  });
}

ado::Snapshot Statements::Rows(const jet::Statement& translated) {
  Query query(session_.link());
  query.Execute(translated.text);
  ado::Snapshot rows;
  if (translated.kind != jet::Statement::Kind::kSelect) return rows;
  const int count = query.ColumnCount();
  for (int i = 0; i < count; ++i) rows.AddColumn(ColumnAt(query, i, translated));
  while (count > 0 && query.Fetch()) {
    for (int i = 0; i < count; ++i) AppendCell(rows, query, i);
  }
  return rows;
}

}  // namespace dossierkit::odbc
