#pragma once

#include <stdlib.h>

namespace support {

// Sets a variable of the process's environment; an empty value counts as none.
#ifdef _WIN32
inline void SetEnvironment(const char* name, const char* value) {
    ::_putenv_s(name, value);
}
#else
inline void SetEnvironment(const char* name, const char* value) {
    ::setenv(name, value, 1);
}
#endif

}  // namespace support
