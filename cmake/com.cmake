# The in-process COM server: dossierkit_com, what DossierKit.dll is made of but for its views; its type library and
# resources in dossierkit_com_resources; and dossierkit_com_library(NAME views), which makes a DLL of them.
enable_language(RC)
set(com ${PROJECT_SOURCE_DIR}/src/adapters/com)
set(made ${PROJECT_BINARY_DIR}/com)
file(MAKE_DIRECTORY ${made})

# What the type library is written in is known to Wine.
find_path(WINE_IDL_FOLDER oaidl.idl PATHS /usr/include/wine/wine/windows /usr/include/wine/windows
  NO_CMAKE_FIND_ROOT_PATH REQUIRED)
file(GLOB stdole /usr/lib/*/wine/*-windows/stdole2.tlb)
list(GET stdole 0 stdole)
get_filename_component(stdole ${stdole} DIRECTORY)
add_custom_command(OUTPUT ${made}/dossierkit_com.h ${made}/dossierkit.tlb
  COMMAND ${DOSSIERKIT_WIDL} -I${WINE_IDL_FOLDER} -L${stdole} -h -H ${made}/dossierkit_com.h ${com}/dossierkit.idl
  COMMAND ${DOSSIERKIT_WIDL} -I${WINE_IDL_FOLDER} -L${stdole} -t -T ${made}/dossierkit.tlb ${com}/dossierkit.idl
  DEPENDS ${com}/dossierkit.idl COMMENT "Building the type library")
add_custom_target(dossierkit_type_library DEPENDS ${made}/dossierkit_com.h ${made}/dossierkit.tlb)

add_library(dossierkit_com_resources OBJECT ${com}/dossierkit.rc)
target_include_directories(dossierkit_com_resources PRIVATE ${made})
set_property(SOURCE ${com}/dossierkit.rc APPEND PROPERTY OBJECT_DEPENDS ${made}/dossierkit.tlb)
add_dependencies(dossierkit_com_resources dossierkit_type_library)

file(GLOB com_sources CONFIGURE_DEPENDS ${com}/*.cpp ${com}/*.h)
list(REMOVE_ITEM com_sources ${com}/exports.cpp)
dossierkit_library(dossierkit_com Com ${com_sources} PUBLIC dossierkit_system
  ole32 oleaut32 uuid advapi32)
target_include_directories(dossierkit_com SYSTEM PUBLIC ${made})
add_dependencies(dossierkit_com dossierkit_type_library)

# A DLL of that name; `views` is the library that has MakePlatform().
function(dossierkit_com_library name views)
  set(com ${PROJECT_SOURCE_DIR}/src/adapters/com)
  add_library(${name} MODULE ${com}/exports.cpp ${com}/exports.def $<TARGET_OBJECTS:dossierkit_com_resources>)
  target_link_libraries(${name} PRIVATE dossierkit_options dossierkit_com ${views} dossierkit_com)
  # Without the names of functions, of which nobody who loads it knows.
  target_link_options(${name} PRIVATE $<$<CONFIG:Release>:-s>)
  set_target_properties(${name} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_link_options(${name} PRIVATE -Wl,--enable-stdcall-fixup,--kill-at)
  endif()
endfunction()
