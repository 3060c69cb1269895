#include "bench/bench_visit.h"

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <utility>

namespace dossierkit::bench {

namespace fs = std::filesystem;

Copy::Copy(const fs::path& original) {
  static int count = 0;
  const std::string name = "copy-" + std::to_string(getpid()) + "-" + std::to_string(++count) + ".db";
  path_ = (fs::path(BENCH_FOLDER) / name).string();
  fs::create_directories(BENCH_FOLDER);
  fs::copy_file(original, path_, fs::copy_options::overwrite_existing);
}

Copy::~Copy() {
  std::error_code error;
  for (const char* ending : {"", "-wal", "-shm"}) fs::remove(path_ + ending, error);
}

std::string GeneratedDatabase(int persons, int records) {
  fs::create_directories(BENCH_FOLDER);
  const fs::path path = fs::path(BENCH_FOLDER) /
                        ("generated-" + std::to_string(persons) + "-" + std::to_string(records) + ".db");
  if (!fs::exists(path)) {
    const std::string command = std::string("'" DATA_FOLDER "/generate-large.sh' ") +
                                std::to_string(persons) + " " + std::to_string(records) + " '" +
                                path.string() + "' >&2";
    if (std::system(command.c_str()) != 0) throw std::runtime_error("cannot generate " + path.string());
  }
  return path.string();
}

std::string CodeTable(int codes) {
  return "create table BIG (dmcod varchar(9) collate nocase, dmcpt varchar(60) collate nocase,"
         " dmhnd varchar(30) collate nocase, dmattr boolean);"
         "insert into s_CodeTableDefine (dmgrp, codtbldsc) values ('BIG', '大');"
         "insert into s_CodeLevDefine (dmgrp, levelnum, bit) values ('BIG',1,2),('BIG',2,4),('BIG',3,9);"
         "with recursive n(i) as (select 0 union all select i + 1 from n where i < 9)"
         " insert into BIG select printf('%02d', i), '第' || i || '类', 'l' || i, 0 from n;"
         "with recursive n(i) as (select 0 union all select i + 1 from n where i < 99)"
         " insert into BIG select printf('%02d%02d', i / 10, i % 10), '第' || i || '组', 'z' || i, 1 from n;"
         "with recursive k(inner) as (select " +
         std::to_string((codes - 110) / 100 + 1) +
         "), n(i) as (select 0 union all select i + 1 from n where i < " + std::to_string(codes - 111) +
         ")"
         " insert into BIG select printf('%02d%02d%05d', i / inner / 10, i / inner % 10, i % inner),"
         "  '第' || i || iif(i % 2, '号甲', '号乙'), 'h' || i, 1 from n, k;"
         "create index ix_BIG_dmcod on BIG (dmcod);"
         "create index ix_BIG_dmcpt on BIG (dmcpt);"
         "create index ix_BIG_dmhnd on BIG (dmhnd);"
         "create index ix_BIG_level on BIG (length(dmcod), dmcod, dmcpt, dmattr);";
}

void AddCodeTable(const std::string& database, int codes) {
  sqlite::SqliteConnection(database).RunScript(CodeTable(codes));
}

namespace {

std::shared_ptr<ado::Connection> OpenFile(const std::string& database,
                                          ado::TracingConnection::Observer observer) {
  std::shared_ptr<ado::Connection> connection = std::make_shared<sqlite::SqliteConnection>(database);
  if (observer) connection = std::make_shared<ado::TracingConnection>(connection, std::move(observer));
  return connection;
}

}  // namespace

BenchVisit::BenchVisit(const std::string& database, ado::TracingConnection::Observer observer)
    : BenchVisit(OpenFile(database, std::move(observer))) {}

BenchVisit::BenchVisit(std::shared_ptr<ado::Connection> connection) {
  dossier_.SetConnection(std::move(connection));
  dossier_.OperationType = 3;
  dossier_.PersonType = 1;
  dossier_.personID = kPerson;
}

void BenchVisit::Open(const std::function<void()>& scene) {
  script.WillRun([scene](toolkit::Form&) { scene(); });
  dossier_.ShowDossier();
}

void BenchVisit::OpenPerson(const std::string& person, const std::function<void()>& scene) {
  dossier_.OperationType = 3;
  dossier_.personID = person;
  Open(scene);
}

void BenchVisit::OpenNew(const std::function<void()>& scene) {
  dossier_.OperationType = 0;
  dossier_.personID.clear();
  Open(scene);
}

void BenchVisit::GoTo(const std::string& set) {
  const auto& items = Window().VMenu1().Items();
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (items[i].key == set) user.ClickMenu(static_cast<int>(i + 1));
  }
}

const std::vector<std::string>& AllSets() {
  static const std::vector<std::string> sets = {"A02", "A03", "A04", "A05", "A06", "A08", "A09", "A10",
                                                "A11", "A12", "A13", "A14", "A15", "A21", "B01"};
  return sets;
}

}  // namespace dossierkit::bench
