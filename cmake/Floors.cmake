# The floors of the house: one object library a folder of src/, built only on the floors below it.

# tembrel_of_this_system(LIST): leaves out the sources in the subfolder of the other system.
macro(tembrel_of_this_system LIST)
  if(WIN32)
    list(FILTER ${LIST} EXCLUDE REGEX "/linux/[^/]*$")
  else()
    list(FILTER ${LIST} EXCLUDE REGEX "/win32/[^/]*$")
  endif()
endmacro()

# tembrel_floor(FOLDER LIBRARY...): the object library tembrel_FOLDER of all sources in src/FOLDER and its subfolders,
# but for main.cpp and for the subfolder of the other system.
function(tembrel_floor FOLDER)
  set(here ${CMAKE_SOURCE_DIR}/src/${FOLDER})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${here}/*.cpp)
  tembrel_of_this_system(sources)
  list(REMOVE_ITEM sources ${here}/main.cpp)
  list(FILTER sources EXCLUDE REGEX "/With(out)?Desktop\\.cpp$") # see tembrel_windowless
  if(NOT sources)
    return()
  endif()
  add_library(tembrel_${FOLDER} OBJECT ${sources})
  target_link_libraries(tembrel_${FOLDER} PUBLIC tembrel_settings ${ARGN})
  if(TARGET tembrel_prelude AND NOT FOLDER STREQUAL "desktop") # which has its own
    target_precompile_headers(tembrel_${FOLDER} REUSE_FROM tembrel_prelude)
  endif()
endfunction()

# tembrel_make_prelude(): the standard library's larger headers, compiled once for all floors. Without TEMBREL_PRELUDE, as
# in the release preset, each source has to include what it uses.
function(tembrel_make_prelude)
  file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/prelude.cpp.new "")
  configure_file(${CMAKE_CURRENT_BINARY_DIR}/prelude.cpp.new ${CMAKE_CURRENT_BINARY_DIR}/prelude.cpp COPYONLY)
  add_library(tembrel_prelude OBJECT ${CMAKE_CURRENT_BINARY_DIR}/prelude.cpp)
  target_link_libraries(tembrel_prelude PRIVATE tembrel_settings)
  target_precompile_headers(tembrel_prelude PRIVATE <algorithm> <array> <atomic> <cstdint> <filesystem> <functional> <map>
                                                    <memory> <mutex> <optional> <string> <string_view> <utility> <vector>)
endfunction()

# tembrel_use_floors(TARGET FOLDER...): links the objects of those floors, as far as they have any.
function(tembrel_use_floors TARGET)
  target_link_libraries(${TARGET} PRIVATE tembrel_settings)
  foreach(folder IN LISTS ARGN)
    if(TARGET tembrel_${folder})
      target_link_libraries(${TARGET} PRIVATE tembrel_${folder})
    endif()
  endforeach()
endfunction()

# tembrel_tests(FOLDER FLOOR...): the test program tests_FOLDER of all sources in tests/FOLDER and its subfolders, but
# for the subfolder of the other system. Where TEMBREL_SKIPPED_TESTS names the folder, there is none.
function(tembrel_tests FOLDER)
  if(FOLDER IN_LIST TEMBREL_SKIPPED_TESTS)
    return()
  endif()
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tests/${FOLDER}/*.cpp)
  tembrel_of_this_system(sources)
  if(NOT sources)
    return()
  endif()
  add_executable(tests_${FOLDER} ${sources})
  tembrel_use_floors(tests_${FOLDER} ${ARGN})
  target_link_libraries(tests_${FOLDER} PRIVATE tests_settings)
  if(TARGET tests_support)
    target_link_libraries(tests_${FOLDER} PRIVATE tests_support)
  endif()
  target_precompile_headers(tests_${FOLDER} REUSE_FROM tests_prelude)
  add_test(NAME ${FOLDER} COMMAND tests_${FOLDER})
  set_tests_properties(${FOLDER} PROPERTIES TIMEOUT 300)
endfunction()
