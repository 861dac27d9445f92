# SPDX-License-Identifier: MIT
# cmake -DQMLFORMAT=program -DFILE=file.qml -P check-format.cmake: fails when the formatter would change the file.
execute_process(COMMAND ${QMLFORMAT} ${FILE} OUTPUT_VARIABLE formatted RESULT_VARIABLE status)
file(READ ${FILE} text)
if(NOT status EQUAL 0 OR NOT formatted STREQUAL text)
  message(FATAL_ERROR "qmlformat would change ${FILE}")
endif()
