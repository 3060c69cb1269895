#include "host/server/copy.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "host/server/schema.h"
#include "host/server/words.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"
#include "platform/environment/value.h"
#include "platform/jet/coerce.h"
#include "platform/jet/engine_failure.h"

namespace dossierkit::server {
namespace {

using environment::Failure;
using environment::Value;

// What one statement holds at most: servers limit its length.
constexpr std::size_t kRowsOfAStatement = 200;
constexpr std::size_t kBytesOfAStatement = std::size_t{512} * 1024;

// The first cell of what a question gives, empty where it gives no row.
std::string Answer(const Store& store, std::string_view question) {
  if (question.empty()) return {};
  const ado::Snapshot rows = store.run_native(std::string(question));
  return rows.RowCount() == 0 ? std::string() : environment::TextOf(rows.ValueAt(0, 0));
}

[[noreturn]] void RefuseTable(const std::string& table) {
  throw Failure(environment::kEngineFailure,
                "数据库中已有表 " + table + "，没有做任何改动：请指定一个空的数据库。");
}

void RequireEmpty(const Store& to) {
  const Words& words = WordsOf(to.engine);
  if (words.any_table.empty()) {
    const Schema schema = SchemaOf(to);
    if (!schema.tables.empty()) RefuseTable(schema.tables.front().name);
  }
  const std::string table = Answer(to, words.any_table);
  if (!table.empty()) RefuseTable(table);
  const std::string settings = Answer(to, words.unfit);
  if (!settings.empty()) {
    throw Failure(environment::kEngineFailure,
                  "数据库的编码和排序规则是 " + settings +
                      "，没有做任何改动：请建立编码为 UTF8、排序规则为 C 的数据库。");
  }
}

ado::Snapshot RowsOf(const Store& store, const Table& table) {
  return store.connection->Run("select * from [" + table.name + "]");
}

constexpr std::uint64_t kFirstHash = 0xCBF29CE484222325U;  // of FNV-1a, 64 bits

std::uint64_t HashOf(std::string_view bytes, std::uint64_t hash) {
  for (const char c : bytes) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 0x100000001B3U;
  }
  return hash;
}

// A value with its kind and length, so that no two rows are written alike.
std::string Unmistakable(const Value& value) {
  if (value.IsNull()) return "N";
  const auto* date = value.As<environment::DateTime>();
  const std::string text = date ? jet::TextOfDate(*date) : environment::TextOf(value);
  const char kind = date ? 'D' : value.As<bool>() ? 'B' : value.As<std::string>() ? 'T' : 'I';
  return kind + std::to_string(text.size()) + ":" + text;
}

std::uint64_t ChecksumOf(const ado::Snapshot& rows) {
  std::uint64_t sum = 0;
  for (std::size_t row = 0; row < rows.RowCount(); ++row) {
    std::uint64_t hash = kFirstHash;
    for (std::size_t column = 0; column < rows.ColumnCount(); ++column)
      hash = HashOf(Unmistakable(rows.ValueAt(row, column)), hash);
    // The sum of the rows, each of them mixed once more: rows that differ in little do not make up for one
    // another.
    hash ^= hash >> 31;
    hash *= 0x9E3779B97F4A7C15U;
    sum += hash ^ (hash >> 29);
  }
  return sum;
}

CopiedTable FiguresOf(const Table& table, const ado::Snapshot& rows) {
  return {table.name, static_cast<std::int64_t>(rows.RowCount()), ChecksumOf(rows)};
}

std::string Written(const Value& value, const jet::Renderer& renderer) {
  return value.IsNull() ? "null" : jet::ConstantOf(value, renderer);
}

// While it lives, nobody else makes that database, or clears away what seems to be left of it.
class Claim {
 public:
  explicit Claim(const Store& store) : store_(store), words_(WordsOf(store.engine)) {
    if (!words_.claim.empty() && Answer(store, words_.claim) != "1")
      throw jet::FailureOf(jet::EngineFailure::kBusy, {}, std::string(words_.claim));
  }
  ~Claim() {
    try {
      Answer(store_, words_.release);
    } catch (const std::exception&) {
      // It ended with its session.
    }
  }
  Claim(const Claim&) = delete;
  Claim& operator=(const Claim&) = delete;

 private:
  const Store& store_;
  const Words& words_;
};

class Copier {
 public:
  Copier(const Store& from, const Store& to, const Progress& progress)
      : from_(from), to_(to), progress_(progress), schema_(SchemaOf(from)) {}

  std::vector<CopiedTable> Run() {
    // What an earlier copy left whose server went away under it.
    if (Answer(to_, words_.is_being_made) == "1") DropAll();
    RequireEmpty(to_);
    CountRows();
    to_.connection->BeginTrans();
    try {
      std::vector<CopiedTable> copied = Fill();
      to_.connection->CommitTrans();
      return copied;
    } catch (...) {
      Undo();
      throw;
    }
  }

 private:
  void CountRows() {
    for (const Table& table : schema_.tables) {
      if (IsScratch(table)) continue;
      const ado::Snapshot rows = from_.connection->Run("select count(*) from [" + table.name + "]");
      all_ += environment::ToInt32(rows.ValueAt(0, 0));
    }
    Tell();
  }

