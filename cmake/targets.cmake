# The kinds of targets that the folders declare.

# One run of ctest covers all builds, and it tells tests apart by their names alone: every name begins
# with the build's.
get_filename_component(KELVO_PRESET ${CMAKE_BINARY_DIR} NAME)

# kelvo_library(NAME SOURCES... [LINK LIBS...]): a static library of product code.
function(kelvo_library name)
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  add_library(${name} STATIC ${arg_UNPARSED_ARGUMENTS})
  target_compile_options(${name} PRIVATE ${KELVO_WARNINGS})
  target_link_libraries(${name} PUBLIC ${arg_LINK})
  set_property(GLOBAL APPEND PROPERTY KELVO_LIBRARIES ${name})
endfunction()

# kelvo_test(NAME SOURCES... [LINK LIBS...] [TIMEOUT SECONDS] [USES_MEDIA_READER] [MOVES_POINTER]): a
# GoogleTest program, run by ctest (under Wine for Windows targets) in the folder build/<preset>/bin.
# USES_MEDIA_READER: in this process; see tests/support/media_reader_main.cpp. MOVES_POINTER: the
# display's one pointer is moved; of these programs only one runs at a time.
function(kelvo_test name)
  cmake_parse_arguments(arg "USES_MEDIA_READER;MOVES_POINTER" "TIMEOUT" "LINK" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 300)
  endif()
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  target_compile_options(${name} PRIVATE ${KELVO_WARNINGS})
  target_link_libraries(${name} PRIVATE ${arg_LINK} gtest)
  if(arg_USES_MEDIA_READER)
    target_sources(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/support/media_reader_main.cpp)
  else()
    target_link_libraries(${name} PRIVATE gtest_main)
  endif()
  add_test(NAME ${KELVO_PRESET}.${name} COMMAND ${name}
           WORKING_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  set_tests_properties(${KELVO_PRESET}.${name} PROPERTIES TIMEOUT ${arg_TIMEOUT})
  if(arg_MOVES_POINTER)
    set_tests_properties(${KELVO_PRESET}.${name} PROPERTIES RESOURCE_LOCK ${KELVO_PRESET}.pointer)
  endif()
endfunction()

# kelvo_fuzz(NAME SOURCES... [LINK LIBS...]): a fuzz target, NAME.cpp with LLVMFuzzerTestOneInput.
# With KELVO_FUZZ it is a libFuzzer program; otherwise an ordinary test replays tests/fuzz/corpus/NAME/.
function(kelvo_fuzz name)
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  add_executable(fuzz_${name} ${arg_UNPARSED_ARGUMENTS})
  target_compile_options(fuzz_${name} PRIVATE ${KELVO_WARNINGS})
  target_link_libraries(fuzz_${name} PRIVATE ${arg_LINK})
  if(KELVO_FUZZ)
    target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
  else()
    target_sources(fuzz_${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests/fuzz/replay_main.cpp)
    add_test(NAME ${KELVO_PRESET}.fuzz_${name} COMMAND fuzz_${name} ${CMAKE_SOURCE_DIR}/tests/fuzz/corpus/${name})
    set_tests_properties(${KELVO_PRESET}.fuzz_${name} PROPERTIES TIMEOUT 300)
  endif()
endfunction()
