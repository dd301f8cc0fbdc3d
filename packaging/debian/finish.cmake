# Run by CPack when the files of all packages lie ready: documents, compressed manual pages, archives without debug
# information.
set(debian ${CPACK_WIRELINES_SOURCE_DIR}/packaging/debian)

function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(STRINGS ${debian}/changelog newest LIMIT_COUNT 1)
if(NOT newest MATCHES "^wirelines \\(${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}\\)")
  message(FATAL_ERROR "${debian}/changelog begins with another version: ${newest}")
endif()

foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} upper)
  set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
  set(root ${CPACK_TEMPORARY_DIRECTORY}/${component})
  set(doc ${root}/usr/share/doc/${package})
  file(COPY ${debian}/copyright DESTINATION ${doc})
  configure_file(${debian}/changelog ${doc}/changelog.Debian COPYONLY)
  configure_file(${CPACK_WIRELINES_SOURCE_DIR}/CHANGELOG.md ${doc}/changelog COPYONLY)
  file(GLOB_RECURSE pages ${root}/usr/share/man/*.[1-8])
  run(gzip -9n ${doc}/changelog.Debian ${doc}/changelog ${pages})
  file(GLOB_RECURSE archives ${root}/*.a)
  if(archives)
    run(strip --strip-debug --enable-deterministic-archives ${archives})
  endif()
  run(chmod -R u=rwX,go=rX ${root})
endforeach()
