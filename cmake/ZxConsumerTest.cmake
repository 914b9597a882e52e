# Builds examples/minimal-driver against a freshly installed package, the way a
# driver writer would, and runs it. Run with cmake -P; the variables come from
# the test's command line (see ZxPackageTests.cmake):
#   BUILD_DIR     the main build tree (installed from)
#   SOURCE_DIR    the main source tree
#   EXAMPLE_DIR   the example's source folder
#   GENERATOR, MAKE_PROGRAM, BUILD_TYPE, EXE_SUFFIX
#   TOOLCHAIN     toolchain file of a cross build (empty for a native one)
#   CXX_COMPILER  the native compiler (ignored with a toolchain file)
#   SANITIZE_FLAGS  flags every object of a sanitised build needs (may be empty)
#   EMULATOR      runs the program (Wine for a cross build; may be empty)
#   WIN32         true when the package is the Windows one
cmake_minimum_required(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(work ${BUILD_DIR}/package-test)
set(stage ${work}/stage)
set(prefix ${work}/prefix)
file(REMOVE_RECURSE ${work})

# Installed into one folder and moved to another: the package must not remember where it was made.
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${stage})
file(RENAME ${stage} ${prefix})

set(expected
  include/zx/export.h include/zx/histogram.h include/zxhost/export.h include/zxhost/picbuf.h
  lib/cmake/ZxGrabberSupport/ZxGrabberSupportConfig.cmake
  lib/cmake/ZxGrabberSupport/ZxGrabberSupportConfigVersion.cmake
  lib/cmake/ZxGrabberSupport/ZxGrabberSupportTargets.cmake)
if(WIN32)
  list(APPEND expected bin/zxgrabbersupport.dll bin/zxhost.dll lib/libzxgrabbersupport.dll.a lib/libzxhost.dll.a
    README.md LICENSE)
else()
  list(APPEND expected lib/libzxgrabbersupport.so lib/libzxhost.so)
endif()
# Every public header of the source tree is installed.
file(GLOB headers RELATIVE ${SOURCE_DIR}/include ${SOURCE_DIR}/include/zx/*.h)
file(GLOB host_headers RELATIVE ${SOURCE_DIR}/platform/include ${SOURCE_DIR}/platform/include/zxhost/*.h)
foreach(h IN LISTS headers host_headers)
  list(APPEND expected include/${h})
endforeach()
set(missing)
foreach(f IN LISTS expected)
  if(NOT EXISTS ${prefix}/${f})
    list(APPEND missing ${f})
  endif()
endforeach()
if(missing)
  message(FATAL_ERROR "not installed: ${missing}")
endif()

file(GLOB cmake_files ${prefix}/lib/cmake/ZxGrabberSupport/*.cmake)
foreach(f IN LISTS cmake_files)
  file(READ ${f} text)
  foreach(tree IN ITEMS ${BUILD_DIR} ${SOURCE_DIR})
    string(FIND "${text}" "${tree}" at)
    if(NOT at EQUAL -1)
      message(FATAL_ERROR "${f} names the build machine's folder ${tree}")
    endif()
  endforeach()
endforeach()

# Every installed header compiles in a driver's build: none needs a header the
# package lacks (headers that need <windows.h> only in the Windows package).
# One unit keeps it cheap; the sanitised preset skips it, since it changes
# nothing a header declares.
if(NOT SANITIZE_FLAGS)
  set(check ${BUILD_DIR}/package-headers)
  file(REMOVE_RECURSE ${check})
  file(GLOB installed RELATIVE ${prefix}/include ${prefix}/include/zx/*.h ${prefix}/include/zxhost/*.h)
  # Windows-only: including <windows.h>, or a header that is Windows-only itself.
  set(windows_only)
  foreach(h IN LISTS installed)
    file(STRINGS ${prefix}/include/${h} includes REGEX "^#[ \t]*include")
    string(REGEX MATCHALL "(windows\\.h|zx[a-z]*/[A-Za-z0-9_]+\\.h)" includes_${h} "${includes}")
  endforeach()
  set(changed TRUE)
  while(changed AND NOT WIN32)
    set(changed FALSE)
    foreach(h IN LISTS installed)
      if(h IN_LIST windows_only)
        continue()
      endif()
      foreach(i IN ITEMS windows.h ${windows_only})
        if(i IN_LIST includes_${h})
          list(APPEND windows_only ${h})
          set(changed TRUE)
          break()
        endif()
      endforeach()
    endforeach()
  endwhile()
  set(unit "")
  foreach(h IN LISTS installed)
    if(NOT h IN_LIST windows_only)
      string(APPEND unit "#include <${h}>\n")
    endif()
  endforeach()
  file(WRITE ${check}/all_headers.cpp "${unit}")
  file(WRITE ${check}/CMakeLists.txt "cmake_minimum_required(VERSION 3.21)
project(ZxHeaderCheck LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 17)
find_package(ZxGrabberSupport CONFIG REQUIRED)
add_library(headers OBJECT all_headers.cpp)
target_link_libraries(headers PRIVATE ZxGrabberSupport::core)
")
endif()

# The example's tree sits beside the main build's bin folder, so the Wine runner
# reuses the main build's prefix.
set(example_build ${BUILD_DIR}/package-example)
set(configure ${CMAKE_COMMAND} --fresh -S ${EXAMPLE_DIR} -B ${example_build} -G ${GENERATOR}
  -DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM} -DCMAKE_BUILD_TYPE=${BUILD_TYPE} -DCMAKE_PREFIX_PATH=${prefix}
  -DCMAKE_COMPILE_WARNING_AS_ERROR=ON)
if(TOOLCHAIN)
  list(APPEND configure -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN})
else()
  list(APPEND configure -DCMAKE_CXX_COMPILER=${CXX_COMPILER})
endif()
if(SANITIZE_FLAGS)
  list(APPEND configure "-DCMAKE_CXX_FLAGS=${SANITIZE_FLAGS}" "-DCMAKE_EXE_LINKER_FLAGS=${SANITIZE_FLAGS}")
endif()
run(${configure})
run(${CMAKE_COMMAND} --build ${example_build})
if(NOT SANITIZE_FLAGS)
  list(TRANSFORM configure REPLACE "^${EXAMPLE_DIR}$" ${check})
  list(TRANSFORM configure REPLACE "^${example_build}$" ${check}/build)
  run(${configure})
  run(${CMAKE_COMMAND} --build ${check}/build)
endif()
run(${EMULATOR} ${example_build}/minimal_driver${EXE_SUFFIX})
