# What the Windows toolchains share; `VRN_TRIPLE` names the target.
set(CMAKE_C_COMPILER ${VRN_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VRN_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${VRN_TRIPLE}-windres)

# The second is what script/windows-expat leaves.
set(CMAKE_FIND_ROOT_PATH /usr/${VRN_TRIPLE} ${CMAKE_CURRENT_LIST_DIR}/../build/expat/${VRN_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Files that need nothing but the system's own libraries.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)
