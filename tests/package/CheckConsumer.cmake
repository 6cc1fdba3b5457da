# Installs the build into a private prefix, then builds and runs a small program against
# it twice: through find_package(ZQCore) and through pkg-config zqcore.
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
  run(${MPIEXEC} -n 1 ${build}/consumer)
  if(NOT last_output MATCHES "ZQCore 1\\.5\\.0 on 1 process")
    message(FATAL_ERROR "${method} consumer printed: ${last_output}")
  endif()
  message(STATUS "${method} consumer: ${last_output}")
endforeach()
