// IUserCtrl: the door of the component, the one class that a host calls once a Component is set up.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/ado/connection.h"
#include "platform/environment/export.h"

namespace dossierkit {

// Plain stored values without a check, but for Connection. The host opens and closes the connection,
// which must be open when ShowDossier is called; the component keeps hold of the last one until the
// next visit or the end of the Component.
class DOSSIERKIT_EXPORT IUserCtrl {
 public:
  void SetConnection(std::shared_ptr<ado::Connection> connection) { connection_ = std::move(connection); }
  // The stored connection; if none was ever set, a new, unopened one is stored and given.
  const std::shared_ptr<ado::Connection>& Connection();

  // Opens the modal window on the person and returns when it is closed: true when the toolbar's Save
  // succeeded at least once. To be called on the thread that made the Component. Throws a Failure with one of
  // the numbers below, or whatever else left a handler of the window; std::logic_error without a Component
  // or on another thread.
  //
  //   364             the person was refused: he has no row in A01, or several; the user was told already
  //   400             a visit is going on; nothing was touched
  //   3709            the connection was never opened, or is closed
  //   731             a set of the menu has no page: B02, B03, a PersonType other than 1, 2, 3, one of the
  //                   host's own
  //   481             the person's photograph is no readable picture
  //   53, 70, 75, 76  the photograph's file has gone meanwhile, or cannot be read
  //   6, 13, 94       a number beyond 16 bits; a value of another kind; Null where the metadata need a text
  //   5, 9, 457       metadata that cannot be followed: no such field, a rule with one bound, a field twice
  //   3021, 3265      no row, or no such column, where the metadata promise one
  //   -2147217865     no such table
  //   -2147217904     no such name
  //   -2147217900     a statement that is no SQL
  //   -2147217913     a value that its column does not take
  //   -2147467259     anything else that the engine tells: locked, full, damaged
  //
  // All but 364 and 400 can also end a visit that is going on; what was saved before stays saved.
  bool ShowDossier();

  std::int16_t OperationType = 0;  // 0 a new person, 3 the stored person
  std::int16_t PersonType = 0;     // 1, 2, 3: which recommendation set joins the menu
  std::string PhotoPath;           // folder of the photographs
  std::string personID;            // A00 of the person

 private:
  std::shared_ptr<ado::Connection> connection_;
};

}  // namespace dossierkit
