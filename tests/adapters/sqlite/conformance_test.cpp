#include "tests/adapters/conformance.h"

#include "tests/adapters/sqlite/conformance_database.h"

namespace dossierkit::conformance {

std::shared_ptr<ado::Connection> OpenConformanceDatabase() { return sqlite::OpenSqliteConformanceDatabase(); }

}  // namespace dossierkit::conformance
