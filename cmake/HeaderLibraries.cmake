# The header-only libraries of the build machine for a build for another system. They are reached through links
# of their own: its include folder as a whole would bring headers that only fit the build machine.
set(header_links ${CMAKE_BINARY_DIR}/header-libraries)
file(MAKE_DIRECTORY ${header_links})

foreach(header CLI/CLI.hpp nlohmann/json.hpp stb/stb_image.h tiny_gltf.h)
  find_path(folder ${header} REQUIRED NO_CACHE NO_CMAKE_FIND_ROOT_PATH PATHS /usr/include)
  string(REGEX REPLACE "/.*" "" name ${header})
  file(CREATE_LINK ${folder}/${name} ${header_links}/${name} SYMBOLIC)
  unset(folder)
endforeach()

target_include_directories(zyr_flags SYSTEM INTERFACE ${header_links})