  std::vector<CopiedTable> Fill() {
    if (!words_.begin_making.empty()) to_.run_native(std::string(words_.begin_making));
    for (const std::string& statement : TableStatements(to_.engine, schema_)) to_.run_native(statement);
    std::vector<CopiedTable> copied;
    for (const Table& table : schema_.tables) {
      if (IsScratch(table)) continue;
      const ado::Snapshot rows = RowsOf(from_, table);
      CopyRows(table, rows);
      copied.push_back(FiguresOf(table, rows));
      RequireEqual(copied.back(), FiguresOf(table, RowsOf(to_, table)));
    }
    // A trigger would step in where rows are copied.
    for (const std::string& statement : TriggerStatements(to_.engine, schema_)) to_.run_native(statement);
    is_ending_ = true;
    if (!words_.end_making.empty()) to_.run_native(std::string(words_.end_making));
    return copied;
  }

  void CopyRows(const Table& table, const ado::Snapshot& rows) {
    std::string beginning = "insert into " + QuotedName(to_.engine, table.name) + " (";
    for (std::size_t column = 0; column < table.columns.size(); ++column)
      beginning += (column > 0 ? "," : "") + QuotedName(to_.engine, table.columns[column].name);
    beginning += ") values ";
    std::string statement;
    std::size_t first = 0;
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
      statement += statement.empty() ? beginning + "(" : ",(";
      for (std::size_t column = 0; column < table.columns.size(); ++column)
        statement += (column > 0 ? "," : "") + Written(rows.ValueAt(row, column), *to_.renderer);
      statement += ")";
      const std::size_t behind = row + 1;
      if (behind - first < kRowsOfAStatement && statement.size() < kBytesOfAStatement &&
          behind < rows.RowCount())
        continue;
      RunInsert(table, statement, first, behind);
      done_ += static_cast<std::int64_t>(behind - first);
      first = behind;
      statement.clear();
      Tell();
    }
  }

  // The rows `first` to `behind` of a table.
  void RunInsert(const Table& table, const std::string& statement, std::size_t first, std::size_t behind) {
    try {
      to_.run_native(statement);
    } catch (const Failure& failure) {
      throw Failure(failure.number(), "表 " + table.name + " 的第 " + std::to_string(first + 1) + " 至 " +
                                          std::to_string(behind) + " 行不能写入（" + failure.description() +
                                          "），没有复制任何数据。");
    }
  }

  static void RequireEqual(const CopiedTable& there, const CopiedTable& here) {
    if (there.rows == here.rows && there.checksum == here.checksum) return;
    throw Failure(environment::kEngineFailure, "表 " + there.name + " 复制后与原来不一致（原有 " +
                                                   std::to_string(there.rows) + " 行，现有 " +
                                                   std::to_string(here.rows) + " 行），没有复制任何数据。");
  }

  void Undo() {
    try {
      to_.connection->RollbackTrans();
    } catch (const Failure&) {
      // The first failure is the one to be told.
    }
    try {
      // Where the session was lost its claim went too, and another copy may be at work.
      const Claim claim(to_);
      // Not every server takes tables back that were made, and of the last statement the answer may be lost.
      // What another copy has completed meanwhile stays.
      if (is_ending_ || Answer(to_, words_.is_being_made) == "1") DropAll();
    } catch (const Failure&) {
      // It has gone: the next copy finds what is left.
    }
  }

  void DropAll() {
    for (const std::string& statement : DropStatements(to_.engine, schema_)) to_.run_native(statement);
  }

  void Tell() const {
    if (progress_) progress_(done_, all_);
  }

  const Store& from_;
  const Store& to_;
  const Progress& progress_;
  const Schema schema_;
  const Words& words_ = WordsOf(to_.engine);
  std::int64_t done_ = 0;
  std::int64_t all_ = 0;
  bool is_ending_ = false;  // it may be complete
};

// While it lives, a database is read as it stood at one moment, by a transaction that writes nothing.
class Reading {
 public:
  explicit Reading(const Store& store) : store_(store), is_file_(WordsOf(store.engine).columns.empty()) {
    if (is_file_) {
      store_.run_native("begin");
      return;
    }
    store_.connection->BeginTrans();
    store_.run_native("set transaction isolation level repeatable read");
  }
  ~Reading() {
    try {
      if (is_file_) {
        store_.run_native("rollback");
      } else {
        store_.connection->RollbackTrans();
      }
    } catch (const std::exception&) {
      // Nothing was written.
    }
  }
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

 private:
  const Store& store_;
  bool is_file_;
};

}  // namespace

std::vector<CopiedTable> CopyDatabase(const Store& from, const Store& to, const Progress& progress) {
  const Reading reading(from);
  const Claim claim(to);
  return Copier(from, to, progress).Run();
}

std::vector<CopiedTable> ChecksumsOf(const Store& database) {
  const Reading reading(database);
  std::vector<CopiedTable> figures;
  for (const Table& table : SchemaOf(database).tables) {
    if (!IsScratch(table)) figures.push_back(FiguresOf(table, RowsOf(database, table)));
  }
  return figures;
}

}  // namespace dossierkit::server
