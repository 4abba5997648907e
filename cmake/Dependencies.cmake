# Everything that the build takes from outside, all of it Debian packages. Sets
#   TEMBREL_PLATFORM_LIBRARIES  what src/platform links
#   TEMBREL_HOST_LIBRARIES      what src/host links: JACK, RtMidi, CLI11
# and provides GTest::gtest, GTest::gmock, GTest::gtest_main, and on Linux benchmark::benchmark.

# Headers only. A cross compiler must never see /usr/include, so it gets a folder with nothing but CLI/ in it.
add_library(tembrel_cli11 INTERFACE)
find_path(CLI11_FOLDER CLI/CLI.hpp PATHS /usr/include NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/include)
if(NOT EXISTS ${CMAKE_BINARY_DIR}/include/CLI)
  file(CREATE_LINK ${CLI11_FOLDER}/CLI ${CMAKE_BINARY_DIR}/include/CLI SYMBOLIC)
endif()
target_include_directories(tembrel_cli11 SYSTEM INTERFACE ${CMAKE_BINARY_DIR}/include)

if(WIN32)
  set(TEMBREL_PLATFORM_LIBRARIES ole32 oleaut32 shell32 winmm uuid user32 advapi32)

  # RtMidi has no mingw package: it is built here from Debian's source package.
  set(TEMBREL_DEPS ${CMAKE_SOURCE_DIR}/build/deps CACHE PATH "Unpacked source packages, shared by all build folders")
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/fetch-source ${TEMBREL_DEPS} rtmidi librtmidi-dev OUTPUT_VARIABLE rtmidi_folder
                  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  add_library(tembrel_rtmidi STATIC ${rtmidi_folder}/RtMidi.cpp)
  target_compile_definitions(tembrel_rtmidi PRIVATE __WINDOWS_MM__)
  target_compile_options(tembrel_rtmidi PRIVATE -w)
  target_include_directories(tembrel_rtmidi SYSTEM PUBLIC ${rtmidi_folder})
  target_link_libraries(tembrel_rtmidi PUBLIC winmm)
  set(TEMBREL_HOST_LIBRARIES tembrel_rtmidi tembrel_cli11 winmm)

  if(TEMBREL_TESTS)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
    foreach(name gtest gmock gtest_main)
      if(NOT TARGET GTest::${name})
        add_library(GTest::${name} ALIAS ${name})
      endif()
    endforeach()
  endif()
else()
  find_package(pugixml REQUIRED)
  set(TEMBREL_PLATFORM_LIBRARIES pugixml::pugixml)

  find_package(PkgConfig REQUIRED)
  # Its headers only: the library is loaded when joysticks are first looked for.
  pkg_check_modules(sdl2 REQUIRED sdl2)
  add_library(tembrel_sdl2 INTERFACE)
  target_include_directories(tembrel_sdl2 SYSTEM INTERFACE ${sdl2_INCLUDEDIR})
  # Likewise: loaded only where the kernel gives no real-time priority itself.
  pkg_check_modules(dbus REQUIRED IMPORTED_TARGET dbus-1)
  add_library(tembrel_dbus INTERFACE)
  target_include_directories(tembrel_dbus SYSTEM INTERFACE ${dbus_INCLUDE_DIRS})
  list(APPEND TEMBREL_PLATFORM_LIBRARIES tembrel_sdl2 tembrel_dbus ${CMAKE_DL_LIBS})

  pkg_check_modules(jack REQUIRED IMPORTED_TARGET jack)
  pkg_check_modules(rtmidi REQUIRED IMPORTED_TARGET rtmidi)
  # Its flags say which back ends the library was built with; its header does not ask.
  set_target_properties(PkgConfig::rtmidi PROPERTIES INTERFACE_COMPILE_OPTIONS "")
  set(TEMBREL_HOST_LIBRARIES PkgConfig::jack PkgConfig::rtmidi tembrel_cli11)

  if(TEMBREL_TESTS)
    find_package(GTest REQUIRED)
  endif()
  if(TEMBREL_BENCH)
    find_package(benchmark REQUIRED)
  endif()
endif()

# The window. Without it the program runs headless.
set(TEMBREL_HAS_DESKTOP OFF)
if(TEMBREL_DESKTOP)
  if(WIN32)
    # There is no mingw package of Qt: tools/qt-for-windows builds it. Its tools are those of this system's Qt.
    set(TEMBREL_WINDOWS_QT ${CMAKE_SOURCE_DIR}/build/qt-windows CACHE PATH "Where tools/qt-for-windows has put Qt")
    list(APPEND CMAKE_FIND_ROOT_PATH ${TEMBREL_WINDOWS_QT})
    list(APPEND CMAKE_PREFIX_PATH ${TEMBREL_WINDOWS_QT})
    set(QT_HOST_PATH /usr)
    file(GLOB QT_HOST_PATH_CMAKE_DIR /usr/lib/*/cmake/Qt6HostInfo)
    cmake_path(GET QT_HOST_PATH_CMAKE_DIR PARENT_PATH QT_HOST_PATH_CMAKE_DIR)
  endif()
  find_package(Qt6 6.4 QUIET COMPONENTS Widgets Test)
  if(Qt6Widgets_FOUND AND Qt6Test_FOUND)
    set(TEMBREL_HAS_DESKTOP ON)
    set(TEMBREL_DESKTOP_LIBRARIES Qt6::Widgets)
    if(WIN32)
      # Windows looks for DLLs beside the program, and Qt for what opens windows in a folder beside its DLLs.
      set(TEMBREL_QT_DLLS ${TEMBREL_WINDOWS_QT}/bin/Qt6Core.dll ${TEMBREL_WINDOWS_QT}/bin/Qt6Gui.dll
                          ${TEMBREL_WINDOWS_QT}/bin/Qt6Widgets.dll)
      set(TEMBREL_QT_PLATFORM ${TEMBREL_WINDOWS_QT}/plugins/platforms/qwindows.dll)
      file(COPY ${TEMBREL_QT_DLLS} ${TEMBREL_WINDOWS_QT}/bin/Qt6Test.dll DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
      file(COPY ${TEMBREL_WINDOWS_QT}/plugins/platforms DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
    else()
      pkg_check_modules(x11 REQUIRED IMPORTED_TARGET x11 xi)
      list(APPEND TEMBREL_DESKTOP_LIBRARIES PkgConfig::x11)
    endif()
  elseif(WIN32)
    message(STATUS "No Qt for Windows in ${TEMBREL_WINDOWS_QT}: no window. tools/qt-for-windows makes it.")
  endif()
endif()
