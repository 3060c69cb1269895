# cmake --install: libraries, public headers, package files; the demo host and what it needs.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)
# What is not there for development.
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME program)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/DossierKit)
set(share ${CMAKE_INSTALL_DATADIR}/dossierkit)
# In small letters as the other folders, unless whoever builds names one.
if("$CACHE{CMAKE_INSTALL_DOCDIR}" STREQUAL "")
  set(CMAKE_INSTALL_DOCDIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/dossierkit)
endif()

# dossierkit_install(COMPONENT libraries...): what find_package knows by that name.
function(dossierkit_install component)
  install(TARGETS ${ARGN} EXPORT DossierKit${component}
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} NAMELINK_COMPONENT development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
    FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
  install(EXPORT DossierKit${component} NAMESPACE DossierKit:: DESTINATION ${package} COMPONENT development)
endfunction()

# dossierkit_pkg_config(NAME libraries REQUIRES packages PRIVATE packages): NAME.pc. A static library asks for what it needs
# itself of whoever links it.
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
function(dossierkit_pkg_config name)
  cmake_parse_arguments(PARSE_ARGV 1 PC "" "" "LIBRARIES;REQUIRES;PRIVATE")
  list(TRANSFORM PC_LIBRARIES PREPEND -l)
  list(JOIN PC_LIBRARIES " " libraries)
  if(NOT BUILD_SHARED_LIBS)
    list(APPEND PC_REQUIRES ${PC_PRIVATE})
    set(PC_PRIVATE)
  endif()
  list(JOIN PC_REQUIRES ", " requires)
  list(JOIN PC_PRIVATE ", " private)
  configure_file(cmake/dossierkit.pc.in ${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/pkgconfig/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT development)
endfunction()

dossierkit_install(System dossierkit_platform dossierkit_system dossierkit_care dossierkit_check)
dossierkit_install(Sqlite dossierkit_sqlite)
dossierkit_install(Headless dossierkit_headless)
dossierkit_pkg_config(dossierkit-system
  LIBRARIES dossierkit_check dossierkit_system dossierkit_care dossierkit_platform)
dossierkit_pkg_config(dossierkit-sqlite LIBRARIES dossierkit_sqlite REQUIRES dossierkit-system PRIVATE sqlite3)
dossierkit_pkg_config(dossierkit-headless LIBRARIES dossierkit_headless REQUIRES dossierkit-system)
set(all dossierkit-sqlite dossierkit-headless)
if(DOSSIERKIT_ODBC)
  dossierkit_install(Odbc dossierkit_odbc)
  dossierkit_pkg_config(dossierkit-odbc LIBRARIES dossierkit_odbc REQUIRES dossierkit-system PRIVATE odbc)
  dossierkit_install(Server dossierkit_server)
  dossierkit_pkg_config(dossierkit-server LIBRARIES dossierkit_server REQUIRES dossierkit-odbc dossierkit-sqlite)
  list(APPEND all dossierkit-server dossierkit-odbc)
endif()
if(DOSSIERKIT_QT)
  dossierkit_install(Qt dossierkit_qt)
  dossierkit_pkg_config(dossierkit-qt LIBRARIES dossierkit_qt REQUIRES dossierkit-system PRIVATE Qt6Widgets)
  list(APPEND all dossierkit-qt)
endif()
dossierkit_pkg_config(dossierkit REQUIRES ${all})

# The header that tells where the icons lie follows the prefix of the installation.
install(CODE "
  get_filename_component(DOSSIERKIT_SHARE \"\${CMAKE_INSTALL_PREFIX}/${share}\" ABSOLUTE)
  configure_file(\"${PROJECT_SOURCE_DIR}/cmake/share_folder.h.in\"
    \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_INCLUDEDIR}/dossierkit/share_folder.h\" @ONLY)"
  COMPONENT development)

file(RELATIVE_PATH share_from_package /${package} /${share})
configure_file(cmake/DossierKitConfig.cmake.in ${PROJECT_BINARY_DIR}/package/DossierKitConfig.cmake @ONLY)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/package/DossierKitConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/package/DossierKitConfig.cmake
  ${PROJECT_BINARY_DIR}/package/DossierKitConfigVersion.cmake DESTINATION ${package} COMPONENT development)

# What the author of a host reads, in the places in which it lies here: the pages name one another.
set(read_with README.md README.zh-CN.md CHANGELOG.md CONTRIBUTING.md bench/README.md fuzz/README.md data/schema.sql)
foreach(file ${read_with})
  get_filename_component(folder ${file} DIRECTORY)
  install(FILES ${file} DESTINATION ${CMAKE_INSTALL_DOCDIR}/${folder} COMPONENT development)
endforeach()
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development PATTERN build EXCLUDE)

install(FILES data/icons/USER.ICO data/icons/xinxj.ico DESTINATION ${share})
if(TARGET dossier)
  install(TARGETS dossier RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  install(FILES ${SAMPLE_DATABASE} ${EMPTY_DATABASE} DESTINATION ${share})
  install(DIRECTORY data/photos/ DESTINATION ${share}/photos FILES_MATCHING PATTERN *.jpg PATTERN svg EXCLUDE)
endif()
