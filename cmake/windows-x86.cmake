# Cross build for Windows (i686) with MinGW-w64. The posix thread model has std::mutex and std::thread.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(VRN_TRIPLE i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
