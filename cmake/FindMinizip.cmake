# Minizip::Minizip: the unzip of the .pak containers.
find_package(ZLIB REQUIRED)
find_path(Minizip_INCLUDE_DIR minizip/unzip.h)
find_library(Minizip_LIBRARY minizip)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Minizip REQUIRED_VARS Minizip_LIBRARY Minizip_INCLUDE_DIR)

if(Minizip_FOUND AND NOT TARGET Minizip::Minizip)
  add_library(Minizip::Minizip UNKNOWN IMPORTED)
  set_target_properties(Minizip::Minizip PROPERTIES
    IMPORTED_LOCATION ${Minizip_LIBRARY}
    INTERFACE_INCLUDE_DIRECTORIES ${Minizip_INCLUDE_DIR}
    INTERFACE_LINK_LIBRARIES ZLIB::ZLIB)
endif()
