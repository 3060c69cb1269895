# cpack in build/windows-x64, once both widths are built: one zip with x64 and x86, each with the library, its icons
# and the demo host with the sample, and beside them the documents and examples for hosts.
set(widths x64 x86)
install(TARGETS DossierKit dossier RUNTIME DESTINATION . COMPONENT width
  LIBRARY DESTINATION . COMPONENT width)
install(FILES data/icons/USER.ICO data/icons/xinxj.ico ${SAMPLE_DATABASE} ${EMPTY_DATABASE} DESTINATION .
  COMPONENT width)
install(DIRECTORY data/photos DESTINATION . COMPONENT width FILES_MATCHING PATTERN *.jpg PATTERN svg EXCLUDE)
install(FILES src/adapters/com/dossierkit.idl ${PROJECT_BINARY_DIR}/com/dossierkit_com.h DESTINATION include
  COMPONENT common)
install(DIRECTORY examples/windows DESTINATION examples COMPONENT common)
install(FILES CHANGELOG.md DESTINATION . COMPONENT common)
install(FILES docs/windows.md docs/windows.zh-CN.md docs/database.md docs/database.zh-CN.md docs/hazards.md
  docs/hazards.zh-CN.md docs/keys.zh-CN.md docs/servers.md docs/servers.zh-CN.md DESTINATION docs COMPONENT common)
install(FILES bench/README.md DESTINATION bench COMPONENT common)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME dossierkit)
set(CPACK_PACKAGE_VENDOR DossierKit)
set(CPACK_PACKAGE_FILE_NAME dossierkit-${PROJECT_VERSION}-windows)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_CMAKE_PROJECTS "${PROJECT_BINARY_DIR};DossierKit;common;/")
foreach(width ${widths})
  list(APPEND CPACK_INSTALL_CMAKE_PROJECTS
    "${PROJECT_SOURCE_DIR}/build/windows-${width};DossierKit;width;/${width}")
endforeach()
include(CPack)
