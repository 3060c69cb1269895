// DOSSIERKIT_EXPORT: what a shared library shows although the rest of it is hidden.
#pragma once

#if defined(__GNUC__)
#define DOSSIERKIT_EXPORT __attribute__((visibility("default")))
#else
#define DOSSIERKIT_EXPORT
#endif
