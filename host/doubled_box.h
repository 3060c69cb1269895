// The box that shows the rows of a doubled person and drops all but the one that the user keeps.
#pragma once

#include "host/care/care.h"

class QWidget;

namespace dossierkit::host {

// Shows the rows side by side, those fields first in which they differ, and drops the others where the user
// chose one. Nothing is dropped where he chose to decide later. Throws a Failure.
void AskWhichRowStays(ado::Connection& database, care::DoubledPerson doubled, QWidget* over);

}  // namespace dossierkit::host
