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

# kelvo_test(NAME SOURCES... [LINK LIBS...] [TIMEOUT SECONDS] [REQUIRES FIXTURE] [SUMMARY_DECIDES]
# [MOVES_POINTER]): a GoogleTest program, run by ctest (under Wine for Windows targets) in the folder
# build/<preset>/bin, after the test that sets FIXTURE up. SUMMARY_DECIDES: see
# tests/support/judge_by_summary.sh. MOVES_POINTER: the display's one pointer is moved; of these
# programs only one runs at a time.
function(kelvo_test name)
  cmake_parse_arguments(arg "SUMMARY_DECIDES;MOVES_POINTER" "TIMEOUT;REQUIRES" "LINK" ${ARGN})
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 300)
  endif()
  add_executable(${name} ${arg_UNPARSED_ARGUMENTS})
  target_compile_options(${name} PRIVATE ${KELVO_WARNINGS})
  target_link_libraries(${name} PRIVATE ${arg_LINK} gtest gtest_main)
  set(command ${name})
  if(arg_SUMMARY_DECIDES)
    set(command ${CMAKE_SOURCE_DIR}/tests/support/judge_by_summary.sh
        ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:${name}>)
  endif()
  add_test(NAME ${KELVO_PRESET}.${name} COMMAND ${command}
           WORKING_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  set_tests_properties(${KELVO_PRESET}.${name} PROPERTIES TIMEOUT ${arg_TIMEOUT})
  if(arg_MOVES_POINTER)
    set_tests_properties(${KELVO_PRESET}.${name} PROPERTIES RESOURCE_LOCK ${KELVO_PRESET}.pointer)
  endif()
  if(arg_REQUIRES)
    set_tests_properties(${KELVO_PRESET}.${name} PROPERTIES
                         FIXTURES_REQUIRED ${KELVO_PRESET}.${arg_REQUIRES})
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
