# Tests of what the package delivers: a driver built against the installed
# package, and (Windows) that the DLLs export every name their headers declare
# and that the zip stands alone.
set(zx_consumer_args
  -DBUILD_DIR=${PROJECT_BINARY_DIR} -DSOURCE_DIR=${PROJECT_SOURCE_DIR}
  -DGENERATOR=${CMAKE_GENERATOR} -DMAKE_PROGRAM=${CMAKE_MAKE_PROGRAM} -DBUILD_TYPE=${CMAKE_BUILD_TYPE}
  -DEXE_SUFFIX=${CMAKE_EXECUTABLE_SUFFIX} -DCXX_COMPILER=${CMAKE_CXX_COMPILER} -DWIN32=${WIN32}
  -DTOOLCHAIN=${CMAKE_TOOLCHAIN_FILE} -DEMULATOR=${CMAKE_CROSSCOMPILING_EMULATOR})
if(ZX_SANITIZE)
  list(APPEND zx_consumer_args "-DSANITIZE_FLAGS=-fsanitize=address,undefined")
endif()
add_test(NAME package_consumer COMMAND ${CMAKE_COMMAND} ${zx_consumer_args} -P ${CMAKE_CURRENT_LIST_DIR}/ZxConsumerTest.cmake)
set_tests_properties(package_consumer PROPERTIES TIMEOUT 600)

if(WIN32)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  string(REGEX REPLACE "objdump$" "c++filt" zx_cxxfilt "${CMAKE_OBJDUMP}")
  set(zx_check_exports ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/tools/package/check_exports.py
    --cxx ${CMAKE_CXX_COMPILER} --objdump ${CMAKE_OBJDUMP} --cxxfilt ${zx_cxxfilt}
    -I ${PROJECT_SOURCE_DIR}/include -I ${PROJECT_SOURCE_DIR}/platform/include)
  add_test(NAME package_exports_zxgrabbersupport COMMAND ${zx_check_exports}
    --library $<TARGET_FILE:zxgrabbersupport> --macro ZX_API
    --macro-header ${PROJECT_SOURCE_DIR}/include/zx/export.h --headers ${PROJECT_SOURCE_DIR}/include/zx)
  add_test(NAME package_exports_zxhost COMMAND ${zx_check_exports}
    --library $<TARGET_FILE:zxhost> --macro ZX_HOST_API
    --macro-header ${PROJECT_SOURCE_DIR}/platform/include/zxhost/export.h
    --headers ${PROJECT_SOURCE_DIR}/platform/include/zxhost)
  # The check itself: a header declaring names the DLL lacks must be reported, name by name.
  add_test(NAME package_exports_probe COMMAND ${zx_check_exports}
    --library $<TARGET_FILE:zxgrabbersupport> --macro ZX_API
    --macro-header ${PROJECT_SOURCE_DIR}/include/zx/export.h --headers ${PROJECT_SOURCE_DIR}/tools/package/probe)
  set_tests_properties(package_exports_probe PROPERTIES
    PASS_REGULAR_EXPRESSION "4 names declared exported.*\
not exported: exports_probe.h: CZxExportProbe::CZxExportProbe\\(\\)\n\
not exported: exports_probe.h: CZxExportProbe::Missing\\(\\?, \\?\\)\n\
not exported: exports_probe.h: ZX_ComputeHistogramAE\\(SZxAEHistogram, CZxHistoDraw, SZxGrabberProbe\\)\n\
no ZX_API: exports_probe.h: CZxUnmarkedProbe::Run\\(\\)\n\
no ZX_API: exports_probe.h: ZX_UnmarkedProbe\\(\\?\\)\n$")
  # The screenshot tool's program refuses what it does not know, with its usage.
  add_test(NAME zxsetup_usage COMMAND zxsetup --help)
  add_test(NAME zxsetup_refuses_unknown_arguments COMMAND zxsetup modal bogus)
  set_tests_properties(zxsetup_usage PROPERTIES PASS_REGULAR_EXPRESSION "^usage: zxsetup .*  speeduptime N")
  set_tests_properties(zxsetup_refuses_unknown_arguments PROPERTIES
    PASS_REGULAR_EXPRESSION "^zxsetup: unknown argument \"bogus\"\nusage: zxsetup ")
  # The zip: made, unpacked, checked, and its examples built from it alone and run,
  # with mingw-w64 GCC and (when installed; ./zx test installs it) with Clang.
  find_program(ZX_DOXYGEN doxygen)
  find_program(ZX_CLANGXX clang++)
  set(zx_zip_test ${CMAKE_COMMAND} -DBUILD_DIR=${PROJECT_BINARY_DIR} -DSOURCE_DIR=${PROJECT_SOURCE_DIR}
    -DDOXYGEN=${ZX_DOXYGEN} -DGENERATOR=${CMAKE_GENERATOR} -DMAKE_PROGRAM=${CMAKE_MAKE_PROGRAM})
  add_test(NAME package_zip COMMAND ${zx_zip_test} -DMAKE_ZIP=ON -DTOOLCHAIN=mingw-w64-x86_64.cmake
    -P ${CMAKE_CURRENT_LIST_DIR}/ZxZipTest.cmake)
  set_tests_properties(package_zip PROPERTIES TIMEOUT 600 FIXTURES_SETUP zx_zip)
  if(ZX_CLANGXX)
    add_test(NAME package_zip_clang COMMAND ${zx_zip_test} -DMAKE_ZIP=OFF -DTOOLCHAIN=mingw-w64-x86_64-clang.cmake
      -P ${CMAKE_CURRENT_LIST_DIR}/ZxZipTest.cmake)
    set_tests_properties(package_zip_clang PROPERTIES TIMEOUT 600 FIXTURES_REQUIRED zx_zip)
  endif()
endif()
