# What a debugger needs of a DLL that MinGW builds, beside the DLL instead of in it.

# qorcred_separate_symbols(dll TARGETS...)
#
# After each linking, <dll>.dll.debug has the DWARF symbols, to which the DLL refers by name and checksum,
# <dll>.pdb the names of all functions with their addresses: GCC writes no types or lines in that form.
# The DLL does not depend on when and where it was built, nor on a compiler cache, which may hand the compiler
# paths from the build folder where it was given whole ones, and options of its own. TARGETS are what it is
# made of.
function(qorcred_separate_symbols dll)
  file(RELATIVE_PATH tree_from_build "${CMAKE_BINARY_DIR}" "${PROJECT_SOURCE_DIR}")
  string(REGEX REPLACE "/$" "" tree_from_build "${tree_from_build}")
  # The last that fits counts. Whole paths and those from the build folder become the same.
  set(maps ${PROJECT_SOURCE_DIR}=. ${CMAKE_BINARY_DIR}=build ${CMAKE_BINARY_DIR}/= ${tree_from_build}/=./)
  list(TRANSFORM maps PREPEND -ffile-prefix-map=)
  foreach(target ${ARGN})
    target_compile_options(${target} PRIVATE -g -gno-record-gcc-switches ${maps})
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
