# The zip of the Windows component: the DLL with its type library, manifests, description, the guide with
# the pages that it leads to, and the examples.
include(${CMAKE_CURRENT_LIST_DIR}/PackedPages.cmake)
install(TARGETS qorcred_dll RUNTIME DESTINATION . COMPONENT windows)
install(FILES
  ${PROJECT_BINARY_DIR}/qorCred.tlb
  ${PROJECT_BINARY_DIR}/qorCred.manifest
  ${PROJECT_BINARY_DIR}/application.manifest
  ${PROJECT_SOURCE_DIR}/com/qorcred.idl
  ${qorcred_packed_pages}
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
