# The installed package: libraries, public headers and a relocatable CMake
# package, so a driver writes find_package(ZxGrabberSupport CONFIG REQUIRED)
# and links ZxGrabberSupport::core (image side, property values) or
# ZxGrabberSupport::ui (the Windows UI half; it includes core).
include(CMakePackageConfigHelpers)

set(ZX_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/ZxGrabberSupport)

set(zx_installed_targets zxgrabbersupport zxhost)
if(WIN32)
  # The UI half only exists in the Windows DLL; elsewhere the package holds core alone.
  list(APPEND zx_installed_targets zxgrabbersupport_ui)
endif()
install(TARGETS ${zx_installed_targets} EXPORT ZxGrabberSupportTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# Whole folders, read at install time: a header added later is installed without an edit here.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/zx ${PROJECT_SOURCE_DIR}/platform/include/zxhost
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  FILES_MATCHING PATTERN "*.h")

install(EXPORT ZxGrabberSupportTargets
  NAMESPACE ZxGrabberSupport::
  FILE ZxGrabberSupportTargets.cmake
  DESTINATION ${ZX_INSTALL_CMAKEDIR})

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/ZxGrabberSupportConfig.cmake.in
  ${PROJECT_BINARY_DIR}/ZxGrabberSupportConfig.cmake
  INSTALL_DESTINATION ${ZX_INSTALL_CMAKEDIR}
  NO_SET_AND_CHECK_MACRO)
# Before 1.0 a minor version may break the interface; from 1.0 on the major does.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(zx_compat SameMinorVersion)
else()
  set(zx_compat SameMajorVersion)
endif()
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZxGrabberSupportConfigVersion.cmake
  VERSION ${PROJECT_VERSION}
  COMPATIBILITY ${zx_compat})
install(FILES ${PROJECT_BINARY_DIR}/ZxGrabberSupportConfig.cmake
  ${PROJECT_BINARY_DIR}/ZxGrabberSupportConfigVersion.cmake
  DESTINATION ${ZX_INSTALL_CMAKEDIR})

# The Windows zip stands alone: its own README (every link inside the zip) and
# licence at the top, the examples and the toolchain files that build them.
# Unix trees keep the project's README and licence in the doc folder.
if(WIN32)
  configure_file(${PROJECT_SOURCE_DIR}/docs/package-readme.md.in ${PROJECT_BINARY_DIR}/generated/README.md @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/generated/README.md ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION .)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/ DESTINATION examples)
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/mingw-w64-x86_64.cmake ${PROJECT_SOURCE_DIR}/cmake/mingw-w64-x86_64-clang.cmake
    DESTINATION toolchains)
  install(PROGRAMS ${PROJECT_SOURCE_DIR}/cmake/wine-run.sh DESTINATION toolchains)
else()
  install(FILES ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
endif()
