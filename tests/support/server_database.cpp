#include "tests/support/server_database.h"

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

#include "adapters/odbc/odbc_connection.h"
#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/copy.h"
#include "host/server/schema.h"
#include "platform/ado/recordset.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "tests/support/paths.h"
#include "tests/support/servers.h"

namespace dossierkit::tests {
namespace {

using environment::LowerCase;
using odbc::OdbcConnection;

constexpr char kTemplate[] = "dossierkit_template";
constexpr char kScratch[] = "s_guid";

// One copy, used by one test after the other: what a test wrote is put right before the next one has it.
struct Copy {
  std::string name;
  std::shared_ptr<OdbcConnection> connection;
  std::set<std::string> written;  // tables in small letters
  std::set<std::string> altered;  // and those that were made, changed or dropped
};

// The copies of the sample on one server. A schema or database "kept" holds the rows as they were.
class Copies {
 public:
  explicit Copies(std::string engine) : engine_(std::move(engine)), is_postgresql_(engine_ == "postgresql") {
    sqlite::SqliteConnection sample(SampleDatabaseFile());
    schema_ = server::SchemaOf(server::StoreOf(sample));
    server_ = OpenServer(engine_);
    if (!HasTemplate()) MakeTemplate(sample);
  }

  const server::Schema& schema() const { return schema_; }

  Copy Take() {
    if (free_.empty())
      return MakeCopy("dossier_" + std::to_string(getpid()) + "_" + std::to_string(++count_));
    Copy copy = std::move(free_.back());
    free_.pop_back();
    if (!copy.altered.empty() && is_postgresql_) {
      copy.connection.reset();
      RunAlone(*server_, "drop database " + copy.name);
      return MakeCopy(copy.name);
    }
    if (!copy.connection) {
      copy.connection = OpenServer(engine_, copy.name);
      if (!is_postgresql_) copy.connection->RunNative("set session max_recursive_iterations = 100000");
    }
    for (const std::string& table : std::exchange(copy.altered, {})) {
      if (table == kScratch) {
        RunAll(copy, server::DropStatements("MariaDB", {{Scratch()}, {}}));
      } else {
        copy.connection->RunNative("drop table if exists `" + table + "`");
      }
      const bool is_known =
          std::any_of(schema_.tables.begin(), schema_.tables.end(),
                      [&](const server::Table& known) { return LowerCase(known.name) == table; });
      if (is_known) Fill(copy, table);
      copy.written.erase(table);
    }
    for (const std::string& table : std::exchange(copy.written, {})) Restore(copy, table);
    return copy;
  }
  void GiveBack(Copy copy) { free_.push_back(std::move(copy)); }

 private:
  bool HasTemplate() {
    try {
      OpenServer(engine_, kTemplate)->Run("select * from complete");
      return true;
    } catch (const environment::Failure&) {
      return false;
    }
  }

  void MakeTemplate(sqlite::SqliteConnection& sample) {
    MakeDatabase(engine_, kTemplate);
    const auto made = OpenServer(engine_, kTemplate);
    server::CopyDatabase(server::StoreOf(sample), server::StoreOf(*made));
    if (is_postgresql_) {
      made->RunNative("create schema kept");
      for (const server::Table& table : schema_.tables)
        made->RunNative("create table kept." + table.name + " as table " + table.name);
      made->RunNative("analyze");
    }
    made->RunNative("create table complete (a integer)");
  }

  Copy MakeCopy(const std::string& name) {
    if (is_postgresql_) {
      RunAlone(*server_, "create database " + name + " template " + kTemplate + " strategy file_copy");
      return {name, OpenServer(engine_, name), {}, {}};
    }
    server_->RunNative("create database " + name);
    Copy copy{name, OpenServer(engine_, name), {}, {}};
    for (const server::Table& table : schema_.tables) Fill(copy, LowerCase(table.name));
    copy.connection->RunNative("set session max_recursive_iterations = 100000");
    return copy;
  }

  // Makes one table of a copy on MariaDB.
  void Fill(Copy& copy, const std::string& table) {
    if (table == kScratch) return RunAll(copy, server::TableStatements("MariaDB", {{Scratch()}, {}}));
    copy.connection->RunNative("create table " + table + " like " + kTemplate + "." + table);
    copy.connection->RunNative("insert into " + table + " select * from " + Kept(table));
    if (table == "a01") RunAll(copy, server::TriggerStatements("MariaDB", schema_));
  }

