// The environment's variables, for a test.
#pragma once

#include <cstdlib>

namespace dossierkit::tests {

#ifdef _WIN32
inline void SetVariable(const char* name, const char* value) { _putenv_s(name, value); }
inline void UnsetVariable(const char* name) { _putenv_s(name, ""); }
#else
inline void SetVariable(const char* name, const char* value) { setenv(name, value, 1); }
inline void UnsetVariable(const char* name) { unsetenv(name); }
#endif

}  // namespace dossierkit::tests
