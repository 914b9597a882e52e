# The project version, in three places a driver or a user can see it: the
# generated header zx/version.h (with ZX_GetVersion for the loaded DLL), the
# version resource of both DLLs, and (ZxInstall.cmake) the CMake package.
set(ZX_GENERATED_INCLUDE ${PROJECT_BINARY_DIR}/generated/include)
configure_file(${CMAKE_CURRENT_LIST_DIR}/version.h.in ${ZX_GENERATED_INCLUDE}/zx/version.h @ONLY)
target_include_directories(zxgrabbersupport PUBLIC $<BUILD_INTERFACE:${ZX_GENERATED_INCLUDE}>)
install(FILES ${ZX_GENERATED_INCLUDE}/zx/version.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/zx)

if(WIN32)
  foreach(zx_dll IN ITEMS zxgrabbersupport zxhost)
    if(zx_dll STREQUAL zxhost)
      set(ZX_RC_DESCRIPTION "ZxGrabberSupport: stand-ins for the host application's libraries")
    else()
      set(ZX_RC_DESCRIPTION "ZxGrabberSupport: support library for camera driver plug-ins")
    endif()
    set(ZX_RC_FILE ${zx_dll}.dll)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/version.rc.in ${PROJECT_BINARY_DIR}/generated/${zx_dll}_version.rc @ONLY)
    target_sources(${zx_dll} PRIVATE ${PROJECT_BINARY_DIR}/generated/${zx_dll}_version.rc)
  endforeach()
endif()
