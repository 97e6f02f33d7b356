# The pages that a host on Windows gets with the component. They lead to each other and to nothing else.
set(qorcred_packed_pages
  behaviour.md
  deployment.md
  host-contract.md
  host-credentials.md
  host-dir-codes.md
  host-operations.md
  host-reports.md
  integration.md
  native.md
  reference.md
  schema.md
  security.md
  trace.md
  unit-file.md
  unit-merge.md)
list(TRANSFORM qorcred_packed_pages PREPEND ${PROJECT_SOURCE_DIR}/docs/)
