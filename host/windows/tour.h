// The tour on native views: all pages of a person.
#pragma once

#include "host/options.h"

namespace dossierkit::host {

// Opens the component on the first person of the sample, as stored in the tour's own copy, clicks each item
// of the menu, and writes a numbered picture of each page. Gives the program's exit code; throws a Failure.
int RunTour(const Options& options);

}  // namespace dossierkit::host
