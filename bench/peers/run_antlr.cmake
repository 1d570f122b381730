# Runs the ANTLR 3 tool. Its C templates cause thousands of harmless warnings about missing
# attributes; only errors are shown.
execute_process(
  COMMAND ${TOOL} -Xconversiontimeout 300000 -Xmaxdfaedges 65534 -fo ${FOLDER} ${GRAMMAR}
  OUTPUT_VARIABLE log ERROR_VARIABLE log RESULT_VARIABLE status)
string(REGEX MATCHALL "error\\([0-9]+\\):[^\n]*" errors "${log}")
if(NOT status EQUAL 0 OR errors)
  message(FATAL_ERROR "antlr3: ${status} ${errors}")
endif()
