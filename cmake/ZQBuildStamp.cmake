# Writes the git revision and branch of SOURCE_DIR into the header OUTPUT.
# Outside a git checkout (or without git) every field reads "unknown".
function(zq_git out)
  execute_process(COMMAND git ${ARGN} WORKING_DIRECTORY ${SOURCE_DIR}
    OUTPUT_VARIABLE value RESULT_VARIABLE failed ERROR_QUIET OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(failed OR value STREQUAL "")
    set(value "")
  endif()
  set(${out} "${value}" PARENT_SCOPE)
endfunction()

set(ZQ_GIT_REVISION unknown)
set(ZQ_GIT_BUILD_ID unknown)
set(ZQ_GIT_BRANCH unknown)
find_program(GIT_EXECUTABLE git)
if(GIT_EXECUTABLE)
  zq_git(revision rev-parse --verify HEAD)
  if(revision MATCHES "^[0-9a-f]+$")
    set(ZQ_GIT_REVISION ${revision})
    string(SUBSTRING ${revision} 0 6 ZQ_GIT_BUILD_ID)
    zq_git(branch rev-parse --abbrev-ref HEAD)
    zq_git(upstream rev-parse --abbrev-ref --symbolic-full-name "@{upstream}")
    if(NOT branch STREQUAL "")
      set(ZQ_GIT_BRANCH ${branch})
    endif()
    if(NOT upstream STREQUAL "")
      set(ZQ_GIT_BRANCH "${ZQ_GIT_BRANCH}...${upstream}")
    endif()
  endif()
endif()

set(content "// Generated at build time; do not edit.
#pragma once
#define ZQ_GIT_REVISION \"${ZQ_GIT_REVISION}\"
#define ZQ_GIT_BUILD_ID \"${ZQ_GIT_BUILD_ID}\"
#define ZQ_GIT_BRANCH \"${ZQ_GIT_BRANCH}\"
")
if(EXISTS ${OUTPUT})
  file(READ ${OUTPUT} old)
endif()
if(NOT old STREQUAL content)
  file(WRITE ${OUTPUT} "${content}")
endif()
