# How every target is compiled: the language level, the warnings. Optimisation: CMakePresets.json; hardening:
# Hardening.cmake.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

find_program(CCACHE ccache)
if(CCACHE)
  # The sloppiness is what precompiled headers need. Without the build folder's name in the hash, build folders with
  # the same flags share their results.
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
      CCACHE_NOHASHDIR=1 ${CCACHE})
endif()

add_library(tembrel_settings INTERFACE)
target_include_directories(tembrel_settings INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(
  tembrel_settings
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wold-style-cast
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict> # g++ 12 sees overlaps in string concatenation that are not there
            -Werror
            -fno-semantic-interposition
            -fvisibility-inlines-hidden)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(tembrel_settings INTERFACE -fpch-preprocess)
endif()
if(WIN32)
  target_compile_definitions(tembrel_settings INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0601)
  target_link_options(tembrel_settings INTERFACE -static -static-libgcc -static-libstdc++)
else()
  set(THREADS_PREFER_PTHREAD_FLAG ON)
  find_package(Threads REQUIRED)
  target_link_libraries(tembrel_settings INTERFACE Threads::Threads)
endif()

# sanitize: "", "address,undefined" or "thread"; set by the presets asan and tsan.
set(TEMBREL_SANITIZE "" CACHE STRING "Sanitizers for all targets")
if(TEMBREL_SANITIZE)
  # The instrumented code misleads that warning; the other presets keep it.
  target_compile_options(tembrel_settings INTERFACE -fsanitize=${TEMBREL_SANITIZE} -fno-omit-frame-pointer
                                                    -fno-sanitize-recover=all -Wno-maybe-uninitialized)
  target_link_options(tembrel_settings INTERFACE -fsanitize=${TEMBREL_SANITIZE})
  if(TEMBREL_SANITIZE MATCHES "undefined")
    # These guard every access and double the time of a build. Null pointers crash by themselves, and the address
    # sanitizer says where; alignment is of no concern on the machines that we build for.
    target_compile_options(tembrel_settings INTERFACE -fno-sanitize=null,alignment,object-size,vptr)
  endif()
endif()
