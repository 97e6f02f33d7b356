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
endif()
