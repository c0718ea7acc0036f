set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(KELVO_TARGET i686)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw.cmake)
# Doubles are computed strictly: the x87 unit's wider intermediates would turn 1000 ms into 1001.
# Windows promises a stack aligned to 4 bytes only, SSE code wants 16.
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
