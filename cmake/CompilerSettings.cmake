# Warnings and instrumentation, as an interface target that every target of the project links.

add_library(qorcred_warnings INTERFACE)
if(MSVC)
  target_compile_options(qorcred_warnings INTERFACE /W4 /permissive- /utf-8)
  if(QORCRED_BUILD_COM)
    # The runtime goes into the DLL: nothing has to be installed beside it.
    set(CMAKE_MSVC_RUNTIME_LIBRARY "MultiThreaded$<$<CONFIG:Debug>:Debug>")
  endif()
else()
  target_compile_options(qorcred_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
endif()

# Warnings are errors with the compilers that the checks run. Another one may know more warnings,
# and a newcomer's first build shall not fail for that.
string(REGEX MATCH "^[0-9]+" major "${CMAKE_CXX_COMPILER_VERSION}")
if("${CMAKE_CXX_COMPILER_ID} ${major}" MATCHES "^(GNU 12|Clang 14)$")
  target_compile_options(qorcred_warnings INTERFACE -Werror)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies in "text" + std::string() where there are none, from -O2 on.
  target_compile_options(qorcred_warnings INTERFACE -Wno-restrict)
  # Where it inlines strings from precompiled headers, it also sees copies beyond their bounds; and where
  # it inlines a variant that is moved, it sees alternatives read that the variant does not hold.
  target_compile_options(qorcred_warnings INTERFACE -Wno-array-bounds -Wno-stringop-overflow
                         -Wno-stringop-overread -Wno-maybe-uninitialized)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # This compiler looks for garbage whenever it has taken another 128 MiB, and finds little: left alone up
  # to half a GiB, it needs a seventh less time. Ninja runs two compilers more than there are processors.
  cmake_host_system_information(RESULT memory_mebibytes QUERY TOTAL_PHYSICAL_MEMORY)
  cmake_host_system_information(RESULT processors QUERY NUMBER_OF_LOGICAL_CORES)
  math(EXPR compilers_mebibytes "(${processors} + 2) * 1024")
  if(memory_mebibytes GREATER compilers_mebibytes)
    add_compile_options("SHELL:--param ggc-min-heapsize=524288")
  endif()
endif()

if(MINGW AND CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_SIZEOF_VOID_P EQUAL 4)
  # Otherwise this compiler leaves cold parts of functions without an instruction. Their unwind entries begin
  # where those of the next function do, and the 32-bit runtime, which searches the entries by halves, may
  # then find none for that function: an exception that passes through it ends the process.
  add_compile_options(-fno-reorder-blocks-and-partition)
endif()

# A compiler cache is used when the machine has one. It looks into precompiled headers only when it may
# take macros and times that they hold as they were.
if(NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(QORCRED_CCACHE ccache)
  mark_as_advanced(QORCRED_CCACHE)
  if(QORCRED_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${QORCRED_CCACHE})
  endif()
endif()

# Some forty programs of tests are linked, with all their sanitizers: this linker takes half the time.
find_program(QORCRED_LLD ld.lld)
mark_as_advanced(QORCRED_LLD)
if(QORCRED_LLD AND QORCRED_BUILD_TESTS AND NOT CMAKE_CROSSCOMPILING)
  add_link_options(-fuse-ld=lld)
endif()

if(QORCRED_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # Undefined behaviour ends the program where it happens. Saying in words what it was costs a third
    # of the compilation and most of the objects' size; where it was, the address sanitizer tells when
    # it handles the signal: ASAN_OPTIONS=handle_sigill=1, which the preset of the tests sets.
    add_compile_options(-fsanitize-undefined-trap-on-error)
    # A fifth of the compilation for what is found without: a null pointer ends the program where it is
    # followed, this processor reads any alignment, objects' sizes are known to optimised code alone, and
    # a trap cannot tell types apart.
    add_compile_options(-fno-sanitize=null,alignment,object-size,vptr)
  endif()
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
  add_link_options(-fsanitize=address,undefined)
endif()

if(CMAKE_CXX_COMPILER_ID MATCHES "Clang" AND CMAKE_CXX_COMPILER_LAUNCHER)
  # The cache knows by the contents whether a precompiled header is still the same.
  add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
endif()

if(QORCRED_COVERAGE)
  # Atomic counters: the tests run in parallel and share the counter files.
  add_compile_options(--coverage -fprofile-update=atomic)
  add_link_options(--coverage)
endif()

if(QORCRED_BUILD_FUZZERS)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "QORCRED_BUILD_FUZZERS needs Clang: set CMAKE_CXX_COMPILER=clang++-14")
  endif()
  # The code under test reports its branches to the fuzzer; only fuzzers link the engine itself.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
