// The statement catalogue, as patterns.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace dossierkit::random {

struct KnownStatement {
  bool writes = false;
  std::string set;  // the table of a set that it reads or writes; empty where it is none
};

// What kind of statement it is for the person on show; none where the catalogue has no such form.
std::optional<KnownStatement> FindInCatalogue(std::string_view statement, std::string_view person);

}  // namespace dossierkit::random
