# Installs the library with its headers, the package files for find_package(qorCred), and qorhost.
include(CMakePackageConfigHelpers)

install(TARGETS qorCred EXPORT qorCredTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library)
install(DIRECTORY frame credentials dircodes reports DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/qorCred
        COMPONENT library
        FILES_MATCHING PATTERN "*.h")
install(EXPORT qorCredTargets NAMESPACE qorCred:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/qorCred
        COMPONENT library)
configure_package_config_file(cmake/qorCredConfig.cmake.in qorCredConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/qorCred)
write_basic_package_version_file(qorCredConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qorCredConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/qorCredConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/qorCred COMPONENT library)
if(QORCRED_BUILD_HOST)
  install(TARGETS qorhost RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  if(TARGET qorhost_desktop_reader)
    install(TARGETS qorhost_desktop_reader
            RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/qorhost)
  endif()
  if(TARGET qorhost_words)
    set(words ${CMAKE_CURRENT_BINARY_DIR}/host/cli/words)
    install(FILES ${words}/qorhost.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    install(FILES ${words}/qorhost DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
    install(FILES ${words}/_qorhost DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions)
    install(FILES ${words}/qorhost.fish
            DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
  endif()
endif()
