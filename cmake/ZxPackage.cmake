# Makes the Windows zip: the win64 build installed into a folder named after
# the version, the API reference added as docs/html, the folder zipped. Run
# with cmake -P (./zx package and the package test do):
#   BUILD_DIR  the win64 build tree (its libraries built)
#   SOURCE_DIR the source tree (Doxyfile and headers for the reference)
#   OUT_DIR    where ZxGrabberSupport-<version>-win64.zip goes; the folder it
#              zips is made beside it, in OUT_DIR/package
#   DOXYGEN    the doxygen program; empty leaves the reference out
cmake_minimum_required(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET)
endfunction()

file(STRINGS ${BUILD_DIR}/CMakeCache.txt version REGEX "^CMAKE_PROJECT_VERSION:")
string(REGEX REPLACE ".*=" "" version "${version}")
set(name ZxGrabberSupport-${version}-win64)
set(stage ${OUT_DIR}/package/${name})
file(REMOVE_RECURSE ${OUT_DIR}/package ${OUT_DIR}/${name}.zip)
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${stage} --strip)

if(DOXYGEN)
  # The project's Doxyfile with every output redirected into the package. A
  # header's opening comment documents the header, so its free functions and
  # enumerations are listed (as ./zx docs does).
  set(docs ${OUT_DIR}/package/doxygen)
  file(MAKE_DIRECTORY ${docs})
  set(files_dox "")
  file(GLOB headers ${SOURCE_DIR}/include/zx/*.h ${SOURCE_DIR}/platform/include/zxhost/*.h)
  foreach(h IN LISTS headers)
    get_filename_component(base ${h} NAME)
    string(APPEND files_dox "/** \\file ${base}\n")
    file(STRINGS ${h} lines)
    foreach(line IN LISTS lines)
      if(NOT line MATCHES "^// ")
        break()
      endif()
      string(REGEX REPLACE "^// " "" line "${line}")
      string(APPEND files_dox "${line}\n")
    endforeach()
    string(APPEND files_dox "*/\n")
  endforeach()
  file(WRITE ${docs}/files.dox "${files_dox}")
  file(READ ${SOURCE_DIR}/docs/Doxyfile doxyfile)
  string(REPLACE "build/docs/files.dox" "${docs}/files.dox" doxyfile "${doxyfile}")
  string(APPEND doxyfile "\nOUTPUT_DIRECTORY = ${stage}/docs\nWARN_LOGFILE = ${docs}/warnings.log\nQUIET = YES\n")
  file(WRITE ${docs}/Doxyfile "${doxyfile}")
  execute_process(COMMAND ${CMAKE_COMMAND} -E env ZX_VERSION=${version} ${DOXYGEN} ${docs}/Doxyfile
    WORKING_DIRECTORY ${SOURCE_DIR} COMMAND_ERROR_IS_FATAL ANY OUTPUT_QUIET ERROR_QUIET)
endif()

execute_process(COMMAND ${CMAKE_COMMAND} -E tar cf ${OUT_DIR}/${name}.zip --format=zip ${name}
  WORKING_DIRECTORY ${OUT_DIR}/package COMMAND_ERROR_IS_FATAL ANY)
message(STATUS "package: ${OUT_DIR}/${name}.zip")
