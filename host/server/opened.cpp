#include "host/server/opened.h"

#include "platform/environment/text.h"
#include "platform/environment/value.h"
#include "platform/jet/renderer.h"

namespace dossierkit::server {
namespace {

std::string ConstantOf(const odbc::OdbcConnection& server, const std::string& text) {
  return jet::ConstantOf(text, server.EngineRenderer());
}

// Persons are the same without regard to case.
std::string PersonOf(const odbc::OdbcConnection& server, const std::string& person) {
  return ConstantOf(server, environment::LowerCase(person));
}

}  // namespace

std::optional<std::string> MarkOpen(odbc::OdbcConnection& server, const std::string& person,
                                    const std::string& clerk, std::chrono::seconds lease) {
  const bool is_postgresql = server.EngineName() == "PostgreSQL";
  const std::string seconds = std::to_string(lease.count());
  // One statement each, so that of two clerks one is the first.
  const std::string mark =
      "insert into dossierkit_open (person, clerk, lease_end) values (" + PersonOf(server, person) + ", " +
      ConstantOf(server, clerk) + ", " +
      (is_postgresql
           ? "clock_timestamp() + interval '" + seconds +
                 " seconds') on conflict (person) do update set clerk = excluded.clerk, lease_end = "
                 "excluded.lease_end where dossierkit_open.lease_end < clock_timestamp() or "
                 "dossierkit_open.clerk = excluded.clerk"
           // The second assignment knows the clerk of the first.
           : "now(6) + interval " + seconds +
                 " second) on duplicate key update clerk = if(lease_end < now(6), values(clerk), clerk), "
                 "lease_end = if(clerk = values(clerk), values(lease_end), lease_end)");
  server.RunNative(mark);
  const ado::Snapshot rows =
      server.RunNative("select clerk from dossierkit_open where person = " + PersonOf(server, person));
  const std::string marked = rows.RowCount() == 0 ? clerk : environment::TextOf(rows.ValueAt(0, 0));
  return marked == clerk ? std::nullopt : std::optional(marked);
}

void UnmarkOpen(odbc::OdbcConnection& server, const std::string& person, const std::string& clerk) {
  server.RunNative("delete from dossierkit_open where person = " + PersonOf(server, person) +
                   " and clerk = " + ConstantOf(server, clerk));
}

}  // namespace dossierkit::server
