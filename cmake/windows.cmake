# What both toolchains share. The compilers with the threads of POSIX are the ones that have <mutex> and <thread>;
# everything is linked statically, so that a program imports what Windows itself brings and nothing else.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${DOSSIERKIT_WINDOWS_TARGET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${DOSSIERKIT_WINDOWS_TARGET}-g++-posix)
set(CMAKE_RC_COMPILER ${DOSSIERKIT_WINDOWS_TARGET}-windres)
find_program(DOSSIERKIT_WIDL ${DOSSIERKIT_WINDOWS_TARGET}-widl)
find_program(DOSSIERKIT_OBJDUMP ${DOSSIERKIT_WINDOWS_TARGET}-objdump)
set(CMAKE_CXX_FLAGS_INIT "${DOSSIERKIT_WINDOWS_FLAGS}")
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-static")
endforeach()
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/${DOSSIERKIT_WINDOWS_WINE})

separate_arguments(flags UNIX_COMMAND "${DOSSIERKIT_WINDOWS_FLAGS}")
if(NOT DOSSIERKIT_WINDOWS_LIBRARIES)
  message(STATUS "Looking for SQLite and GoogleTest for ${DOSSIERKIT_WINDOWS_TARGET}, which take a minute to make")
  execute_process(
    COMMAND ${CMAKE_CURRENT_LIST_DIR}/../scripts/windows_libraries.sh ${DOSSIERKIT_WINDOWS_TARGET}
      ${CMAKE_CURRENT_LIST_DIR}/../build/windows-libraries ${flags}
    OUTPUT_VARIABLE DOSSIERKIT_WINDOWS_LIBRARIES OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endif()
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES DOSSIERKIT_WINDOWS_LIBRARIES)
set(CMAKE_FIND_ROOT_PATH ${DOSSIERKIT_WINDOWS_LIBRARIES})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
foreach(kind LIBRARY INCLUDE PACKAGE)
  set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
