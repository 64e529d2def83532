# The walk through the program on a fresh copy of the bundled corpus:
# cmake -DTOOL=... -DSAMPLE=... -DWORK=... -DXVFB_RUN=... -P walkthrough.cmake
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
file(COPY ${SAMPLE}/ DESTINATION ${WORK}/data)
execute_process(
  COMMAND ${XVFB_RUN} -a -s "-screen 0 1600x1000x24" ${TOOL} ${WORK}/data ${WORK}/pictures
  RESULT_VARIABLE result
  OUTPUT_VARIABLE out
  ERROR_VARIABLE err)
if(NOT result EQUAL 0)
  string(REGEX MATCHALL "step [0-9]+:[^\n]*" failures "${err}")
  message(FATAL_ERROR "the walk-through failed (${result}): ${failures}")
endif()
string(REGEX MATCH "[0-9]+ steps" steps "${out}")
message(STATUS "${steps}, pictures in ${WORK}/pictures")
