// Shrink: the shortest part of a list of actions that still breaks the same rule.
#pragma once

#include <functional>

#include "tests/random/action.h"

namespace dossierkit::random {

// Drops ever smaller chunks, down to single actions, as long as `fails` holds for what is left.
Actions Shrink(Actions actions, const std::function<bool(const Actions&)>& fails);

}  // namespace dossierkit::random
