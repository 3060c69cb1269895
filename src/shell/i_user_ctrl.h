// IUserCtrl: the door of the component, the one class that a host calls once a Component is set up.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/ado/connection.h"

namespace dossierkit {

// Plain stored values without a check, but for Connection. The host opens and closes the connection,
// which must be open when ShowDossier is called; the component keeps hold of the last one until the
// next visit or the end of the Component.
class IUserCtrl {
 public:
  void SetConnection(std::shared_ptr<ado::Connection> connection) { connection_ = std::move(connection); }
  // The stored connection; if none was ever set, a new, unopened one is stored and given.
  const std::shared_ptr<ado::Connection>& Connection();

  // Opens the modal window on the person and returns when it is closed: true when the toolbar's Save
  // succeeded at least once. Throws a Failure where the person or the database cannot be read, or
  // whatever else left a handler of the window; 400 during a visit; std::logic_error without a Component.
  bool ShowDossier();

  std::int16_t OperationType = 0;  // 0 a new person, 3 the stored person
  std::int16_t PersonType = 0;     // 1, 2, 3: which recommendation set joins the menu
  std::string PhotoPath;           // folder of the photographs
  std::string personID;            // A00 of the person

 private:
  std::shared_ptr<ado::Connection> connection_;
};

}  // namespace dossierkit
