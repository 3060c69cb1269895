// The conformance of engines once more, with every statement through the COM objects of a host.
#include "tests/adapters/conformance.h"

#include "adapters/com/ado_connection.h"
#include "tests/adapters/com/stand_in.h"
#include "tests/adapters/sqlite/conformance_database.h"

namespace dossierkit::conformance {

std::shared_ptr<ado::Connection> OpenConformanceDatabase() {
  com::Pointer<IDispatch> host;
  *host.Put() = new com::StandInConnection(sqlite::OpenSqliteConformanceDatabase());
  return std::make_shared<com::AdoConnection>(host.Get());
}

}  // namespace dossierkit::conformance
