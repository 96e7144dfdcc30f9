# SOCI with its Firebird backend and the Firebird client: SOCI::firebird.
find_path(SOCI_INCLUDE_DIR soci/soci.h)
find_path(FIREBIRD_INCLUDE_DIR ibase.h)
find_library(SOCI_CORE_LIBRARY soci_core)
find_library(SOCI_FIREBIRD_LIBRARY soci_firebird)
find_library(FBCLIENT_LIBRARY fbclient)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(SOCIFirebird REQUIRED_VARS
  SOCI_INCLUDE_DIR FIREBIRD_INCLUDE_DIR SOCI_CORE_LIBRARY SOCI_FIREBIRD_LIBRARY FBCLIENT_LIBRARY)

if(SOCIFirebird_FOUND AND NOT TARGET SOCI::firebird)
  add_library(SOCI::firebird INTERFACE IMPORTED)
  target_include_directories(SOCI::firebird SYSTEM INTERFACE ${SOCI_INCLUDE_DIR} ${FIREBIRD_INCLUDE_DIR})
  target_link_libraries(SOCI::firebird INTERFACE
    ${SOCI_FIREBIRD_LIBRARY} ${SOCI_CORE_LIBRARY} ${FBCLIENT_LIBRARY} ${CMAKE_DL_LIBS})
endif()
