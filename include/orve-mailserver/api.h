// What the shared library offers to the programs that load it. Everything that does not carry the mark stays
// inside.
#pragma once

#ifdef _WIN32
/// On Windows the DLL offers its classes for automation instead.
#define ORVE_API
#else
#define ORVE_API __attribute__((visibility("default")))
#endif
