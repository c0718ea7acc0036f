# kelvo_export(TARGET DEF): the DLL exports what DEF lists, under plain names, and its import library
# serves callers that declare these functions WINAPI.
#
# DEF has 32-bit stdcall names (Name@bytes): that is what callers' objects ask for. The linker can
# strip the "@bytes" from the exports, but would strip them from its import library as well; dlltool
# makes one that maps Name@bytes to Name. 64-bit names have no decoration at all.
function(kelvo_export target def)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    file(READ ${def} text)
    string(REGEX REPLACE "@[0-9]+" "" text "${text}")
    set(plain ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
    file(CONFIGURE OUTPUT ${plain} CONTENT "${text}" @ONLY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${def})
    target_sources(${target} PRIVATE ${plain})
  else()
    target_sources(${target} PRIVATE ${def})
    target_link_options(${target} PRIVATE -Wl,--kill-at)
    add_custom_command(TARGET ${target} POST_BUILD
      COMMAND ${CMAKE_DLLTOOL} --kill-at --input-def ${def} --dllname $<TARGET_FILE_NAME:${target}>
              --output-lib $<TARGET_LINKER_FILE:${target}>
      VERBATIM)
  endif()
endfunction()
