// What the comparison of views asks of each of them.
#pragma once

namespace dossierkit::bench {

// Everything that was asked to be painted is painted when this returns.
void Paint();

}  // namespace dossierkit::bench
