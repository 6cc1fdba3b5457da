# Installs the build into a private prefix, then builds and runs a C++-only consumer
# project against it twice: through find_package(ZQCore) and through pkg-config zqcore.
# One program uses the library without MPI, the other brings MPI up itself.
function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT status EQUAL 0)
    string(REPLACE ";" " " command "${ARGN}")
    message(FATAL_ERROR "failed (${status}): ${command}\n${out}\n${err}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

set(prefix ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

foreach(method cmake pkgconfig)
  set(build ${WORK_DIR}/build-${method})
  run(${CMAKE_COMMAND} -S ${CONSUMER_SOURCE} -B ${build} -DCMAKE_PREFIX_PATH=${prefix}
      -DZQ_CONSUMER_METHOD=${method} -DCMAKE_BUILD_TYPE=Release)
  run(${CMAKE_COMMAND} --build ${build})
  run(${build}/consumer_serial)
  if(NOT last_output MATCHES "ZQCore 1\\.5\\.0 serial, 3 values, last 2\\.5\nspan 1, midpoint 1 2 3")
    message(FATAL_ERROR "${method} serial consumer printed: ${last_output}")
  endif()
  run(${MPIEXEC} -n 1 ${build}/consumer)
  if(NOT last_output MATCHES "ZQCore 1\\.5\\.0 on 1 process")
    message(FATAL_ERROR "${method} consumer printed: ${last_output}")
  endif()
  message(STATUS "${method} consumer: ${last_output}")
endforeach()
