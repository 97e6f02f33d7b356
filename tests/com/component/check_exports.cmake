# cmake -D OBJDUMP=... -D DLL=... -P check_exports.cmake
# The component exports its five entry points under their plain names and nothing else, imports
# system libraries alone, and is smaller than 2 MB.
cmake_minimum_required(VERSION 3.25)
set(wanted_exports
  DllCanUnloadNow DllGetClassObject DllInstall DllRegisterServer DllUnregisterServer)
set(system_libraries advapi32.dll kernel32.dll msvcrt.dll ole32.dll oleaut32.dll user32.dll)
set(most_bytes 2097152)

execute_process(COMMAND ${OBJDUMP} -p ${DLL} OUTPUT_VARIABLE dump COMMAND_ERROR_IS_FATAL ANY)

string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table.*" table "${dump}")
string(REGEX MATCHALL "\n[ \t]*\\[ *[0-9]+\\][^\n]*" rows "${table}")
set(exports "")
foreach(row ${rows})
  string(REGEX REPLACE ".* " "" name "${row}")
  list(APPEND exports ${name})
endforeach()
list(SORT exports)
if(NOT exports STREQUAL wanted_exports)
  message(FATAL_ERROR "The component exports ${exports} instead of ${wanted_exports}")
endif()

string(REGEX MATCHALL "DLL Name: [^\n]+" rows "${dump}")
foreach(row ${rows})
  string(REGEX REPLACE "DLL Name: " "" library "${row}")
  string(TOLOWER "${library}" library)
  if(NOT library IN_LIST system_libraries)
    message(FATAL_ERROR "The component needs ${library}, which is no system library")
  endif()
endforeach()
list(LENGTH rows imports)
if(imports EQUAL 0)
  message(FATAL_ERROR "No imports were found: was the dump read right?")
endif()

file(SIZE ${DLL} bytes)
if(bytes GREATER most_bytes)
  message(FATAL_ERROR "The component has ${bytes} bytes, more than ${most_bytes}")
endif()
message(STATUS "${exports}; ${imports} system libraries; ${bytes} bytes")
