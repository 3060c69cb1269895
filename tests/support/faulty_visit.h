// FaultyVisit: the component on a sample database of a server, which goes away in the middle.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/odbc/odbc_connection.h"
#include "tests/support/visit.h"

namespace dossierkit::tests {

class FaultyVisit {
 public:
  // Fills the empty database of the host's connection.
  explicit FaultyVisit(std::shared_ptr<odbc::OdbcConnection> host);

  // `fault` comes before the so manieth statement that changes anything, counted from 1.
  void FailBefore(int change, const std::function<void()>& fault);

  // The component on that connection, for other scenes.
  Visit& Scenes() { return visit_; }

  // Deletes the second of the person's four posts; the rest is numbered anew, as required: delete, 1 stays,
  // 3 becomes 2, 4 becomes 3. The description of the failure that left the visit, empty where none did.
  std::string DeleteTheSecondPost();
  // The numbers of the posts.
  std::vector<std::string> Posts();

  // Opens the person, changes his only row in A13 and saves it until that is told as done, at most so often:
  // the row is deleted and stored anew, as required. What was told in boxes.
  std::vector<std::string> SaveTheHours(const std::string& hours, int tries);
  std::string Hours();

 private:
  std::shared_ptr<odbc::OdbcConnection> host_;
  Visit visit_;
  int changes_ = 0;
};

}  // namespace dossierkit::tests
