// What the comparison of views asks of the system that they are painted on.
#pragma once

namespace dossierkit::bench {

// Everything that was asked to be painted is painted when this returns.
void Paint();
// The memory of this process that it shares with no other, in MiB.
double PrivateMebibytes();

}  // namespace dossierkit::bench
