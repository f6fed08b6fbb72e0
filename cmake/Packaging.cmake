# Packages by CPack: a .deb here, a .zip for Windows. What a .deb holds beside the program is made by the program itself.

set(CPACK_PACKAGE_NAME zyrexport)
include(cmake/ZyrVersion.cmake)
zyr_describe(${CMAKE_SOURCE_DIR} ${PROJECT_VERSION} package_version package_commit)
set(CPACK_PACKAGE_VERSION ${package_version})
set(CPACK_PACKAGE_CONTACT "zyrexport developers <zyrexport@zyrexport.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "scene exporter, the last link of a game's art pipeline")
set(CPACK_PACKAGE_DESCRIPTION
  "zyrexport walks a 3D scene (scene documents, glTF, FBX and its kin) in
which the artist has told what each node means for the game, and writes
skeletons, meshes, materials, textures, animations and gameplay data into
the game's resource tree. The package holds the command and the export
module for a modelling host.")
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  include(CPack)
  return()
endif()

# One command makes them all, in the layout of a Debian system.
set(made ${CMAKE_BINARY_DIR}/package)
add_custom_command(OUTPUT ${made}/done
  COMMAND ${CMAKE_SOURCE_DIR}/scripts/make-package-files $<TARGET_FILE:zyrexport> ${made}
  COMMAND ${CMAKE_COMMAND} -E touch ${made}/done
  DEPENDS zyrexport ${CMAKE_SOURCE_DIR}/scripts/make-package-files ${CMAKE_SOURCE_DIR}/scripts/make-man)
add_custom_target(package_files ALL DEPENDS ${made}/done)
install(DIRECTORY ${made}/man1 DESTINATION ${CMAKE_INSTALL_MANDIR})
install(DIRECTORY ${made}/bash-completion ${made}/zsh ${made}/fish DESTINATION ${CMAKE_INSTALL_DATADIR})
install(FILES ${made}/copyright ${made}/changelog.gz DESTINATION ${CMAKE_INSTALL_DOCDIR})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Libraries that are loaded when a file asks for them, so that nothing in the program names them, and what a batch runs.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libassimp5, libtiff6, libmeshoptimizer2d, ninja-build")
include(CPack)
