# What "cpack" makes of the installed files, in the folder packages/ of the build: a .zip for
# Windows, elsewhere a .tar.gz, and a .deb where there are the tools for it.
set(CPACK_PACKAGE_NAME snipwell)
set(CPACK_PACKAGE_VENDOR "Snipwell maintainers")
set(CPACK_PACKAGE_CONTACT "Snipwell maintainers <maintainers@snipwell.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "reduces programs on which a C or C++ compiler fails")
set(CPACK_PACKAGE_DESCRIPTION_FILE ${PROJECT_SOURCE_DIR}/packaging/description)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/packaging/copyright)
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
string(TOLOWER
       ${CPACK_PACKAGE_NAME}-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR}
       CPACK_PACKAGE_FILE_NAME)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
else()
  set(CPACK_GENERATOR TGZ)
  find_program(DPKG_SHLIBDEPS dpkg-shlibdeps)
  find_program(GZIP gzip)
  mark_as_advanced(DPKG_SHLIBDEPS GZIP)
  if(DPKG_SHLIBDEPS AND GZIP)
    list(APPEND CPACK_GENERATOR DEB)
  endif()
endif()

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "clang, g++")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Between installing into the package's folder and packing it.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/before_packing.cmake)
set(CPACK_SNIPWELL_CHANGELOG ${PROJECT_SOURCE_DIR}/packaging/changelog)
set(CPACK_SNIPWELL_GZIP ${GZIP})
set(CPACK_SNIPWELL_DOC_DIR ${CMAKE_INSTALL_DOCDIR})
set(CPACK_SNIPWELL_MAN_DIR ${CMAKE_INSTALL_MANDIR})

include(CPack)
