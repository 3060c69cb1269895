# What hosts include: the headers named here and those that they include in turn, as <dossierkit/...>. In
# src/ a header is known by its folder ("platform/ado/connection.h"), a name that belongs to any host as well;
# hence the copies in the build, which differ in the paths of their includes alone.
set(DOSSIERKIT_INCLUDE ${PROJECT_BINARY_DIR}/include)

# dossierkit_publish(headers...): after all libraries exist; gives each the headers of its folders.
function(dossierkit_publish)
  set(waiting ${ARGN})
  set(published)
  while(waiting)
    list(POP_FRONT waiting header)
    if(header IN_LIST published)
      continue()
    endif()
    list(APPEND published ${header})
    set(file ${PROJECT_SOURCE_DIR}/src/${header})
    if(NOT EXISTS ${file})
      set(file ${PROJECT_SOURCE_DIR}/${header})
    endif()
    set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${file})
    file(READ ${file} text)
    string(REGEX MATCHALL "#include \"[^\"]+\"" includes "${text}")
    foreach(include ${includes})
      string(REGEX REPLACE "#include \"([^\"]+)\"" "\\1" include ${include})
      if(NOT include MATCHES "^dossierkit/")
        list(APPEND waiting ${include})
      endif()
    endforeach()
    string(REGEX REPLACE "#include \"(dossierkit/)?" "#include \"dossierkit/" text "${text}")
    file(CONFIGURE OUTPUT ${DOSSIERKIT_INCLUDE}/dossierkit/${header} CONTENT "${text}" @ONLY)

    if(header MATCHES "^adapters/([a-z]+)/")
      set(target dossierkit_${CMAKE_MATCH_1})
    elseif(header MATCHES "^host/([a-z]+)/")
      set(target dossierkit_${CMAKE_MATCH_1})
    elseif(header MATCHES "^platform/")
      set(target dossierkit_platform)
    else()
      set(target dossierkit_system)
    endif()
    dossierkit_headers_of(${target} ${header})
  endwhile()
endfunction()

# Headers below the build's include/dossierkit, as public ones of a library.
function(dossierkit_headers_of target)
  list(TRANSFORM ARGN PREPEND ${DOSSIERKIT_INCLUDE}/dossierkit/ OUTPUT_VARIABLE files)
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${DOSSIERKIT_INCLUDE} FILES ${files})
endfunction()

# What no other public header includes; the umbrella includes all of them.
set(headers
  shell/component.h
  shell/i_user_ctrl.h
  platform/ado/recordset.h
  platform/ado/tracing_connection.h
  platform/environment/clock.h
  platform/environment/placed_failure.h
  platform/files/files.h
  host/care/care.h
  host/check/check.h
  pages/compiled_pages.h
  adapters/sqlite/sqlite_connection.h
  adapters/headless/headless_platform.h
  adapters/headless/headless_user.h)
if(DOSSIERKIT_QT)
  list(APPEND headers adapters/qt/qt_platform.h)
endif()
if(DOSSIERKIT_ODBC)
  list(APPEND headers adapters/odbc/odbc_connection.h host/server/opened.h host/server/own_rows.h)
endif()
dossierkit_publish(${headers})

list(TRANSFORM headers REPLACE "(.+)" "#include \"dossierkit/\\1\"" OUTPUT_VARIABLE DOSSIERKIT_INCLUDES)
list(JOIN DOSSIERKIT_INCLUDES "\n" DOSSIERKIT_INCLUDES)
configure_file(cmake/dossierkit.h.in ${DOSSIERKIT_INCLUDE}/dossierkit/dossierkit.h @ONLY)
configure_file(cmake/version.h.in ${DOSSIERKIT_INCLUDE}/dossierkit/version.h @ONLY)
configure_file(cmake/share_folder.h.in ${DOSSIERKIT_INCLUDE}/dossierkit/share_folder.h @ONLY)
dossierkit_headers_of(dossierkit_system dossierkit.h version.h share_folder.h)
