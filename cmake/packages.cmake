# cpack: dossierkit, the demo host with what it needs, and libdossierkit-dev, what a host is built with; for Debian.
set(documents ${CMAKE_INSTALL_DATADIR}/doc)
set(made ${PROJECT_BINARY_DIR}/packaging)

# What Debian wants compressed, the same bytes every time.
function(dossierkit_compress source name)
  execute_process(COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/${source} OUTPUT_FILE ${made}/${name}
    COMMAND_ERROR_IS_FATAL ANY)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${source})
endfunction()
file(MAKE_DIRECTORY ${made})
dossierkit_compress(packaging/changelog changelog.gz)
dossierkit_compress(packaging/dossier.1 dossier.1.gz)
dossierkit_compress(packaging/dossier.zh_CN.1 dossier.zh_CN.1.gz)

install(FILES packaging/org.dossierkit.dossier.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/org.dossierkit.dossier.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES packaging/org.dossierkit.dossier.svg
  DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
install(FILES packaging/dossier.bash-completion RENAME dossier
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${made}/dossier.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${made}/dossier.zh_CN.1.gz RENAME dossier.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/zh_CN/man1)
foreach(package "dossierkit;program" "libdossierkit-dev;development")
  list(GET package 0 name)
  list(GET package 1 component)
  install(FILES packaging/copyright DESTINATION ${documents}/${name} COMPONENT ${component})
  install(FILES ${made}/changelog.gz DESTINATION ${documents}/${name} COMPONENT ${component})
endforeach()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME dossierkit)
set(CPACK_PACKAGE_CONTACT "DossierKit <maintainers@dossierkit.example>")
set(CPACK_PACKAGE_VENDOR DossierKit)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL program development)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_PROGRAM_PACKAGE_NAME dossierkit)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PROGRAM_PACKAGE_DEPENDS fonts-wqy-zenhei)
set(CPACK_COMPONENT_PROGRAM_DESCRIPTION "dossiers of award candidates
One window for one person, a page for each set of information: basic data,
education, work history, awards, patents and more. With a sample database.")

set(odbc_package)
if(DOSSIERKIT_ODBC)
  set(odbc_package ", unixodbc-dev")
endif()
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libdossierkit-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "dossierkit (= ${PROJECT_VERSION}), libsqlite3-dev, qt6-base-dev${odbc_package}")
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "data-entry component for dossiers, for hosts in C++
Libraries, headers and package files with which a program opens the window on
a person of its own database.")
include(CPack)
