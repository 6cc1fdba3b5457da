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
