# Language libraries for the tests, under language ids that no real translation uses.
function(kelvo_test_language id resource)
  add_library(language_${id} SHARED ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/language_library.cpp
    ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/${resource})
  set_target_properties(language_${id} PROPERTIES PREFIX "" OUTPUT_NAME kv_mui.${id})
endfunction()
kelvo_test_language(0452 language_partial.rc)
kelvo_test_language(083C language_hostile.rc)
