# The zip of the Windows component: the DLL with its type library, manifests, description, the guide with
# the pages that it leads to, and the examples.
install(TARGETS qorcred_dll RUNTIME DESTINATION . COMPONENT windows)
install(FILES
  ${PROJECT_BINARY_DIR}/qorCred.tlb
  ${PROJECT_BINARY_DIR}/qorCred.manifest
  ${PROJECT_BINARY_DIR}/application.manifest
  ${PROJECT_SOURCE_DIR}/com/qorcred.idl
  ${PROJECT_SOURCE_DIR}/docs/behaviour.md
  ${PROJECT_SOURCE_DIR}/docs/host-contract.md
  ${PROJECT_SOURCE_DIR}/docs/host-credentials.md
  ${PROJECT_SOURCE_DIR}/docs/host-dir-codes.md
  ${PROJECT_SOURCE_DIR}/docs/host-operations.md
  ${PROJECT_SOURCE_DIR}/docs/host-reports.md
  ${PROJECT_SOURCE_DIR}/docs/integration.md
  ${PROJECT_SOURCE_DIR}/docs/native.md
  ${PROJECT_SOURCE_DIR}/docs/reference.md
  ${PROJECT_SOURCE_DIR}/docs/schema.md
  ${PROJECT_SOURCE_DIR}/docs/security.md
  ${PROJECT_SOURCE_DIR}/docs/trace.md
  ${PROJECT_SOURCE_DIR}/docs/unit-file.md
  ${PROJECT_SOURCE_DIR}/docs/unit-merge.md
  DESTINATION . COMPONENT windows)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/script ${PROJECT_SOURCE_DIR}/examples/automation-cpp
        DESTINATION examples COMPONENT windows)

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_FILE_NAME qorCred-${PROJECT_VERSION}-${QORCRED_PLATFORM})
set(CPACK_COMPONENTS_ALL windows)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ALL_COMPONENTS_IN_ONE)
set(CPACK_COMPONENT_INCLUDE_TOPLEVEL_DIRECTORY ON)
include(CPack)
