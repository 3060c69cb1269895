// The host's database: opened, checked, traced.
#pragma once

#include <memory>
#include <string>

#include "host/options.h"
#include "platform/ado/connection.h"

namespace dossierkit::host {

// Opens what the options name. Throws a Failure whose description says in one sentence what is wrong
// and what to do.
std::shared_ptr<ado::Connection> OpenDatabase(const Options& options);

}  // namespace dossierkit::host
