# cmake -D OBJDUMP=... -D DLL=... -P check_unwinding.cmake
# Every unwind entry of the 32-bit component covers instructions. An empty one begins where the next
# function does, which hides that function from the runtime's search: an exception that passes through it
# would end the host.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${OBJDUMP} --dwarf=frames ${DLL} OUTPUT_VARIABLE dump ERROR_QUIET
                COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "FDE cie=[0-9a-f]+ pc=[0-9a-f]+[.][.][0-9a-f]+" entries "${dump}")
list(LENGTH entries count)
if(count LESS 100)
  message(FATAL_ERROR "Only ${count} unwind entries were found: was the dump read right?")
endif()
foreach(entry ${entries})
  string(REGEX MATCH "pc=([0-9a-f]+)[.][.]([0-9a-f]+)" range "${entry}")
  if(CMAKE_MATCH_1 STREQUAL CMAKE_MATCH_2)
    message(FATAL_ERROR "An unwind entry without an instruction stands at ${CMAKE_MATCH_1}")
  endif()
endforeach()
message(STATUS "Unwind entries: ${count}, none of them empty")
