# Cross build for Windows x64 with Debian's mingw-w64 (posix threading model).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(ZX_MINGW x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${ZX_MINGW}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ZX_MINGW}-g++-posix)
set(CMAKE_RC_COMPILER ${ZX_MINGW}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${ZX_MINGW})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Test executables run under Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/wine-run.sh)
