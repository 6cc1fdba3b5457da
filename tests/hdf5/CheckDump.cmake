# Writes the sample file with the library and reads it with h5dump, which must find every
# persisted form: -DWRITER=<program> -DH5DUMP=<h5dump or empty> -DFILE=<path>.
if(NOT H5DUMP)
  message("h5dump not found: skipped")
  return()
endif()
execute_process(COMMAND ${WRITER} ${FILE} RESULT_VARIABLE written)
if(NOT written EQUAL 0)
  message(FATAL_ERROR "writing ${FILE} failed: ${written}")
endif()
execute_process(COMMAND ${H5DUMP} ${FILE} RESULT_VARIABLE dumped OUTPUT_VARIABLE dump ERROR_VARIABLE errors)
if(NOT dumped EQUAL 0)
  message(FATAL_ERROR "h5dump failed (${dumped}):\n${errors}")
endif()
set(expected
    "DATASET \"values\""
    "H5T_STD_I64LE"
    "SIMPLE { \\( 6 \\) / \\( 6 \\) }"
    "100, 101, 102, 103, 104, 105"
    "ATTRIBUTE \"Capacity_0\""
    "ATTRIBUTE \"NumberOfDimensions\""
    "DATASET \"names\""
    "STRSIZE H5T_VARIABLE"
    "\\(0\\): \"first\", \""
    "DATASET \"settings\""
    "SIMPLE { \\( 1, 2 \\) / \\( 1, 2 \\) }"
    "\"unit\", \"mm\""
    "ATTRIBUTE \"title\""
    "STRSIZE 11;"
    "\"dump sample\""
    "H5T_IEEE_F64LE"
    "2\\.5")
foreach(pattern IN LISTS expected)
  if(NOT dump MATCHES "${pattern}")
    message(FATAL_ERROR "h5dump output lacks '${pattern}':\n${dump}")
  endif()
endforeach()
message(STATUS "h5dump read every form")
