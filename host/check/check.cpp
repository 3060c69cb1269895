#include "host/check/check.h"

#include "host/check/reading.h"

namespace dossierkit::check {

std::vector<Fault> CheckDatabase(ado::Connection& connection) {
  Findings findings;
  const std::vector<CompiledPage> pages = CompiledPages();
  const std::vector<Set> sets = CheckSets(connection, pages, findings);
  if (sets.empty()) return findings.Take();
  for (const Set& set : sets) CheckFields(connection, set, findings);
  const auto codes = CheckCodeTables(connection, sets, findings);
  const std::optional<Persons> persons = ReadPersons(connection);
  for (const Set& set : sets) CheckRecords(connection, set, codes, persons ? &*persons : nullptr, findings);
  CheckByWriting(connection, sets, codes, findings);
  return findings.Take();
}

}  // namespace dossierkit::check
