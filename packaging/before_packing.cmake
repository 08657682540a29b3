# Run by cpack with the files of a package in place, before they are packed.

# The same rights whatever the umask of the one who packs.
file(CHMOD_RECURSE ${CPACK_TEMPORARY_INSTALL_DIRECTORY}
     DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                           WORLD_READ WORLD_EXECUTE)

if(NOT CPACK_GENERATOR STREQUAL "DEB")
  return()
endif()

# A .deb has a changelog besides, and that and the manual pages are compressed.
file(STRINGS ${CPACK_SNIPWELL_CHANGELOG} newest LIMIT_COUNT 1)
string(FIND "${newest}" "snipwell (${CPACK_PACKAGE_VERSION}) " found)
if(NOT found EQUAL 0)
  message(FATAL_ERROR "packaging/changelog does not begin with ${CPACK_PACKAGE_VERSION}")
endif()

set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}${CPACK_PACKAGING_INSTALL_PREFIX})
# Debian's zsh looks for what packages bring in a folder of its own.
file(MAKE_DIRECTORY ${root}/share/zsh/vendor-completions)
file(RENAME ${root}/share/zsh/site-functions/_snipwell
     ${root}/share/zsh/vendor-completions/_snipwell)
file(REMOVE_RECURSE ${root}/share/zsh/site-functions)

set(changelog ${root}/${CPACK_SNIPWELL_DOC_DIR}/changelog)
configure_file(${CPACK_SNIPWELL_CHANGELOG} ${changelog} COPYONLY
               FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
file(GLOB pages ${root}/${CPACK_SNIPWELL_MAN_DIR}/man1/*.1)
execute_process(COMMAND ${CPACK_SNIPWELL_GZIP} -9nf ${changelog} ${pages}
                COMMAND_ERROR_IS_FATAL ANY)
