# Libraries for the device (KELVO_CE_ARM is set).
set(kelvo_device_dir ${CMAKE_SOURCE_DIR}/tools/device)
find_package(Python3 REQUIRED COMPONENTS Interpreter)
# The compiler's arithmetic comes last, whatever the folders link.
set(CMAKE_CXX_STANDARD_LIBRARIES -lgcc)

# The stubs of everything that the system's libraries offer, and the start-up code.
function(kelvo_device_runtime)
  file(GLOB lists CONFIGURE_DEPENDS ${kelvo_device_dir}/imports/*.txt)
  set(stubs ${CMAKE_BINARY_DIR}/device/import_stubs.S)
  file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/device)
  add_custom_command(OUTPUT ${stubs}
    COMMAND ${Python3_EXECUTABLE} ${kelvo_device_dir}/import_stubs.py ${lists} > ${stubs}
    DEPENDS ${lists} ${kelvo_device_dir}/import_stubs.py VERBATIM)
  set(object ${CMAKE_BINARY_DIR}/device/import_stubs.o)
  add_custom_command(OUTPUT ${object}
    COMMAND ${CMAKE_C_COMPILER} -march=armv4 -c ${stubs} -o ${object}
    DEPENDS ${stubs} VERBATIM)
  add_custom_target(kelvo_import_stubs DEPENDS ${object})
  add_library(kelvo_device_runtime OBJECT
    ${kelvo_device_dir}/runtime/atomics.cpp
    ${kelvo_device_dir}/runtime/compiler_support.cpp
    ${kelvo_device_dir}/runtime/start_up.cpp
    ${kelvo_device_dir}/runtime/system_calls.cpp)
  target_compile_options(kelvo_device_runtime PRIVATE ${KELVO_WARNINGS})
  set(KELVO_IMPORT_STUBS ${object} PARENT_SCOPE)
endfunction()

# kelvo_device_resource_object(NAME FILE.rc OUT): the compiled script's path, into the variable OUT.
function(kelvo_device_resource_object name script out)
  get_filename_component(script ${script} ABSOLUTE)
  get_filename_component(folder ${script} DIRECTORY)
  file(GLOB parts CONFIGURE_DEPENDS ${folder}/*.rc ${folder}/*.h)
  get_property(shared_parts GLOBAL PROPERTY KELVO_RESOURCE_PARTS)
  get_property(art GLOBAL PROPERTY KELVO_ART_FILES)
  get_property(art_folder GLOBAL PROPERTY KELVO_ART_DIRECTORY)
  set(object ${CMAKE_BINARY_DIR}/device/${name}_resources.o)
  add_custom_command(OUTPUT ${object}
    COMMAND i686-w64-mingw32-windres -DKELVO_CE_ARM=1 -I ${CMAKE_SOURCE_DIR} -I ${CMAKE_SOURCE_DIR}/src -I ${folder}
            -I ${CMAKE_SOURCE_DIR}/include -I ${art_folder} -O coff ${script} ${object}
    DEPENDS ${parts} ${shared_parts} ${art} VERBATIM)
  set(${out} ${object} PARENT_SCOPE)
endfunction()

# kelvo_device_resources(NAME FILE.rc): bin/NAME.dll, resources alone.
function(kelvo_device_resources name script)
  kelvo_device_resource_object(${name} ${script} object)
  file(GLOB converter CONFIGURE_DEPENDS ${kelvo_device_dir}/*.py ${kelvo_device_dir}/elf2pe/*.py)
  set(dll ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name}.dll)
  file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  add_custom_command(OUTPUT ${dll}
    COMMAND ${Python3_EXECUTABLE} -B ${kelvo_device_dir}/resources_to_pe.py ${object} ${dll}
            --version ${PROJECT_VERSION}
    DEPENDS ${converter} ${object} VERBATIM)
  add_custom_target(${name} ALL DEPENDS ${dll})
endfunction()

# The ELF image NAME_image of a library or program that the loader enters at ENTRY. A function that
# is neither ours nor in the import lists ends the link.
function(kelvo_device_image name entry)
  cmake_parse_arguments(arg "" "KEEP" "LINK" ${ARGN})
  set(image ${name}_image)
  add_executable(${image} ${arg_UNPARSED_ARGUMENTS} $<TARGET_OBJECTS:kelvo_device_runtime>
                 ${KELVO_IMPORT_STUBS})
  add_dependencies(${image} kelvo_import_stubs)
  set_target_properties(${image} PROPERTIES SUFFIX .elf
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/device
    LINK_DEPENDS "${kelvo_device_dir}/image.ld;${KELVO_IMPORT_STUBS}")
  target_compile_options(${image} PRIVATE ${KELVO_WARNINGS})
  target_link_options(${image} PRIVATE -march=armv4 -marm -nostdlib -static
    -Wl,-T,${kelvo_device_dir}/image.ld,-e,${entry},--emit-relocs,--fix-v4bx,--gc-sections,-u,${arg_KEEP}
    -Wl,--no-warn-rwx-segments,--no-wchar-size-warning,--no-enum-size-warning
    -Wl,-Map,${CMAKE_BINARY_DIR}/device/${name}.map)
  target_link_libraries(${image} PRIVATE ${arg_LINK})
endfunction()

# bin/FILE of the image NAME_image; what else the converter is told follows.
function(kelvo_device_convert name file)
  file(GLOB converter CONFIGURE_DEPENDS ${kelvo_device_dir}/*.py ${kelvo_device_dir}/elf2pe/*.py)
  set(out ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${file})
  file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  cmake_parse_arguments(arg "" "RESOURCES;EXPORT" "" ${ARGN})
  set(options)
  if(arg_EXPORT)
    list(APPEND options --export ${arg_EXPORT})
  endif()
  if(arg_RESOURCES)
    list(APPEND options --resources ${arg_RESOURCES})
  endif()
  add_custom_command(OUTPUT ${out}
    COMMAND ${Python3_EXECUTABLE} -B ${kelvo_device_dir}/elf_to_pe.py $<TARGET_FILE:${name}_image> ${out}
            --version ${PROJECT_VERSION} ${options}
    DEPENDS ${name}_image ${converter} ${arg_RESOURCES} VERBATIM)
  add_custom_target(${name} ALL DEPENDS ${out})
endfunction()

# kelvo_device_library(NAME SOURCES... EXPORT FUNCTION [RESOURCES FILE.rc] [LINK LIBS...]):
# bin/NAME.dll.
function(kelvo_device_library name)
  cmake_parse_arguments(arg "" "EXPORT;RESOURCES" "LINK" ${ARGN})
  kelvo_device_image(${name} KelvoLibraryEntry ${arg_UNPARSED_ARGUMENTS} KEEP ${arg_EXPORT} LINK ${arg_LINK})
  set(resources)
  if(arg_RESOURCES)
    kelvo_device_resource_object(${name} ${arg_RESOURCES} resource_object)
    set(resources RESOURCES ${resource_object})
  endif()
  kelvo_device_convert(${name} ${name}.dll EXPORT ${arg_EXPORT} ${resources})
endfunction()

# kelvo_device_program(NAME SOURCES... [LINK LIBS...]): bin/NAME.exe.
function(kelvo_device_program name)
  cmake_parse_arguments(arg "" "" "LINK" ${ARGN})
  kelvo_device_image(${name} KelvoProgramEntry ${arg_UNPARSED_ARGUMENTS}
                     ${kelvo_device_dir}/runtime/program_start.cpp KEEP KelvoProgramEntry LINK ${arg_LINK})
  kelvo_device_convert(${name} ${name}.exe)
endfunction()

# The names that the desktop's builds give to stand-ins for the device's libraries: here the stubs
# reach the real ones.
foreach(library IN ITEMS coredll_import aygshell_import)
  add_library(${library} INTERFACE)
endforeach()
kelvo_device_runtime()
