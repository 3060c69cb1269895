# Windows on x86-64, by the cross compilers of Debian.
set(DOSSIERKIT_WINDOWS_TARGET x86_64-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(DOSSIERKIT_WINDOWS_FLAGS "")
set(DOSSIERKIT_WINDOWS_WINE wine.sh)
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
