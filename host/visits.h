// Visits: opens dossiers as a careful host does.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/sharing.h"
#include "platform/ado/connection.h"

class QWidget;

namespace dossierkit::host {

// What the user asks for.
struct VisitRequest {
  std::string person;                          // A00; empty for a new person
  std::optional<std::int16_t> operation_type;  // by default 3, or 0 for a new person
  std::optional<std::int16_t> person_type;     // by default the person's own, or 1
};

// Numbers the person's records before and after each visit, asks which row of a doubled person stays, and
// tells who else has the person open. Of a person whom another clerk has open nothing is numbered and nobody
// is asked: his window would then write into other records than it shows. The persons who were stored
// meanwhile are cared for as well, but only those whom this visit began.
class Visits {
 public:
  // `database` runs the host's own statements, `connection` is the component's. `photos` is a folder.
  Visits(std::shared_ptr<ado::Connection> database, std::shared_ptr<ado::Connection> connection,
         std::string photos, Sharing sharing = {});

  // Opens the component; what it asks besides stands over `over`. Returns what ShowDossier returned and
  // throws what it threw, in either case with the person's records in order. False as well where the user
  // leaves the person to another clerk.
  bool Open(const VisitRequest& request, QWidget* over = nullptr);

 private:
  std::int16_t PersonTypeOf(const std::string& person) const;
  // The identifiers that the component drew for new persons go to `drawn`.
  bool ShowDossier(const VisitRequest& request, std::shared_ptr<std::vector<std::string>> drawn);
  void PartDoubled(const std::vector<std::string>& persons, QWidget* over);
  void PutInOrder(const std::vector<std::string>& persons, QWidget* over);

  std::shared_ptr<ado::Connection> database_;
  std::shared_ptr<ado::Connection> connection_;
  std::string photos_;
  Sharing sharing_;
};

}  // namespace dossierkit::host
