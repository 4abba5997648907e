# What is installed, and the packages: cpack in a build folder makes a .deb on Linux and a zip for Windows.
#   cmake --build build/release && (cd build/release && cpack)
if(NOT TARGET tembrel_program)
  return()
endif()
include(GNUInstallDirs)
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON) # tests and benchmarks are not packed

if(WIN32)
  # All in one folder, the factory's files beside the program.
  install(TARGETS tembrel_program tembrel_library RUNTIME DESTINATION .)
  install(DIRECTORY data/factory/ DESTINATION Default)
  install(DIRECTORY ${CMAKE_BINARY_DIR}/share/tembrel/Manual/ DESTINATION Manual)
  install(FILES README.md DESTINATION .)
  if(TEMBREL_HAS_DESKTOP)
    install(FILES ${TEMBREL_QT_DLLS} DESTINATION .)
    install(FILES ${TEMBREL_QT_PLATFORM} DESTINATION platforms)
  endif()
else()
  # The library is the program's own: it lies where only the program looks.
  install(TARGETS tembrel_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(TARGETS tembrel_library LIBRARY DESTINATION lib/tembrel)
  # One for both places: CMake fills up a path that it will change on installation with empty ones, each of which means
  # the folder that the user happens to be in.
  set_target_properties(tembrel_program PROPERTIES INSTALL_RPATH "$ORIGIN/../lib/tembrel:$ORIGIN"
                                                   BUILD_WITH_INSTALL_RPATH ON)
  install(DIRECTORY data/factory/ DESTINATION ${CMAKE_INSTALL_DATADIR}/tembrel/Default)
  install(DIRECTORY ${CMAKE_BINARY_DIR}/share/tembrel/Manual/ DESTINATION ${CMAKE_INSTALL_DATADIR}/tembrel/Manual)
  # Packed without name and time, so that equal texts give equal files.
  find_program(TEMBREL_GZIP gzip REQUIRED)
  set(packed ${CMAKE_BINARY_DIR}/packages/texts)
  foreach(text tembrel.1 changelog)
    add_custom_command(
      OUTPUT ${packed}/${text}.gz
      COMMAND ${CMAKE_COMMAND} -E make_directory ${packed}
      COMMAND ${TEMBREL_GZIP} -9nc ${CMAKE_SOURCE_DIR}/data/${text} > ${packed}/${text}.gz
      DEPENDS ${CMAKE_SOURCE_DIR}/data/${text}
      VERBATIM)
  endforeach()
  add_custom_target(tembrel_packed_texts DEPENDS ${packed}/tembrel.1.gz ${packed}/changelog.gz)
  add_dependencies(tembrel_program tembrel_packed_texts)
  install(FILES ${packed}/tembrel.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES ${packed}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})
  install(FILES data/completion/tembrel.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
          RENAME tembrel)
  install(FILES data/desktop/tembrel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
  install(FILES data/desktop/tembrel.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
  install(FILES README.md docs/file-formats.md docs/version-2-files.md data/copyright
          DESTINATION ${CMAKE_INSTALL_DOCDIR})
endif()

set(CPACK_PACKAGE_NAME tembrel)
set(CPACK_PACKAGE_VENDOR "Pellinor Software")
set(CPACK_PACKAGE_CONTACT "Pellinor Software <tembrel@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "software MIDI controller")
set(CPACK_PACKAGE_DESCRIPTION
    "Turns the computer's keyboard, joysticks and MIDI that arrives into MIDI
that leaves: through zones and layers, with arpeggios, sequences and
oscillators, to JACK, ALSA or a virtual port.")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_SECTION sound)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_BINARY_DIR}/bin)
  # Loaded while the program runs, where they are: joysticks, and priority for the clock.
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libsdl2-2.0-0, rtkit")
endif()
include(CPack)
