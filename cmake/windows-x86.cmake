# Windows on 32 bits, by the cross compilers of Debian. Hosts call with a stack that is aligned to 4 bytes, and their
# floating point numbers are kept as everywhere else.
set(DOSSIERKIT_WINDOWS_TARGET i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(DOSSIERKIT_WINDOWS_FLAGS "-mstackrealign -msse2 -mfpmath=sse")
set(DOSSIERKIT_WINDOWS_WINE wine32.sh)
include(${CMAKE_CURRENT_LIST_DIR}/windows.cmake)
