# Runs a command and checks its exit status and what it printed.
#   -DCOMMAND="prog|arg|..." -DEXPECT_EXIT=N [-DEXPECT_STDOUT=regex] [-DEXPECT_STDERR=regex]
# Arguments are joined with "|" because ";" does not survive the test's command line.
string(REPLACE "|" ";" command "${COMMAND}")
execute_process(COMMAND ${command} RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE err)
if(NOT status EQUAL EXPECT_EXIT)
  message(FATAL_ERROR "exit status ${status}, expected ${EXPECT_EXIT}\nstdout:\n${out}\nstderr:\n${err}")
endif()
if(DEFINED EXPECT_STDOUT AND NOT out MATCHES "${EXPECT_STDOUT}")
  message(FATAL_ERROR "stdout does not match '${EXPECT_STDOUT}':\n${out}")
endif()
if(DEFINED EXPECT_STDERR AND NOT err MATCHES "${EXPECT_STDERR}")
  message(FATAL_ERROR "stderr does not match '${EXPECT_STDERR}':\n${err}")
endif()
