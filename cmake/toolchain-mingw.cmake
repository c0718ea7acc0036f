# Shared by the two Windows toolchains; KELVO_TARGET is set. The posix flavour brings the std::mutex
# that GoogleTest needs; everything is linked statically.
set(kelvo_prefix ${KELVO_TARGET}-w64-mingw32)
set(CMAKE_C_COMPILER ${kelvo_prefix}-gcc-posix)
set(CMAKE_CXX_COMPILER ${kelvo_prefix}-g++-posix)
set(CMAKE_RC_COMPILER ${kelvo_prefix}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${kelvo_prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static")
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../scripts/wine.sh;${KELVO_TARGET}")
