#include "host/sharing.h"

#include <chrono>
#include <exception>
#include <utility>

#ifdef DOSSIERKIT_SERVERS
#include "adapters/odbc/odbc_connection.h"
#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/opened.h"
#include "host/server/own_rows.h"
#endif
#include "platform/environment/failure.h"

namespace dossierkit::host {

#ifdef DOSSIERKIT_SERVERS

namespace {

// A day's work: a mark that was left behind, as by a machine that was switched off, is gone the next morning.
constexpr std::chrono::hours kLease(8);

}  // namespace

std::shared_ptr<void> ShowOwnRows(ado::Connection& database, const std::string& person) {
  if (auto* server = dynamic_cast<odbc::OdbcConnection*>(&database))
    return std::make_shared<server::OwnRows>(*server, person);
  return std::make_shared<server::OwnRows>(dynamic_cast<sqlite::SqliteConnection&>(database), person);
}

OpenMark::OpenMark(ado::Connection& database, const std::string& person, const std::string& clerk)
    : database_(database), person_(person), clerk_(clerk) {
  auto* server = dynamic_cast<odbc::OdbcConnection*>(&database_);
  if (server && !person_.empty())
    another_ = server::MarkOpen(*server, person_, clerk_, kLease).value_or(std::string());
}

OpenMark::~OpenMark() {
  auto* server = dynamic_cast<odbc::OdbcConnection*>(&database_);
  if (!server || person_.empty()) return;
  try {
    server::UnmarkOpen(*server, person_, clerk_);
  } catch (const std::exception&) {
    // It ends with its lease.
  }
}

#else

std::shared_ptr<void> ShowOwnRows(ado::Connection& /*database*/, const std::string& /*person*/) {
  throw environment::Failure(environment::kInvalidCall,
                             "此程序没有连接数据库服务器的部分，不能只看本人的记录（--own-rows）。");
}

OpenMark::OpenMark(ado::Connection& database, const std::string& person, const std::string& clerk)
    : database_(database), person_(person), clerk_(clerk) {}

OpenMark::~OpenMark() = default;

#endif

}  // namespace dossierkit::host
