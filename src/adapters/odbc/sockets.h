// Sockets: the connections that a driver opens below itself.
#pragma once

#include <chrono>
#include <set>
#include <string>

namespace dossierkit::odbc {

// Those of this process that come after it was made: a driver shows its own to nobody, and not every one can
// be told by its connection string what to do in a network that swallows everything.
class Sockets {
 public:
  Sockets();

  // From now on each of them fails once nothing has come from the other machine for so long, although it was
  // asked to answer. The machine answers by itself, however long its server takes. One that asks for nothing,
  // or has a limit already, stays as it is.
  void EndInSilence(std::chrono::seconds limit) const;

 private:
  std::set<std::string> known_;
};

}  // namespace dossierkit::odbc
