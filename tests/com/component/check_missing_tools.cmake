# cmake -D TOOLS=.../TypeLibraryTools.cmake -P check_missing_tools.cmake
# Where something that makes the type library is missing, configuring ends with a message that names
# the package that has it.
cmake_minimum_required(VERSION 3.25)

# Fails unless the search with `definition` ends with a message that holds `file` and `package`.
function(expect_named definition file package)
  execute_process(COMMAND ${CMAKE_COMMAND} "${definition}" -P ${TOOLS}
                  RESULT_VARIABLE result ERROR_VARIABLE message)
  string(REGEX REPLACE "[ \n]+" " " message "${message}")
  if(result EQUAL 0 OR NOT message MATCHES "${file}.* install the package ${package} ")
    message(FATAL_ERROR "Without ${file} the search ended with ${result}: ${message}")
  endif()
endfunction()

expect_named("-DCMAKE_IGNORE_PATH=/usr/include/wine/wine/windows;/usr/include/wine/windows"
             oaidl.idl libwine-dev)
expect_named("-DCMAKE_IGNORE_PATH=/usr/lib/x86_64-linux-gnu/wine/x86_64-windows;/usr/lib/wine/x86_64-windows"
             stdole2.tlb libwine)
expect_named("-DCMAKE_IGNORE_PATH=/usr/bin;/usr/local/bin;/bin" widl mingw-w64-tools)

execute_process(COMMAND ${CMAKE_COMMAND} -P ${TOOLS} COMMAND_ERROR_IS_FATAL ANY)
