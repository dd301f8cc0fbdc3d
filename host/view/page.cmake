# The page of `wirelines view`: built by npm from viewer/, and embedded in the viewer as arrays. What npm builds it with
# is fetched when CMake configures, since the program does without the viewer where it cannot be had.
set(WIRELINES_VIEWER AUTO CACHE STRING "Build the viewer: ON, OFF, or AUTO, when node and npm can build its page")

set(viewer ${PROJECT_SOURCE_DIR}/viewer)
set(node_modules ${viewer}/node_modules/.package-lock.json)  # npm's own record of what is there
set(lacking "")
if(NOT WIRELINES_VIEWER)
  set(lacking "WIRELINES_VIEWER is ${WIRELINES_VIEWER}")
else()
  find_program(NODE NAMES node nodejs)
  find_program(NPM npm)
  if(NOT NODE OR NOT NPM)
    set(lacking "there is no node or no npm")
  elseif(${viewer}/package-lock.json IS_NEWER_THAN ${node_modules})  # or that is not there
    message(STATUS "Fetching what the viewer's page is built with")
    execute_process(
      COMMAND ${NPM} ci --ignore-scripts --no-audit --no-fund --loglevel=error --fetch-retries=1 --fetch-timeout=60000
      WORKING_DIRECTORY ${viewer} RESULT_VARIABLE failed OUTPUT_QUIET ERROR_VARIABLE said)
    if(failed)
      set(lacking "npm could not fetch what its page is built with\n${said}")
    else()
      file(TOUCH ${node_modules})
    endif()
  endif()
endif()
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${viewer}/package-lock.json)
if(NOT lacking STREQUAL "")
  if(WIRELINES_VIEWER AND NOT WIRELINES_VIEWER STREQUAL "AUTO")
    message(FATAL_ERROR "The viewer cannot be built: ${lacking}")
  endif()
  message(NOTICE "The program is built without the viewer: ${lacking}")
  return()
endif()

set(page ${CMAKE_CURRENT_BINARY_DIR}/page.cpp)
set(page_dir ${CMAKE_CURRENT_BINARY_DIR}/page)
set(embed ${CMAKE_CURRENT_SOURCE_DIR}/view/embed.cmake)
file(GLOB_RECURSE page_sources CONFIGURE_DEPENDS ${viewer}/src/*)
add_custom_command(OUTPUT ${page}
  COMMAND ${CMAKE_COMMAND} -E env OUT_DIR=${page_dir} ${NODE} build.mjs
  COMMAND ${CMAKE_COMMAND} -D FOLDER=${page_dir} -D OUTPUT=${page} -P ${embed}
  DEPENDS ${node_modules} ${viewer}/build.mjs ${page_sources} ${embed}
  WORKING_DIRECTORY ${viewer}
  COMMENT "Building the viewer's page" VERBATIM)
