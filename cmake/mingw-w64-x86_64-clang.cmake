# Cross build for Windows x64 with Debian's clang, on the headers and libraries
# of Debian's mingw-w64 GCC (packages clang, g++-mingw-w64-x86-64-posix). Clang
# targeting mingw-w64 has GCC's C++ ABI and uses its libstdc++, so code built
# with it links the library's C++ API like code built with GCC.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(ZX_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET ${ZX_MINGW})
set(CMAKE_CXX_COMPILER_TARGET ${ZX_MINGW})
set(CMAKE_RC_COMPILER ${ZX_MINGW}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${ZX_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

# Clang does not find Debian's mingw-w64 libstdc++ (it lives in a folder named
# after GCC's version and threading model), so it is named here.
file(GLOB ZX_MINGW_GCC_DIR /usr/lib/gcc/${ZX_MINGW}/*-posix)
list(GET ZX_MINGW_GCC_DIR 0 ZX_MINGW_GCC_DIR)
set(CMAKE_CXX_FLAGS_INIT "-isystem ${ZX_MINGW_GCC_DIR}/include/c++ \
-isystem ${ZX_MINGW_GCC_DIR}/include/c++/${ZX_MINGW} -isystem ${ZX_MINGW_GCC_DIR}/include/c++/backward")
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-L${ZX_MINGW_GCC_DIR}")
endforeach()
# That libstdc++ uses the POSIX threads of mingw-w64: the run-time libraries are
# linked as one group so that each finds the others' symbols.
set(zx_windows_libs "-lkernel32 -luser32 -lgdi32 -lwinspool -lshell32 -lole32 -loleaut32 -luuid -lcomdlg32 -ladvapi32")
set(CMAKE_CXX_STANDARD_LIBRARIES "${zx_windows_libs} -Wl,--start-group -lstdc++ -lmingw32 -lgcc -lgcc_eh \
-lmoldname -lmingwex -lmsvcrt -lkernel32 -lpthread -Wl,--end-group")
set(CMAKE_C_STANDARD_LIBRARIES "${zx_windows_libs}")
# Test executables run under Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh)
