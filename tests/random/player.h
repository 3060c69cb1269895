// Player: plays the actions of one visit on a fresh copy of the sample database.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "tests/random/action.h"
#include "tests/random/generator.h"
#include "tests/random/watch.h"

namespace dossierkit::random {

// The next action, or none at the end.
using Source = std::function<std::optional<Action>(Place)>;

// Plays what the source gives, in as many windows as it opens, and says which rule was broken first.
// What an action is for and cannot be found is passed over.
std::optional<Violation> Play(const Source& source, const tests::PhotoFolder& folder, Tally& tally);
std::optional<Violation> Play(const Actions& actions, const tests::PhotoFolder& folder, Tally& tally);

// The pictures that the file dialog offers.
void MakeChoices(const tests::PhotoFolder& folder);

}  // namespace dossierkit::random
