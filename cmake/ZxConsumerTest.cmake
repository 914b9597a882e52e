# Builds a small driver-like program against a freshly installed package, the
# way a driver writer would, and runs it; and compiles every installed header.
# Run with cmake -P; the variables come from the test's command line (see
# ZxPackageTests.cmake):
#   BUILD_DIR     the main build tree (installed from)
#   SOURCE_DIR    the main source tree
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

# A driver's build: one program that links the image side, checks that the
# library it loaded is the version its headers name, and counts a histogram.
# Every installed header compiles there too (headers that need <windows.h> only
# in the Windows package); the sanitised preset skips that unit, since it
# changes nothing a header declares.
set(check ${BUILD_DIR}/package-consumer)
file(REMOVE_RECURSE ${check})
file(WRITE ${check}/main.cpp [=[
#include <cstdio>
#include <cstring>
#include <vector>
#include <zx/histogram.h>
#include <zx/version.h>

int main()
{
    std::vector<uint16_t> pixels(64 * 48);
    for (size_t i = 0; i < pixels.size(); ++i)
        pixels[i] = uint16_t(i % 4096);
    SZxPicBuf frame;
    frame.uiWidth = 64;
    frame.uiHeight = 48;
    frame.uiRowBytes = 128;
    frame.uiBits = 12;
    frame.uiComp = 1;
    frame.ui64DataSize = pixels.size() * 2;
    frame.pData = pixels.data();
    SZxAEHistogram hist(12, true, false);
    ZX_ComputeHistogramAE(&hist, &frame, nullptr);
    std::printf("library %s (headers %s), histogram of %u pixels\n", ZX_GetVersionString(), ZX_VERSION_STRING,
                hist.uiPixelCount);
    const bool ok = ZX_GetVersion() == ZX_VERSION && std::strcmp(ZX_GetVersionString(), ZX_VERSION_STRING) == 0 &&
                    hist.uiPixelCount == 64 * 48 && hist.pdwHisto[0][100] == 1;
    return ok ? 0 : 1;
}
]=])
set(unit "")
if(NOT SANITIZE_FLAGS)
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
  foreach(h IN LISTS installed)
    if(NOT h IN_LIST windows_only)
      string(APPEND unit "#include <${h}>\n")
    endif()
  endforeach()
endif()
file(WRITE ${check}/all_headers.cpp "${unit}")
file(WRITE ${check}/CMakeLists.txt [=[
cmake_minimum_required(VERSION 3.21)
project(ZxConsumer LANGUAGES CXX)
set(CMAKE_CXX_STANDARD 17)
find_package(ZxGrabberSupport 0.1 CONFIG REQUIRED)
add_executable(consumer main.cpp all_headers.cpp)
target_link_libraries(consumer PRIVATE ZxGrabberSupport::core)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(consumer PRIVATE -Wall -Wextra)
endif()
if(WIN32)
  target_link_options(consumer PRIVATE -static)
  add_custom_command(TARGET consumer POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_RUNTIME_DLLS:consumer> $<TARGET_FILE_DIR:consumer>
    COMMAND_EXPAND_LISTS)
endif()
]=])

# The build tree sits beside the main build's bin folder, so the Wine runner
# reuses the main build's prefix.
set(consumer_build ${BUILD_DIR}/package-consumer-build)
set(configure ${CMAKE_COMMAND} --fresh -S ${check} -B ${consumer_build} -G ${GENERATOR}
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
run(${CMAKE_COMMAND} --build ${consumer_build})
run(${EMULATOR} ${consumer_build}/consumer${EXE_SUFFIX})
