# cmake -D SOURCE=TREE -D BUILD=FOLDER -D COMPILER=PROGRAM [-D PREFIX=FOLDERS] -P without_reader.cmake
# Configures TREE with its tests as where libmdb is not installed, and compiles what starts the reader.
cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${BUILD})
execute_process(
  COMMAND ${CMAKE_COMMAND} -G Ninja -S ${SOURCE} -B ${BUILD} -D CMAKE_CXX_COMPILER=${COMPILER}
    "-DCMAKE_PREFIX_PATH=${PREFIX}" -D QORCRED_BUILD_DESKTOP_READER=OFF -D QORCRED_BUILD_DESKTOP=OFF
  OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE failed)
if(failed OR NOT said MATCHES "desktop database files cannot be read")
  message(FATAL_ERROR "It is not configured without the reader: ${said}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target qorhost_desktop_file
                OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "It does not compile without the reader: ${said}")
endif()
file(GLOB_RECURSE readers ${BUILD}/qorhost-desktop-reader)
if(readers)
  message(FATAL_ERROR "The reader was built all the same: ${readers}")
endif()
file(REMOVE_RECURSE ${BUILD})
