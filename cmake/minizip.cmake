# The zip directory reader on zlib, compiled from zlib's Debian source, which carries it in contrib/.
set(minizip ${KELVO_SOURCES}/zlib/contrib/minizip)
if(NOT EXISTS ${minizip}/unzip.c)
  message(FATAL_ERROR "No zip reader sources in ${KELVO_SOURCES}; run scripts/setup.sh")
endif()
# Always the archive: the Windows package offers a DLL too, and ours must stand alone.
find_library(KELVO_ZLIB NAMES libz.a REQUIRED)
find_path(KELVO_ZLIB_INCLUDE zlib.h REQUIRED)

# The reader's memory, and zlib's below it, comes through our heap: zip_heap.cpp.
set(zip_heap ${CMAKE_SOURCE_DIR}/skins/zip/zip_heap)
add_library(kelvo_minizip STATIC ${minizip}/unzip.c ${minizip}/ioapi.c ${zip_heap}.cpp)
target_include_directories(kelvo_minizip SYSTEM PUBLIC ${minizip} ${KELVO_ZLIB_INCLUDE})
set(foreign $<COMPILE_LANGUAGE:C>)
target_compile_options(kelvo_minizip PRIVATE
  "$<${foreign}:-w;-include;${zip_heap}.h>" "$<$<NOT:${foreign}>:${KELVO_WARNINGS}>")
target_compile_definitions(kelvo_minizip PRIVATE
  "$<${foreign}:ALLOC=KelvoZipTake;TRYFREE=KelvoZipGive;inflateInit2_=KelvoZipInflateInit>")
target_link_libraries(kelvo_minizip PUBLIC ${KELVO_ZLIB} kelvo_base)
