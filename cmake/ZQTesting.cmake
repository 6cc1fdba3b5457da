# Test registration helpers: GoogleTest binaries under mpiexec at 1, 2 and 4 ranks, and
# process-ending cases checked for their exit status and the fatal banner.
find_package(GTest REQUIRED)

# Environment rather than launcher flags, so the same test list works with another MPI.
set(ZQ_MPI_TEST_ENV OMPI_ALLOW_RUN_AS_ROOT=1 OMPI_ALLOW_RUN_AS_ROOT_CONFIRM=1
    OMPI_MCA_rmaps_base_oversubscribe=1 OMPI_MCA_hwloc_base_binding_policy=none
    OMPI_MCA_btl_vader_single_copy_mechanism=none)
set(ZQ_TEST_RANKS 1 2 4 CACHE STRING "Rank counts at which multi-process tests run")

# zq_add_test_binary(<target> <sources>...): a GoogleTest binary with the MPI-aware main.
function(zq_add_test_binary target)
  add_executable(${target} ${ARGN})
  target_link_libraries(${target} PRIVATE zq_test_support zq_build_options)
endfunction()

# zq_add_mpi_test(<target> [RANKS n...]): runs <target> at each rank count.
function(zq_add_mpi_test target)
  cmake_parse_arguments(arg "" "" "RANKS" ${ARGN})
  if(NOT arg_RANKS)
    set(arg_RANKS ${ZQ_TEST_RANKS})
  endif()
  foreach(np IN LISTS arg_RANKS)
    add_test(NAME ${target}.np${np}
             COMMAND ${MPIEXEC_EXECUTABLE} ${MPIEXEC_NUMPROC_FLAG} ${np} ${MPIEXEC_PREFLAGS}
                     $<TARGET_FILE:${target}> ${MPIEXEC_POSTFLAGS})
    set_tests_properties(${target}.np${np} PROPERTIES PROCESSORS ${np} TIMEOUT 120
                         LABELS mpi ENVIRONMENT "${ZQ_MPI_TEST_ENV}")
  endforeach()
endfunction()

# zq_add_serial_test(<target>): runs <target> once, on one rank.
function(zq_add_serial_test target)
  zq_add_mpi_test(${target} RANKS 1)
endfunction()

# zq_add_fatal_case(<driver> <case> RANKS <n> EXIT <status> [NO_BANNER] [OUTPUT <regex>]):
# runs "<driver> <case>" under mpiexec with n ranks and checks that it ends with <status>
# and, unless NO_BANNER, that the fatal banner stands on standard output.
function(zq_add_fatal_case driver case)
  cmake_parse_arguments(arg "NO_BANNER" "RANKS;EXIT;OUTPUT" "" ${ARGN})
  if(NOT arg_RANKS)
    set(arg_RANKS 1)
  endif()
  set(banner ON)
  if(arg_NO_BANNER)
    set(banner OFF)
  endif()
  add_test(NAME ${driver}.${case}
           COMMAND ${CMAKE_COMMAND}
                   "-DLAUNCHER=${MPIEXEC_EXECUTABLE};${MPIEXEC_NUMPROC_FLAG};${arg_RANKS}"
                   -DDRIVER=$<TARGET_FILE:${driver}> -DCASE=${case} -DEXPECTED_EXIT=${arg_EXIT}
                   -DEXPECT_BANNER=${banner} "-DEXPECTED_OUTPUT=${arg_OUTPUT}"
                   -P ${PROJECT_SOURCE_DIR}/cmake/ZQRunFatalCase.cmake)
  set_tests_properties(${driver}.${case} PROPERTIES PROCESSORS ${arg_RANKS} TIMEOUT 60
                       LABELS fatal ENVIRONMENT "${ZQ_MPI_TEST_ENV}")
endfunction()
