# Warnings and instrumentation, as an interface target that every target of the project links.

add_library(qorcred_warnings INTERFACE)
if(MSVC)
  target_compile_options(qorcred_warnings INTERFACE /W4 /WX /permissive- /utf-8)
else()
  target_compile_options(qorcred_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
endif()

if(QORCRED_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(QORCRED_COVERAGE)
  add_compile_options(--coverage -O0)
  add_link_options(--coverage)
endif()

if(QORCRED_BUILD_FUZZERS AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "QORCRED_BUILD_FUZZERS needs Clang: set CMAKE_CXX_COMPILER=clang++")
endif()
