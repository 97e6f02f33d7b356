# Reading headers and making their templates takes most of a source's time: several sources of a target are
# compiled as one, which takes half the time that each on its own does. Names in their unnamed namespaces
# must differ, then, or the source stands apart. With QORCRED_JOIN_SOURCES off every source is compiled on
# its own, as tools want to see them.

# qorcred_join_sources(target): twelve at a time.
function(qorcred_join_sources target)
  set_target_properties(${target} PROPERTIES
    UNITY_BUILD ${QORCRED_JOIN_SOURCES} UNITY_BUILD_BATCH_SIZE 12)
endfunction()

# qorcred_join_many_sources(target): a target of up to 48 sources that all read a large header, with as many
# pieces as a small machine has cores: each further one costs what reading the header does.
function(qorcred_join_many_sources target)
  set_target_properties(${target} PROPERTIES
    UNITY_BUILD ${QORCRED_JOIN_SOURCES} UNITY_BUILD_BATCH_SIZE 24)
endfunction()

# qorcred_keep_apart(target source...): sources of the current folder that are never joined to others.
function(qorcred_keep_apart target)
  set_source_files_properties(${ARGN} TARGET_DIRECTORY ${target}
                              PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()