  static void RunAll(Copy& copy, const std::vector<std::string>& statements) {
    for (const std::string& statement : statements) copy.connection->RunNative(statement);
  }

  // What each connection sees as a table of its own.
  server::Table Scratch() const {
    return *std::find_if(schema_.tables.begin(), schema_.tables.end(), server::IsScratch);
  }

  std::string Kept(const std::string& table) const {
    return (is_postgresql_ ? "kept" : kTemplate) + ("." + table);
  }

  void Restore(Copy& copy, const std::string& table) {
    if (table == kScratch) {
      copy.connection->RunNative("delete from s_guid");
      return;
    }
    copy.connection->RunNative("truncate table " + table);
    copy.connection->RunNative("insert into " + table + " select * from " + Kept(table));
  }

  std::string engine_;
  bool is_postgresql_;
  server::Schema schema_;
  std::shared_ptr<OdbcConnection> server_;
  std::vector<Copy> free_;
  int count_ = 0;
};

// Never destroyed: the child of a death test would close the sessions of its parent.
Copies& CopiesOn(const std::string& engine) {
  static Copies& copies = *new Copies(engine);
  return copies;
}

// "name" as the dialect writes it.
std::string WithBrackets(const std::string& statement) {
  std::string text;
  bool is_open = false;
  for (const char c : statement) {
    if (c == '"') {
      text += (is_open = !is_open) ? '[' : ']';
    } else {
      text += c;
    }
  }
  return text;
}

// insert into T [(c,..)] values (v,..),(v,..) as statements of one row each with their columns, as the
// dialect wants them; `columns` are those of the table.
std::vector<std::string> RowsOf(const std::string& insert, const std::string& columns) {
  const std::size_t values = LowerCase(insert).find("values");
  if (values == std::string::npos) return {};
  std::string beginning = insert.substr(0, values);
  if (beginning.find('(') == std::string::npos) beginning += "(" + columns + ") ";
  std::vector<std::string> statements;
  std::string row;
  int depth = 0;
  bool in_text = false;
  for (const char c : insert.substr(values + 6)) {
    if (c == '\'') in_text = !in_text;
    if (c == '(' && !in_text) ++depth;
    if (depth > 0) row += c;
    if (c == ')' && !in_text && --depth == 0)
      statements.push_back(beginning + "values" + std::exchange(row, {}));
  }
  return statements;
}

// The words of a statement, in small letters, names without their brackets.
std::vector<std::string> WordsOf(const std::string& statement) {
  std::vector<std::string> words(1);
  for (const char c : statement.substr(0, 200)) {
    if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_') {
      words.back() += c;
    } else if (!words.back().empty()) {
      words.emplace_back();
    }
  }
  for (std::string& word : words) word = LowerCase(word);
  words.resize(std::max<std::size_t>(words.size(), 3));
  return words;
}

class ServerDatabase : public Database {
 public:
  explicit ServerDatabase(const std::string& engine)
      : engine_(engine), copies_(CopiesOn(engine)), copy_(copies_.Take()) {}
  ~ServerDatabase() override {
    // Its transaction goes with the session.
    if (had_transaction_ || !copy_.connection->IsOpen()) copy_.connection.reset();
    copies_.GiveBack(std::move(copy_));
  }
  ServerDatabase(const ServerDatabase&) = delete;
  ServerDatabase& operator=(const ServerDatabase&) = delete;

  bool IsOpen() const override { return copy_.connection->IsOpen(); }
  ado::Snapshot Run(const std::string& statement) override {
    Note(statement);
    return copy_.connection->Run(statement);
  }
  std::int32_t BeginTrans() override {
    had_transaction_ = true;
    return copy_.connection->BeginTrans();
  }
  void CommitTrans() override { copy_.connection->CommitTrans(); }
  void RollbackTrans() override { copy_.connection->RollbackTrans(); }

  void RunScript(const std::string& script) override {
    for (const std::string& statement : StatementsOf(script)) {
      // By the dialect where it can, since Booleans and dates are written as SQLite takes them.
      try {
        Run(WithBrackets(statement));
      } catch (const environment::Failure& failure) {
        if (failure.number() != environment::kSyntaxError) throw;
        RunPastTheDialect(statement);
      }
    }
  }

  std::string Bytes() override {
    std::string bytes;
    for (const server::Table& table : copies_.schema().tables) {
      const auto rows = copy_.connection->Execute("select * from " + table.name);
      std::vector<std::string> lines;
      for (std::int32_t row = 1; row <= rows->RecordCount(); ++row) {
        std::string line = table.name;
        for (std::size_t column = 0; column < rows->FieldCount(); ++column)
          line += "|" + environment::TextOr(rows->ValueAt(row, column), "NULL");
        lines.push_back(line);
      }
      std::sort(lines.begin(), lines.end());
      for (const std::string& line : lines) bytes += line + "\n";
    }
    return bytes;
  }

