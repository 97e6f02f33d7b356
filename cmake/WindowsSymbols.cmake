# What a debugger needs of a DLL that MinGW builds, beside the DLL instead of in it.

# qorcred_separate_symbols(dll TARGETS...)
#
# After each linking, <dll>.dll.debug has the DWARF symbols, to which the DLL refers by name and checksum,
# <dll>.pdb the names of all functions with their addresses: GCC writes no types or lines in that form.
# The DLL does not depend on when and where it was built. TARGETS are what it is made of.
function(qorcred_separate_symbols dll)
  foreach(target ${ARGN})
    target_compile_options(${target} PRIVATE
      -g -ffile-prefix-map=${PROJECT_BINARY_DIR}=build -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
  endforeach()
  target_link_options(${dll} PRIVATE
    -Wl,--no-insert-timestamp -Wl,--build-id=sha1 -Wl,--pdb=qorCred.pdb)
  set(file $<TARGET_FILE:${dll}>)
  # Otherwise these note down when they ran.
  set(timeless ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0)
  add_custom_command(TARGET ${dll} POST_BUILD
    COMMAND ${timeless} ${CMAKE_OBJCOPY} --only-keep-debug ${file} ${file}.debug
    COMMAND ${timeless} ${CMAKE_STRIP} --strip-all ${file}
    COMMAND ${timeless} ${CMAKE_OBJCOPY} --add-gnu-debuglink=${file}.debug ${file}
    BYPRODUCTS ${PROJECT_BINARY_DIR}/qorCred.dll.debug ${PROJECT_BINARY_DIR}/qorCred.pdb
    VERBATIM)
endfunction()
