# SPDX-License-Identifier: MIT
# Where Qt is installed, and where the module goes:
#   VORLIX_QT_PREFIX        Qt's prefix
#   VORLIX_INSTALL_QMLDIR   the QML import path that the module is installed to; by default Qt's own

get_target_property(qmake Qt5::qmake IMPORTED_LOCATION)
foreach(name PREFIX QML)
  execute_process(COMMAND ${qmake} -query QT_INSTALL_${name}
    OUTPUT_VARIABLE qt_${name} OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
endforeach()
set(VORLIX_QT_PREFIX ${qt_PREFIX})
file(RELATIVE_PATH qmldir ${qt_PREFIX} ${qt_QML})
if(qmldir MATCHES "^\\.\\.")
  set(qmldir ${qt_QML})
endif()
set(VORLIX_INSTALL_QMLDIR ${qmldir} CACHE STRING
  "Where the module is installed: the QML import path, absolute or relative to the prefix")
