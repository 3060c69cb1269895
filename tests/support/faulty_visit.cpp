#include "tests/support/faulty_visit.h"

#include <utility>

#include "adapters/sqlite/sqlite_connection.h"
#include "host/server/copy.h"
#include "platform/environment/failure.h"
#include "tests/support/paths.h"
#include "tests/support/server_faults.h"

namespace dossierkit::tests {
namespace {

bool Changes(const std::string& statement) {
  return statement.starts_with("update ") || statement.starts_with("insert ") ||
         statement.starts_with("delete ");
}

}  // namespace

FaultyVisit::FaultyVisit(std::shared_ptr<odbc::OdbcConnection> host) : host_(std::move(host)) {
  sqlite::SqliteConnection sample(SampleDatabaseFile());
  server::CopyDatabase(server::StoreOf(sample), server::StoreOf(*host_));
  // The walk numbers the rows of all persons.
  host_->Run("delete from A04 where A00<>'" + kPerson + "'");
  visit_.component.SetConnection(host_);
}

void FaultyVisit::FailBefore(int change, const std::function<void()>& fault) {
  changes_ = 0;
  visit_.component.SetConnection(
      std::make_shared<ActingConnection>(host_, [this, change, fault](const std::string& statement) {
        if (Changes(statement) && ++changes_ == change) fault();
      }));
}

std::string FaultyVisit::DeleteTheSecondPost() {
  return Told([&] {
    visit_.OpenPerson(kPerson, [&] {
      visit_.GoTo("A04");
      visit_.user.ClickRow(2);
      visit_.script.WillAnswer(toolkit::kAnswerYes);
      visit_.user.ClickToolbar("Delete");
    });
  });
}

std::vector<std::string> FaultyVisit::Posts() {
  return Column(*host_, "select A0499 from A04 where A00='" + kPerson + "' order by A0499");
}

std::vector<std::string> FaultyVisit::SaveTheHours(const std::string& hours, int tries) {
  visit_.script.messages.clear();
  visit_.OpenPerson(kPerson, [&] {
    visit_.GoTo("A13");
    visit_.Text("A13_A1302").SetText(hours);
    std::size_t told = 0;
    for (int i = 0; i < tries; ++i) {
      visit_.user.ClickToolbar("Save");
      if (visit_.Messages().size() == std::exchange(told, visit_.Messages().size())) break;
    }
  });
  return visit_.Messages();
}

std::string FaultyVisit::Hours() {
  const auto rows = Column(*host_, "select A1302 from A13 where A00='" + kPerson + "'");
  return rows.empty() ? "no row" : rows.front();
}

}  // namespace dossierkit::tests
