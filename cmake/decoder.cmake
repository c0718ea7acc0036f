# The integer Vorbis decoder and the Ogg framing under it, compiled from their Debian sources.
set(tremor ${KELVO_SOURCES}/tremor)
set(ogg ${KELVO_SOURCES}/ogg)
if(NOT EXISTS ${tremor}/vorbisfile.c OR NOT EXISTS ${ogg}/src/framing.c)
  message(FATAL_ERROR "No decoder sources in ${KELVO_SOURCES}; run scripts/setup.sh")
endif()
set(decoder_sources)
foreach(file IN ITEMS block floor0 floor1 info mapping0 mdct registry res012 sharedbook
        synthesis vorbisfile window)
  list(APPEND decoder_sources ${tremor}/${file}.c)
endforeach()
set(decoder_config ${CMAKE_CURRENT_LIST_DIR}/../src/input/vorbis/decoder_config)
add_library(kelvo_decoder STATIC ${decoder_sources} ${ogg}/src/framing.c ${ogg}/src/bitwise.c
  ${decoder_config}/decoder_books.c ${decoder_config}/decoder_guard.c)
set_source_files_properties(${tremor}/vorbisfile.c PROPERTIES COMPILE_DEFINITIONS
  "ogg_sync_pageseek=KelvoSyncPageSeek;vorbis_synthesis_init=KelvoSynthesisInit")
# Our os_types.h comes before theirs.
target_include_directories(kelvo_decoder SYSTEM BEFORE PUBLIC
  ${decoder_config} ${tremor} ${ogg}/include)
target_compile_options(kelvo_decoder PRIVATE -w -std=gnu11 -fno-strict-aliasing)
target_compile_options(kelvo_decoder PRIVATE
  -include ${decoder_config}/decoder_stack.h)
target_compile_definitions(kelvo_decoder PRIVATE
  $<$<NOT:$<BOOL:${WIN32}>>:LITTLE_ENDIAN=1234 BIG_ENDIAN=4321 BYTE_ORDER=1234>)
# Foreign arithmetic relies on wrap-around.
target_compile_options(kelvo_decoder PRIVATE -fwrapv -fno-sanitize=undefined)
set_source_files_properties(${decoder_config}/decoder_books.c ${tremor}/vorbisfile.c PROPERTIES COMPILE_OPTIONS
  "-include;${decoder_config}/decoder_speed.h")
if(KELVO_CE_ARM)
  # The loops over samples gain by being unrolled; the transform is that already, and the compiler
  # must not keep more in hand than there are registers for.
  set_property(SOURCE ${tremor}/block.c ${tremor}/floor1.c ${tremor}/vorbisfile.c
    ${tremor}/window.c APPEND PROPERTY COMPILE_OPTIONS -O3 -funroll-loops)
  set_property(SOURCE ${tremor}/mdct.c APPEND PROPERTY COMPILE_OPTIONS
    -fno-schedule-insns -fno-ivopts -fno-tree-pre -fno-gcse)
endif()