  void Close() override { copy_.connection->Close(); }

 private:
  void RunPastTheDialect(const std::string& statement) {
    Note(statement);
    try {
      copy_.connection->RunNative(ForServer(engine_, statement));
    } catch (const environment::Failure&) {
      // Numbers for Booleans, in more rows than the dialect takes at once.
      const auto words = WordsOf(statement);
      if (words[0] != "insert") throw;
      const auto table = copy_.connection->Execute("select * from " + words[2] + " where 1=0");
      std::string columns;
      for (std::size_t i = 0; i < table->FieldCount(); ++i)
        columns += (i > 0 ? ",[" : "[") + table->FieldName(i) + "]";
      const auto rows = RowsOf(statement, columns);
      if (rows.empty()) throw;
      for (const std::string& row : rows) copy_.connection->Run(row);
    }
  }

  // Keeps what will have to be put right.
  void Note(const std::string& statement) {
    const std::size_t insert = LowerCase(statement).find("insert into");
    const bool has_source = LowerCase(statement).starts_with("with ") && insert != std::string::npos;
    const auto words = WordsOf(has_source ? statement.substr(insert) : statement);
    if (words[0] == "select") return;
    const bool is_update = words[0] == "update";
    if (!is_update && words[0] != "insert" && words[0] != "delete") {
      // create table X, alter table X, drop table X; the only trigger is that of A01.
      copy_.altered.insert(words[1] == "trigger" ? "a01" : words[2]);
      if (words.size() > 5 && words[3] == "rename") copy_.altered.insert(words[5]);
      return;
    }
    const std::string& table = words[is_update ? 1 : 2];
    for (const server::Table& known : copies_.schema().tables) {
      const bool goes_along =
          words[0] == "delete" && table == "a01" && known.columns.front().name == "A00";  // by the trigger
      if (LowerCase(known.name) == table || goes_along) copy_.written.insert(LowerCase(known.name));
    }
  }

  std::string engine_;
  Copies& copies_;
  Copy copy_;
  bool had_transaction_ = false;
};

}  // namespace

std::shared_ptr<Database> SampleOnServer(const std::string& engine) {
  return std::make_shared<ServerDatabase>(engine);
}

std::vector<std::string> StatementsOf(const std::string& script) {
  std::vector<std::string> statements(1);
  bool in_text = false;
  for (const char c : script) {
    if (c == '\'') in_text = !in_text;
    if (c == ';' && !in_text) {
      statements.emplace_back();
    } else {
      statements.back() += c;
    }
  }
  std::erase_if(statements, [](const std::string& statement) {
    return statement.find_first_not_of(" \n") == std::string::npos;
  });
  return statements;
}

std::string ForServer(const std::string& engine, const std::string& statement) {
  const bool is_postgresql = engine == "postgresql";
  if (is_postgresql && LowerCase(statement).find("drop trigger") != std::string::npos)
    return statement + " on a01";
  // On a server it is a view.
  if (LowerCase(statement).find("drop table s_guid") != std::string::npos) return "drop view s_guid";
  // with .. insert into T(..) select: MariaDB wants the first part behind the second.
  const std::size_t insert = LowerCase(statement).find("insert into");
  if (!is_postgresql && insert != std::string::npos && LowerCase(statement).starts_with("with ")) {
    const std::size_t select = LowerCase(statement).find("select", insert);
    return statement.substr(insert, select - insert) + statement.substr(0, insert) + statement.substr(select);
  }
  std::string text = environment::Replace(statement, " collate nocase", "");
  text = environment::Replace(text, " datetime", is_postgresql ? " timestamp(0)" : " datetime");
  text = environment::Replace(text, " ntext", is_postgresql ? " text" : " mediumtext");
  // A name in double quotes.
  for (std::size_t begin = 0; (begin = text.find('"', begin)) != std::string::npos; ++begin) {
    const std::size_t end = text.find('"', begin + 1);
    const std::string name = text.substr(begin + 1, end - begin - 1);
    text.replace(begin, end - begin + 1, is_postgresql ? "\"" + LowerCase(name) + "\"" : "`" + name + "`");
    begin += name.size() + 1;
  }
  return text;
}

}  // namespace dossierkit::tests
