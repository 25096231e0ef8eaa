# 64-bit Windows from Debian, with the POSIX threads flavour of mingw-w64 (std::thread and its kin).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(ORVE_MINGW x86_64-w64-mingw32)
include("${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake")
