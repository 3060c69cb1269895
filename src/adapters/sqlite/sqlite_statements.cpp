#include "adapters/sqlite/sqlite_statements.h"

#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "adapters/sqlite/sqlite_functions.h"
#include "platform/environment/failure.h"
#include "platform/jet/tokens.h"

namespace dossierkit::sqlite {
namespace {

ado::Column ColumnAt(sqlite3_stmt* prepared, int index, const jet::Statement& statement) {
  const char* name = sqlite3_column_name(prepared, index);
  const char* declared = sqlite3_column_decltype(prepared, index);
  return statement.ColumnAt(static_cast<std::size_t>(index), name == nullptr ? "" : name,
                            declared == nullptr ? std::optional<std::string_view>() : declared);
}

void AppendCell(ado::Snapshot& rows, sqlite3_stmt* prepared, int index) {
  switch (sqlite3_column_type(prepared, index)) {
    case SQLITE_NULL: return rows.AppendNull();
    case SQLITE_INTEGER: return rows.AppendInteger(sqlite3_column_int64(prepared, index));
    case SQLITE_FLOAT: return rows.AppendFloating(sqlite3_column_double(prepared, index));
    default: break;
  }
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(prepared, index));
  const auto size = static_cast<std::size_t>(sqlite3_column_bytes(prepared, index));
  rows.AppendText(text == nullptr ? std::string_view() : std::string_view(text, size));
}

}  // namespace

Statements::Statements(const Handle& handle)
    : handle_(handle),
      tables_({[this] { return SchemaVersion(); },
               [this](const std::string& table) { return ColumnsOf(table); }}),
      renderer_(kRenderer) {}

void Statements::StoreInFile(bool they_do) { renderer_.stored_in = they_do ? "main." : ""; }

ado::Snapshot Statements::Run(const std::string& statement) {
  jet::Statement translated = tables_.Translate(statement, renderer_);
  if (translated.kind != jet::Statement::Kind::kUpdate) return Rows(translated, statement);
  while (!TryUpdate(translated, statement)) translated = tables_.Translate(statement, renderer_);
  return {};
}

std::int64_t Statements::SchemaVersion() {
  static const std::string kText = "pragma schema_version";
  if (!schema_version_) schema_version_ = handle_.Prepare(kText, kText);
  const bool row = handle_.Step(schema_version_.get(), kText);
  const std::int64_t version = row ? sqlite3_column_int64(schema_version_.get(), 0) : 0;
  sqlite3_reset(schema_version_.get());
  return version;
}

jet::TableColumns Statements::ColumnsOf(const std::string& table) const {
  const std::string text = "select name, type from pragma_table_info(" + jet::LiteralOf(table) + ")";
  const Prepared prepared = handle_.Prepare(text, text);
  jet::TableColumns columns;
  while (handle_.Step(prepared.get(), text)) {
    columns.push_back(jet::ColumnOfDeclaration(TextOf(sqlite3_column_text(prepared.get(), 0)),
                                               TextOf(sqlite3_column_text(prepared.get(), 1))));
  }
  return columns;
}

ado::Snapshot Statements::Rows(const jet::Statement& translated, const std::string& statement) const {
  const Prepared prepared = handle_.Prepare(translated.text, statement);
  const int column_count = sqlite3_column_count(prepared.get());
  ado::Snapshot rows;
  // The first step compiles the statement anew if the schema has changed: only then are the columns
  // those of the rows.
  bool more = handle_.Step(prepared.get(), statement);
  for (int i = 0; i < column_count; ++i) rows.AddColumn(ColumnAt(prepared.get(), i, translated));
  for (; more; more = handle_.Step(prepared.get(), statement)) {
    for (int i = 0; i < column_count; ++i) AppendCell(rows, prepared.get(), i);
  }
  return rows;
}

// Runs an update with its constants as parameters, and keeps the last one prepared. A renumbering sends the
// same one for every row of a table, so that the schema is not looked at each time: should it have changed,
// the engine refuses what was prepared. False, and nothing was done, where the schema has changed since the
// statement was translated.
bool Statements::TryUpdate(const jet::Statement& translated, const std::string& statement) {
  std::string shape = translated.WithParameters();
  if (!update_ || shape != update_shape_) {
    update_.reset();
    if (tables_.ForgetOldSchema()) return false;
    update_ = handle_.PrepareForThisSchema(shape, statement);
    update_shape_ = std::move(shape);
  }
  int index = 0;
  for (const jet::Constant& constant : translated.constants) Bind(++index, translated.ValueOf(constant));
  sqlite3_step(update_.get());
  // Takes no lock into the next statement, and tells what the step came to.
  const int result = sqlite3_reset(update_.get());
  if (result == SQLITE_OK) return true;
  if (result == SQLITE_SCHEMA) {
    update_.reset();
    return false;
  }
  environment::Failure failure = FailureOf(handle_.Get(), statement);
  if (tables_.ForgetOldSchema()) return false;
  throw failure;
}

// As the same constant in an insert is stored.
void Statements::Bind(int index, const environment::Value& value) const {
  if (const auto* whole = value.As<std::int64_t>()) {
    sqlite3_bind_int64(update_.get(), index, *whole);
  } else if (const auto* number = value.As<double>()) {
    sqlite3_bind_double(update_.get(), index, *number);
  } else if (const auto* truth = value.As<bool>()) {
    sqlite3_bind_int(update_.get(), index, *truth ? 1 : 0);
  } else {
    const auto* date = value.As<environment::DateTime>();
    const std::string text = date ? jet::TextOfDate(*date) : environment::TextOf(value);
    sqlite3_bind_text(update_.get(), index, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
  }
}

}  // namespace dossierkit::sqlite
