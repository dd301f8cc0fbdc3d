# The page of `wirelines view`: built by npm from viewer/, and embedded in the viewer as arrays.
find_program(NODE NAMES node nodejs)
find_program(NPM npm)
set(can_build_page OFF)
if(NODE AND NPM)
  set(can_build_page ON)
endif()
option(WIRELINES_VIEWER "Build the viewer, its page with node and npm" ${can_build_page})
if(NOT WIRELINES_VIEWER)
  message(STATUS "WIRELINES_VIEWER is off: the program is built without the viewer")
  return()
endif()

set(page ${CMAKE_CURRENT_BINARY_DIR}/page.cpp)
set(page_dir ${CMAKE_CURRENT_BINARY_DIR}/page)
set(embed ${CMAKE_CURRENT_SOURCE_DIR}/view/embed.cmake)
set(viewer ${PROJECT_SOURCE_DIR}/viewer)
set(node_modules ${viewer}/node_modules/.package-lock.json)  # npm's own record of what is there
file(GLOB_RECURSE page_sources CONFIGURE_DEPENDS ${viewer}/src/*)
add_custom_command(OUTPUT ${node_modules}
  COMMAND ${NPM} ci --ignore-scripts --no-audit --no-fund --loglevel=error
  COMMAND ${CMAKE_COMMAND} -E touch ${node_modules}
  DEPENDS ${viewer}/package.json ${viewer}/package-lock.json
  WORKING_DIRECTORY ${viewer} COMMENT "Fetching what the viewer's page is built with" VERBATIM)
add_custom_command(OUTPUT ${page}
  COMMAND ${CMAKE_COMMAND} -E env OUT_DIR=${page_dir} ${NODE} build.mjs
  COMMAND ${CMAKE_COMMAND} -D FOLDER=${page_dir} -D OUTPUT=${page} -P ${embed}
  DEPENDS ${node_modules} ${viewer}/build.mjs ${page_sources} ${embed}
  WORKING_DIRECTORY ${viewer}
  COMMENT "Building the viewer's page" VERBATIM)
