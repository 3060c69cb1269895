// The loaders: field metadata, the values of one record, the identifier of a new person.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "metadata/field_items.h"

namespace dossierkit {

// The metadata of a set, in the order in which the database gives it.
std::shared_ptr<cFieldItems> LoadFieldItems(const std::string& table);

// The metadata of a set with the values of a person's record of that number; with a number below 1
// those of the first row of the person. Without such a row Dmcod stays unset.
std::shared_ptr<cFieldItems> LoadFieldValues(const std::string& table, const std::string& person,
                                             std::int16_t number);

// A new identifier of 36 characters, drawn through the scratch table S_GUID.
std::string NewPersonId();

}  // namespace dossierkit
