# Run by CPack when the packages are made. It gives packages of libraries scripts that call ldconfig, which Debian leaves
# to the trigger.
foreach(package ${CPACK_PACKAGE_FILES})
  if(package MATCHES "/libwirelines0_")
    set(folder ${CPACK_TEMPORARY_DIRECTORY}/opened)
    foreach(step IN ITEMS "dpkg-deb;-R;${package};${folder}"
                          "rm;${folder}/DEBIAN/postinst;${folder}/DEBIAN/postrm"
                          "dpkg-deb;--root-owner-group;-b;${folder};${package}")
      execute_process(COMMAND ${step} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
  endif()
endforeach()
