#include "host/copying.h"

#include <cstdint>
#include <filesystem>
#include <iostream>
#include <memory>
#include <system_error>
#include <vector>

#include "adapters/odbc/odbc_connection.h"
#include "adapters/sqlite/sqlite_connection.h"
#include "host/database.h"
#include "host/paths.h"
#include "host/server/audit.h"
#include "host/server/copy.h"
#include "host/server/rights.h"
#include "host/system.h"
#include "platform/environment/failure.h"
#include "platform/environment/text.h"

namespace dossierkit::host {
namespace {

namespace fs = std::filesystem;

// A connection string names a driver or a data source; anything else is a file.
Options OptionsFor(const std::string& database) {
  Options options;
  for (const std::string& part : environment::Split(database, ";")) {
    const std::string name =
        environment::LowerCase(environment::WithoutOuterBlanks(part.substr(0, part.find('='))));
    const bool is_telling = name == "driver" || name == "dsn" || name == "filedsn";
    if (is_telling && part.find('=') != std::string::npos) options.connection = database;
  }
  if (!options.connection.empty()) {
    const auto file = FileOf(database);
    if (!file) return options;
    options.connection.clear();
    options.database = *file;
    return options;
  }
  options.database = database;
  return options;
}

server::Store StoreOf(ado::Connection& connection) {
  if (auto* server = dynamic_cast<odbc::OdbcConnection*>(&connection)) return server::StoreOf(*server);
  return server::StoreOf(dynamic_cast<sqlite::SqliteConnection&>(connection));
}

// A database file that is written under another name, and removed unless it was completed.
class NewFile {
 public:
  explicit NewFile(const std::string& name) : name_(PathOf(name)), written_(PathOf(name + ".copying")) {
    RequireNoFile("数据库", name_);
    RequireNoFile("数据库", written_);
    sqlite::SqliteConnection::CreateFile(TextOf(written_));
  }
  ~NewFile() {
    std::error_code error;
    for (const char* ending : {"", "-wal", "-shm", "-journal"})
      fs::remove(fs::path(written_) += ending, error);
  }
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  std::string Written() const { return TextOf(written_); }
  // The database is closed, and there is nothing beside it.
  void Complete() const {
    RequireNoFile("数据库", name_);
    fs::rename(written_, name_);
  }

 private:
  fs::path name_;
  fs::path written_;
};

// "[#####---------------]  25%" on one line that is written anew.
class Bar {
 public:
  void Show(std::int64_t done, std::int64_t all) {
    constexpr int kWidth = 40;
    const int percent = all == 0 ? 100 : static_cast<int>(done * 100 / all);
    if (percent == shown_) return;
    shown_ = percent;
    const auto full = static_cast<std::size_t>(percent * kWidth / 100);
    std::cerr << "\r[" << std::string(full, '#') << std::string(kWidth - full, '-') << "] " << percent << "%"
              << std::flush;
  }
  ~Bar() {
    if (shown_ >= 0) std::cerr << "\n";
  }

 private:
  int shown_ = -1;
};

std::vector<server::CopiedTable> CopyWithBar(const server::Store& from, const server::Store& to) {
  if (!IsErrorATerminal()) return server::CopyDatabase(from, to);
  Bar bar;
  return server::CopyDatabase(from, to, [&](std::int64_t done, std::int64_t all) { bar.Show(done, all); });
}

std::string Hexadecimal(std::uint64_t number) {
  std::string digits(16, '0');
  for (std::size_t i = 0; i < digits.size(); ++i) digits[i] = "0123456789ABCDEF"[number >> (60 - 4 * i) & 15];
  return digits;
}

void Tell(const std::vector<server::CopiedTable>& copied) {
  std::int64_t rows = 0;
  for (const server::CopiedTable& table : copied) {
    rows += table.rows;
    std::cout << table.name << "：" << table.rows << " 行，校验和 " << Hexadecimal(table.checksum)
              << "，一致\n";
  }
  std::cout << "共 " << copied.size() << " 张表、" << rows << " 行，已经复制，核对一致。\n";
}

const char* ActionOf(const server::Change& change) {
  if (change.action == "insert") return "增加";
  return change.action == "update" ? "修改" : "删除";
}

}  // namespace

void CopyTo(const Options& options, const std::string& source) {
  sqlite::SqliteConnection from(source);
  const auto to = OpenUnchecked(options);
  CopyWithBar(StoreOf(from), StoreOf(*to));
}

void RunServerCommand(const Options& options) {
  const auto connection = OpenUnchecked(options);
  // Nothing else than a server's is left.
  auto& server = dynamic_cast<odbc::OdbcConnection&>(*connection);
  if (options.action == Options::Action::kCreateRights) return server::PrepareRights(server);
  if (options.action == Options::Action::kCreateAudit) return server::PrepareAudit(server);
  if (options.action == Options::Action::kRestore) {
    const server::RestoredRecord restored = server::RestoreRecord(server, options.change);
    std::cout << "已恢复 " << restored.person << " 的 " << environment::UpperCase(restored.table);
    if (restored.number) std::cout << " 第 " << *restored.number << " 条";
    std::cout << "。\n";
    return;
  }
  for (const server::Change& change : server::HistoryOf(server, options.person)) {
    std::cout << change.number << " " << change.time << " " << change.user << " "
              << environment::UpperCase(change.table) << " " << ActionOf(change) << "\n";
    if (!change.before.empty()) std::cout << "  前 " << change.before << "\n";
    if (!change.after.empty()) std::cout << "  后 " << change.after << "\n";
  }
}

void CopyAndTell(const std::string& from, const std::string& to) {
  const auto source = OpenUnchecked(OptionsFor(from));
  const Options target = OptionsFor(to);
  if (!target.connection.empty()) {
    const auto server = OpenUnchecked(target);
    Tell(CopyWithBar(StoreOf(*source), StoreOf(*server)));
    return;
  }
  const NewFile file(target.database);
  std::vector<server::CopiedTable> copied;
  {
    sqlite::SqliteConnection written(file.Written());
    copied = CopyWithBar(StoreOf(*source), StoreOf(written));
  }
  file.Complete();
  Tell(copied);
}

}  // namespace dossierkit::host
