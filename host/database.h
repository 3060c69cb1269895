// The host's database: opened, checked; the component's statements traced.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "host/options.h"
#include "platform/ado/connection.h"

namespace dossierkit::host {

// Opens what the options name. Throws a Failure whose description says in one sentence what is wrong
// and what to do.
std::shared_ptr<ado::Connection> OpenDatabase(const Options& options);

// The same without a look at its tables.
std::shared_ptr<ado::Connection> OpenUnchecked(const Options& options);

// The file that a connection string of the embedded engine names; nothing for one of a server. Throws a
// Failure for one that names none.
std::optional<std::string> FileOf(const std::string& connection);

// The connection that the component is given: `database` itself, or with --trace-sql one that writes down
// what runs through it. The host's own statements go to `database`. Throws a Failure where the trace
// cannot be written.
std::shared_ptr<ado::Connection> TracedForTheComponent(std::shared_ptr<ado::Connection> database,
                                                       const Options& options);

}  // namespace dossierkit::host
