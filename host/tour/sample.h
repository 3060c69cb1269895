// What a tour is played on.
#pragma once

#include "host/options.h"

namespace dossierkit::host {

// The options with fresh copies of the sample database and the photographs, in a folder of their own beside
// the pictures, unless others were named. Throws a Failure.
Options WithSampleOfTour(Options options);

}  // namespace dossierkit::host
