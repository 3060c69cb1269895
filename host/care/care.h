// Care: keeps a host's users clear of two required hazards. For any host: it needs the connection port alone.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/ado/connection.h"
#include "platform/environment/export.h"
#include "platform/environment/value.h"

namespace dossierkit::care {

// Gives the records of the person in every set of many records the numbers 1 to n, in the order of the list.
// To be called before and after each visit, while nobody else has the person open: a deletion leaves gaps and
// equal numbers, with which the next visit writes into other records than the ones on show. A set that is not
// in order is written anew with every column, all sets in one transaction; where all is in order nothing is
// written. Returns the number of sets written. Throws a Failure, and nothing has changed then.
DOSSIERKIT_EXPORT int RenumberRecords(ado::Connection& connection, const std::string& person);

// A person with several rows in A01, whom no visit opens.
struct DoubledPerson {
  std::string person;                                 // A00
  std::vector<std::string> columns;                   // of A01
  std::vector<std::vector<environment::Value>> rows;  // in the order of A0199
};

// This person, if he is one. A person is doubled when he is stored by the answer to a question and then saved
// on A01, so a host looks after each visit. Throws a Failure.
DOSSIERKIT_EXPORT std::optional<DoubledPerson> FindDoubledPerson(ado::Connection& connection,
                                                                 const std::string& person);

// All such persons, in the order of their identifiers; reads every identifier. Throws a Failure.
DOSSIERKIT_EXPORT std::vector<DoubledPerson> FindDoubledPersons(ado::Connection& connection);

// Deletes one of the rows, from 0, known by its A0199; the others and the person's records stay. Throws a
// Failure, and changes nothing, where another row has the same A0199 or the rows are not as they were found.
DOSSIERKIT_EXPORT void DropDoubledRow(ado::Connection& connection, const DoubledPerson& doubled,
                                      std::size_t row);

}  // namespace dossierkit::care
