set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(KELVO_TARGET x86_64)
include(${CMAKE_CURRENT_LIST_DIR}/toolchain-mingw.cmake)
