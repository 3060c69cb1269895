// Moves a dossier database to another engine.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "host/server/store.h"
#include "platform/environment/export.h"

namespace dossierkit::server {

// What was copied of a table, and found again behind it.
struct CopiedTable {
  std::string name;
  std::int64_t rows;
  // Of all its values: equal on every engine, whatever the order of the rows and the case of names.
  std::uint64_t checksum;
};

// How far it has come: rows copied, of all rows.
using Progress = std::function<void(std::int64_t done, std::int64_t all)>;

// Makes in the empty database `to` the tables, indexes and triggers of `from`, and copies its rows as they
// stand at one moment, all of them or none; S_GUID, whose rows belong to nobody, stays empty. Before that is
// stored, counts and checksums of both sides are compared. Throws a Failure: a database that has a table or
// view already, or whose order is not that of bytes, or into which another copy is made, is refused before
// anything is done, and every other failure leaves no table behind. Where the server itself goes away, what
// it may keep is cleared away by the next copy.
DOSSIERKIT_EXPORT std::vector<CopiedTable> CopyDatabase(const Store& from, const Store& to,
                                                        const Progress& progress = {});

// The same figures of a database that is there, without S_GUID.
std::vector<CopiedTable> ChecksumsOf(const Store& database);

}  // namespace dossierkit::server
