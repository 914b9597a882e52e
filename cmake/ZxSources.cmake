# Source collection shared by every target folder.
#
# Portable sources are *.cpp; Windows-only sources end in _win.cpp (or live in a
# folder that is Windows-only as a whole) and are left out of native Linux builds.
# Their counterparts for builds without a window system end in _posix.cpp and are
# left out of the Windows build, so a seam is two files rather than an #if.
# Globbing keeps new files from needing a CMakeLists edit; CONFIGURE_DEPENDS makes
# the build notice them.
function(zx_collect_sources out_var)
  set(result)
  foreach(dir IN LISTS ARGN)
    file(GLOB_RECURSE found CONFIGURE_DEPENDS ${dir}/*.cpp)
    foreach(f IN LISTS found)
      if(f MATCHES "_win\\.cpp$" AND NOT WIN32)
        continue()
      endif()
      if(f MATCHES "_posix\\.cpp$" AND WIN32)
        continue()
      endif()
      list(APPEND result ${f})
    endforeach()
  endforeach()
  set(${out_var} ${result} PARENT_SCOPE)
endfunction()

# Windows resource scripts of a folder (only meaningful in the win64 build).
function(zx_collect_resources out_var)
  set(result)
  if(WIN32)
    foreach(dir IN LISTS ARGN)
      file(GLOB found CONFIGURE_DEPENDS ${dir}/*.rc)
      list(APPEND result ${found})
    endforeach()
  endif()
  set(${out_var} ${result} PARENT_SCOPE)
endfunction()
