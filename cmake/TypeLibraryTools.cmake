# What makes a type library where there is no midl: QORCRED_WIDL, and the folders of automation's own
# descriptions (QORCRED_IDL_INCLUDES) and type library (QORCRED_IDL_LIBRARIES). What is missing is told
# with the package that has it.

function(qorcred_require variable what package)
  if(NOT ${variable})
    message(FATAL_ERROR "${what} was not found: install the package ${package} (its name on Debian and "
                        "Ubuntu) or set ${variable}")
  endif()
endfunction()

find_program(QORCRED_WIDL NAMES x86_64-w64-mingw32-widl widl
             DOC "Makes the type library from its description")
qorcred_require(QORCRED_WIDL "widl, which makes type libraries," mingw-w64-tools)

find_path(QORCRED_IDL_INCLUDES oaidl.idl
          PATHS /usr/include/wine/wine/windows /usr/include/wine/windows NO_CMAKE_FIND_ROOT_PATH
          DOC "Folder of automation's own descriptions")
qorcred_require(QORCRED_IDL_INCLUDES "oaidl.idl, a description of automation's own," libwine-dev)

find_path(QORCRED_IDL_LIBRARIES stdole2.tlb
          PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/wine/x86_64-windows
          NO_CMAKE_FIND_ROOT_PATH
          DOC "Folder of automation's own type library")
qorcred_require(QORCRED_IDL_LIBRARIES "stdole2.tlb, automation's own type library," libwine)
