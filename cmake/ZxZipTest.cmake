# The Windows zip as a driver writer gets it. With MAKE_ZIP the zip is made
# afresh and unpacked into an empty folder, and checked: what it holds, that
# its README links only inside it, that zip name, version header, CMake package
# version and both DLLs' version resources agree. Then the examples are built
# from the unpacked folder alone, with its toolchain file TOOLCHAIN, and the
# host runs the plug-in under Wine (the zip's own runner). Run with cmake -P:
#   BUILD_DIR, SOURCE_DIR, DOXYGEN  as for ZxPackage.cmake
#   GENERATOR, MAKE_PROGRAM         for the examples' build
#   TOOLCHAIN                       a file name under the zip's toolchains/
#   MAKE_ZIP                        ON: make and unpack; OFF: use the last unpacked zip
cmake_minimum_required(VERSION 3.25)

set(work ${BUILD_DIR}/zip-test)
set(root ${work}/unpacked)
file(STRINGS ${BUILD_DIR}/CMakeCache.txt version REGEX "^CMAKE_PROJECT_VERSION:")
string(REGEX REPLACE ".*=" "" version "${version}")
set(name ZxGrabberSupport-${version}-win64)
set(top ${root}/${name})

if(MAKE_ZIP)
  file(REMOVE_RECURSE ${work})
  execute_process(COMMAND ${CMAKE_COMMAND} -DBUILD_DIR=${BUILD_DIR} -DSOURCE_DIR=${SOURCE_DIR}
    -DOUT_DIR=${work}/out -DDOXYGEN=${DOXYGEN} -P ${CMAKE_CURRENT_LIST_DIR}/ZxPackage.cmake COMMAND_ERROR_IS_FATAL ANY)
  file(GLOB zips ${work}/out/*.zip)
  if(NOT zips STREQUAL "${work}/out/${name}.zip")
    message(FATAL_ERROR "expected one zip named ${name}.zip, found: ${zips}")
  endif()
  file(MAKE_DIRECTORY ${root})
  file(ARCHIVE_EXTRACT INPUT ${zips} DESTINATION ${root})

  set(missing)
  foreach(f README.md LICENSE bin/zxgrabbersupport.dll bin/zxhost.dll lib/libzxgrabbersupport.dll.a
      lib/libzxhost.dll.a include/zx/version.h include/zx/histogram.h include/zxhost/provider.h
      lib/cmake/ZxGrabberSupport/ZxGrabberSupportConfig.cmake lib/cmake/ZxGrabberSupport/ZxGrabberSupportConfigVersion.cmake
      toolchains/mingw-w64-x86_64.cmake toolchains/mingw-w64-x86_64-clang.cmake toolchains/wine-run.sh
      examples/CMakeLists.txt examples/driver/exampledriver.h examples/host/host_win.cpp)
    if(NOT EXISTS ${top}/${f})
      list(APPEND missing ${f})
    endif()
  endforeach()
  if(DOXYGEN AND NOT EXISTS ${top}/docs/html/index.html)
    list(APPEND missing docs/html/index.html)
  endif()
  if(missing)
    message(FATAL_ERROR "the zip lacks: ${missing}")
  endif()

  # Every link of the README resolves inside the zip.
  file(READ ${top}/README.md readme)
  # Brackets would nest in a CMake list: a link's "](" becomes a plain marker first.
  string(REPLACE "[" "" readme "${readme}")
  string(REPLACE "](" "<link>(" readme "${readme}")
  string(REGEX MATCHALL "<link>\\([^)]+\\)" links "${readme}")
  list(LENGTH links count)
  if(count LESS 5)
    message(FATAL_ERROR "README.md: only ${count} links found")
  endif()
  foreach(link IN LISTS links)
    string(REGEX REPLACE "^<link>\\(([^)#]*).*" "\\1" target "${link}")
    if(target STREQUAL "" OR target MATCHES "^[a-z]+:" OR NOT EXISTS ${top}/${target})
      message(FATAL_ERROR "README.md: the link ${link} leads outside the zip")
    endif()
  endforeach()

  # One version everywhere.
  file(STRINGS ${top}/include/zx/version.h header REGEX "#define ZX_VERSION_(MAJOR|MINOR|PATCH|STRING) ")
  string(REGEX REPLACE ".*MAJOR ([0-9]+).*MINOR ([0-9]+).*PATCH ([0-9]+).*STRING \"([^\"]*)\".*" "\\1.\\2.\\3 \\4"
    header "${header}")
  file(STRINGS ${top}/lib/cmake/ZxGrabberSupport/ZxGrabberSupportConfigVersion.cmake package
    REGEX "^set\\(PACKAGE_VERSION \"[0-9]")
  string(REGEX REPLACE ".*\"(.*)\".*" "\\1" package "${package}")
  if(NOT header STREQUAL "${version} ${version}" OR NOT package STREQUAL version)
    message(FATAL_ERROR "versions differ: zip ${version}, zx/version.h ${header}, CMake package ${package}")
  endif()
  # The version resource: the fixed part (numbers) and the FileVersion text.
  string(REPLACE "." ";" parts "${version}")
  list(GET parts 0 major)
  list(GET parts 1 minor)
  list(GET parts 2 patch)
  function(hex16 value out)   # a 16-bit value as little-endian hex
    math(EXPR lo "${value} % 256" OUTPUT_FORMAT HEXADECIMAL)
    math(EXPR hi "${value} / 256" OUTPUT_FORMAT HEXADECIMAL)
    string(REGEX REPLACE "^0x(.)$" "0x0\\1" lo ${lo})
    string(REGEX REPLACE "^0x(.)$" "0x0\\1" hi ${hi})
    string(REGEX REPLACE "^0x" "" lo ${lo})
    string(REGEX REPLACE "^0x" "" hi ${hi})
    set(${out} "${lo}${hi}" PARENT_SCOPE)
  endfunction()
  hex16(${major} h_major)
  hex16(${minor} h_minor)
  hex16(${patch} h_patch)
  # VS_FIXEDFILEINFO: signature, structure version, file version (minor, major, build 0, patch).
  set(fixed "bd04effe00000100${h_minor}${h_major}0000${h_patch}")
  set(text "46[0]*69[0]*6c[0]*65[0]*56[0]*65[0]*72[0]*73[0]*69[0]*6f[0]*6e00")
  string(HEX "${version}" v)
  string(REGEX REPLACE "(..)" "\\100" v "${v}")
  foreach(dll zxgrabbersupport zxhost)
    file(READ ${top}/bin/${dll}.dll bytes HEX)
    string(FIND "${bytes}" "${fixed}" at)
    string(REGEX MATCH "${text}(0000)+${v}0000" found "${bytes}")
    if(at EQUAL -1 OR NOT found)
      message(FATAL_ERROR "${dll}.dll: no version resource of ${version}")
    endif()
  endforeach()
endif()

# The examples, from the unpacked zip alone. Their tree sits beside the main
# build's bin folder, so the Wine runner reuses that build's prefix.
get_filename_component(flavour ${TOOLCHAIN} NAME_WE)
set(examples ${BUILD_DIR}/zip-${flavour})
file(REMOVE_RECURSE ${examples})
execute_process(COMMAND ${CMAKE_COMMAND} -S ${top}/examples -B ${examples} -G ${GENERATOR}
  -DCMAKE_MAKE_PROGRAM=${MAKE_PROGRAM} -DCMAKE_BUILD_TYPE=Release -DCMAKE_COMPILE_WARNING_AS_ERROR=ON
  -DCMAKE_TOOLCHAIN_FILE=${top}/toolchains/${TOOLCHAIN} -DCMAKE_PREFIX_PATH=${top}
  COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${examples} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
# The host closes the dialog itself after 30 frames and checks what auto exposure made of them.
execute_process(COMMAND ${top}/toolchains/wine-run.sh ${examples}/examplehost.exe exampledriver.dll 30
  COMMAND_ERROR_IS_FATAL ANY)
