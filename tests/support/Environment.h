#pragma once

#include <cstdlib>

namespace zel::test {

/// Sets an environment variable of this process; null removes it.
inline void SetEnvironment(const char* name, const char* value) {
#if defined(_WIN32)
    _putenv_s(name, value ? value : "");  // an empty value removes it there
#else
    value ? setenv(name, value, 1) : unsetenv(name);
#endif
}

}  // namespace zel::test
