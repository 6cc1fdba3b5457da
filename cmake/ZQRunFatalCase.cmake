# Runs one process-ending case and checks its exit status and standard output.
# Inputs: LAUNCHER (list), DRIVER, CASE, EXPECTED_EXIT, EXPECT_BANNER, EXPECTED_OUTPUT.
set(banner "+++ FATAL ERROR +++ +++ FATAL ERROR +++ +++ FATAL ERROR +++ +++ FATAL ERROR +++ ")
execute_process(COMMAND ${LAUNCHER} ${DRIVER} ${CASE}
                OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE status)
message(STATUS "exit status: ${status}\n--- stdout ---\n${out}--- stderr ---\n${err}")

if(NOT status STREQUAL EXPECTED_EXIT)
  message(FATAL_ERROR "case ${CASE}: exit status ${status}, expected ${EXPECTED_EXIT}")
endif()
string(FIND "${out}" "${banner}\n" at)
if(EXPECT_BANNER AND at EQUAL -1)
  message(FATAL_ERROR "case ${CASE}: the fatal banner is missing from standard output")
endif()
if(NOT EXPECT_BANNER AND NOT at EQUAL -1)
  message(FATAL_ERROR "case ${CASE}: unexpected fatal banner on standard output")
endif()
if(EXPECTED_OUTPUT AND NOT out MATCHES "${EXPECTED_OUTPUT}")
  message(FATAL_ERROR "case ${CASE}: standard output does not match '${EXPECTED_OUTPUT}'")
endif()
string(FIND "${out}" "fatal case returned" returned)
if(NOT returned EQUAL -1)
  message(FATAL_ERROR "case ${CASE}: the process-ending call returned")
endif()
