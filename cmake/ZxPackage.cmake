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
  # The reference exactly as ./zx docs makes it (its own output folder, so it
  # cannot race another run), copied into the package as docs/html.
  set(docs ${OUT_DIR}/package/doxygen)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env ZX_DOCS_OUT=${docs} ${SOURCE_DIR}/zx docs
    WORKING_DIRECTORY ${SOURCE_DIR} COMMAND_ERROR_IS_FATAL ANY)
  file(MAKE_DIRECTORY ${stage}/docs)
  file(COPY ${docs}/html DESTINATION ${stage}/docs)
endif()

execute_process(COMMAND ${CMAKE_COMMAND} -E tar cf ${OUT_DIR}/${name}.zip --format=zip ${name}
  WORKING_DIRECTORY ${OUT_DIR}/package COMMAND_ERROR_IS_FATAL ANY)
message(STATUS "package: ${OUT_DIR}/${name}.zip")
