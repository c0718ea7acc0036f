# The zip directory reader on zlib, compiled from zlib's Debian source, which carries it in contrib/.
set(minizip ${KELVO_SOURCES}/zlib/contrib/minizip)
if(NOT EXISTS ${minizip}/unzip.c)
  message(FATAL_ERROR "No zip reader sources in ${KELVO_SOURCES}; run scripts/setup.sh")
endif()
if(KELVO_CE_ARM)
  # Nobody packages zlib for the device. The part that unpacks; small files, 32-bit file functions.
  set(zlib_sources)
  foreach(file IN ITEMS adler32 crc32 inffast inflate inftrees zutil)
    list(APPEND zlib_sources ${KELVO_SOURCES}/zlib/${file}.c)
  endforeach()
  add_library(kelvo_zlib STATIC ${zlib_sources})
  target_compile_options(kelvo_zlib PRIVATE -w)
  set(KELVO_ZLIB kelvo_zlib)
  set(KELVO_ZLIB_INCLUDE ${KELVO_SOURCES}/zlib)
else()
  # Always the archive: the Windows package offers a DLL too, and ours must stand alone.
  find_library(KELVO_ZLIB NAMES libz.a REQUIRED)
  find_path(KELVO_ZLIB_INCLUDE zlib.h REQUIRED)
endif()

# The reader's memory comes through our heap: zip_heap.cpp.
set(zip_heap ${CMAKE_SOURCE_DIR}/src/skins/zip/zip_heap)
add_library(kelvo_minizip STATIC ${minizip}/unzip.c ${minizip}/ioapi.c ${zip_heap}.cpp)
target_include_directories(kelvo_minizip SYSTEM PUBLIC ${minizip} ${KELVO_ZLIB_INCLUDE})
set(foreign $<COMPILE_LANGUAGE:C>)
target_compile_options(kelvo_minizip PRIVATE
  "$<${foreign}:-w;-include;${zip_heap}.h>" "$<$<NOT:${foreign}>:${KELVO_WARNINGS}>")
target_compile_definitions(kelvo_minizip PRIVATE
  "$<${foreign}:ALLOC=KelvoZipAllocate;TRYFREE=KelvoZipFree>"
  $<$<BOOL:${KELVO_CE_ARM}>:USE_FILE32API>)
target_link_libraries(kelvo_minizip PUBLIC ${KELVO_ZLIB} kelvo_base)
