# The zip of the Windows component: the DLL with its type library, manifests, description and guide.
install(TARGETS qorcred_dll RUNTIME DESTINATION . COMPONENT windows)
install(FILES
  ${PROJECT_BINARY_DIR}/qorCred.tlb
  ${PROJECT_BINARY_DIR}/qorCred.manifest
  ${PROJECT_BINARY_DIR}/application.manifest
  ${PROJECT_SOURCE_DIR}/com/qorcred.idl
  ${PROJECT_SOURCE_DIR}/docs/integration.md
  ${PROJECT_SOURCE_DIR}/docs/reference.md
  ${PROJECT_SOURCE_DIR}/docs/behaviour.md
  DESTINATION . COMPONENT windows)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME qorCred-${PROJECT_VERSION}-${QORCRED_PLATFORM})
set(CPACK_COMPONENTS_ALL windows)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
include(CPack)
