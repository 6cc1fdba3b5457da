# Warning and sanitizer flags shared by every target of the project.
add_library(zq_build_options INTERFACE)
target_compile_options(zq_build_options INTERFACE
  $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wshadow -Wnon-virtual-dtor>
  $<$<COMPILE_LANGUAGE:C>:-Wall -Wextra -Wshadow>)
if(ZQ_WARNINGS_AS_ERRORS)
  target_compile_options(zq_build_options INTERFACE -Werror)
endif()
if(ZQ_SANITIZE)
  target_compile_options(zq_build_options INTERFACE
    -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  target_link_options(zq_build_options INTERFACE -fsanitize=address,undefined)
endif()

# Hidden by default: only what carries an export macro leaves the shared libraries.
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

# MPI for the project's own targets that include mpi.h: the WMPI layer, tests, benchmarks
# and the example. mpi.h would otherwise pull Open MPI's C++ bindings into every C++ file
# that includes it, leaving references to libmpi_cxx that nothing links.
add_library(zq_mpi INTERFACE)
target_link_libraries(zq_mpi INTERFACE MPI::MPI_C)
target_compile_definitions(zq_mpi INTERFACE OMPI_SKIP_MPICXX=1 MPICH_SKIP_MPICXX=1)
