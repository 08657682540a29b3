# What "cmake --install" puts where.
include(GNUInstallDirs)

set(snipwell_data_dir ${CMAKE_INSTALL_DATADIR}/snipwell)

install(TARGETS snip snip-cc snipwell_program RUNTIME)

install(FILES README.md NEWS.md packaging/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR})
# A folder of its own, so that the links of the README lead there.
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs FILES_MATCHING PATTERN "*.md")
install(DIRECTORY share/ DESTINATION ${snipwell_data_dir}/criteria
        FILES_MATCHING PATTERN "*.criteria" PATTERN completions EXCLUDE)

if(NOT WIN32)
  install(DIRECTORY man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 FILES_MATCHING PATTERN "*.1")
  # Where each shell looks by itself, and for a name that each expects.
  install(FILES share/completions/snipwell.bash RENAME snipwell
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES share/completions/_snipwell
          DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
  install(FILES share/completions/snipwell.fish
          DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
  # In share, not in libexec: it is the user who names it, and it fits every machine.
  install(PROGRAMS scripts/g++.sh DESTINATION ${snipwell_data_dir})
endif()

include(cmake/package.cmake)
