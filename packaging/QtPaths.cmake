# SPDX-License-Identifier: MIT
# Where Qt is installed. Included before project-wide install variables are used:
#   VORLIX_QT_PREFIX   Qt's prefix
#   VORLIX_QT_QMLDIR   Qt's QML directory, relative to VORLIX_QT_PREFIX when it lies below it

get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
foreach(name PREFIX QML)
  execute_process(COMMAND ${qmake} -query QT_INSTALL_${name}
    OUTPUT_VARIABLE qt_${name} OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endforeach()
set(VORLIX_QT_PREFIX ${qt_PREFIX})
file(RELATIVE_PATH VORLIX_QT_QMLDIR ${qt_PREFIX} ${qt_QML})
if(VORLIX_QT_QMLDIR MATCHES "^\\.\\.")
  set(VORLIX_QT_QMLDIR ${qt_QML})
endif()
