# SPDX-License-Identifier: MIT
# Runs each snippet of docs/snippets/ until what its page says of it is true, without a warning.
# vorlix_add_snippet(NAME EXPRESSION [MOUSE gestures THEN expression]): EXPRESSION is evaluated on the snippet's window,
# THEN after the gestures.
function(vorlix_add_snippet name expression)
  add_test(NAME snippet.${name} COMMAND ${vorlix_own_display} ${VORLIX_QML_TOOL}
    docs/snippets/${name}.qml WORKING_DIRECTORY ${PROJECT_SOURCE_DIR})
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "MOUSE;THEN" "")
  set(afterwards "SNAPSHOT_AFTER=200")
  if(arg_THEN)
    set(afterwards "SNAPSHOT_MOUSE=${arg_MOUSE};SNAPSHOT_THEN=${arg_THEN}")
  endif()
  set_tests_properties(snippet.${name} PROPERTIES LABELS gl TIMEOUT ${vorlix_patience}
    ENVIRONMENT "QML2_IMPORT_PATH=${CMAKE_BINARY_DIR}/qml;QT_PLUGIN_PATH=${PROJECT_BINARY_DIR}/tests/examples/plugins;\
QT_QPA_GENERIC_PLUGINS=vorlixsnapshot;${afterwards};SNAPSHOT_UNTIL=${expression};\
SNAPSHOT_RESULT=${CMAKE_CURRENT_BINARY_DIR}/${name}.png")
  list(APPEND VORLIX_SNIPPETS ${name})
  set(VORLIX_SNIPPETS ${VORLIX_SNIPPETS} PARENT_SCOPE)
endfunction()

vorlix_add_snippet(a-file "file.hasNumbers && !file.busy && plot.seriesList.length === 1 && file.problem === ''")
vorlix_add_snippet(append "samples.count === 7 && samples.maximum === 7 && refused.indexOf('Int16') > 0")
vorlix_add_snippet(bars-beside "today.valueAt(1.3) === 2 && isNaN(today.valueAt(1.5)) && yesterday.valueAt(1.5) === 1")
vorlix_add_snippet(bars-legend "plot.seriesList.length === 2 && plot.axisY.max === 14 && plot.axisX.max === 6")
vorlix_add_snippet(beneath "voltage.linkedTo === current && voltage.plotArea.x === current.plotArea.x \
&& Math.abs(voltage.plotArea.height - current.plotArea.height) <= 1"
  MOUSE "wheel 350 80 240" THEN "voltage.axisX.max - voltage.axisX.min < 4 && voltage.axisX.min === current.axisX.min")
vorlix_add_snippet(colors "smooth.data.length === 214 && average.data.length === 214")
vorlix_add_snippet(components "legend.height > 0 && title === '12.35K'")
vorlix_add_snippet(dark-plot "plot.refLegend.nameColor == '#d7dde4' && plot.yAxis.axisTextColor == '#b4bcc6' \
&& plot.refChartArea.zoomRect.width === 1000")
vorlix_add_snippet(destroy "maker.made > 10 && chart.plotter.length <= 2")
vorlix_add_snippet(follow-data "hovered.infoMap.length === 1 && hovered.infoMap[0].rect.height === 15")
vorlix_add_snippet(export "grabbed && saved === '/tmp/vorlix-plot.png'")
vorlix_add_snippet(live-line "points.count > 5 && places.count === points.count && plot.following \
&& plot.axisX.min === 0 && plot.axisX.max === 10")
vorlix_add_snippet(own-data "chart.zoomRect.width === 5 && Math.abs(chart.zoomRect.height - 5.25) < 1e-9")
vorlix_add_snippet(own-file "reader.data.length === 16 && reader.area.width === 8")
vorlix_add_snippet(raw-recording "recording.status === SeriesReader.Ready && recording.store.count === 2048 \
&& plot.axisX.max < 0.05")
vorlix_add_snippet(ready-plot "plot.refChartArea.zoomRect.width === 16000 && plot.yAxis.labelText(0) === '-1.00' \
&& plot.yAxis.labelText(2) === '1.00' && plot.xAxis.labelText(8000) === '8000.00' \
&& plot.refChartArea.plotter.length === 2 && plot.refLegend.plotterList.length === 1"
  MOUSE "wheel 324 100 1440"
  THEN "Math.abs(plot.refChartArea.zoomRect.width - 16000 * Math.pow(0.8, 12)) < 1 \
&& Math.abs(plot.refNavigator.zoomRect.width - plot.refChartArea.zoomRect.width * plot.refNavigator.width / 75) < 1")
vorlix_add_snippet(recorder "recorder.count >= 500 && plot.following && plot.axisX.min === 0 && plot.axisX.max === 60")
vorlix_add_snippet(save-view "told.length === 2 && told.sort().join() === '/tmp/vorlix-view.csv,/tmp/vorlix-view.png'")
vorlix_add_snippet(throttle "changes.made === 3 && Math.abs(accepting.zoomRect.height - 31.5) < 1e-6 \
&& Math.abs(settling.zoomRect.height - 31.5) < 1e-6 && Math.abs(dropping.zoomRect.height - 31.5) > 1")
vorlix_add_snippet(time-axis "plot.axisX.max === 599 * 60 && plot.plotArea.width > 400")
vorlix_add_snippet(zooming-line "plot.axisX.max === 4.1 && line.valueAt(2) === 2.1"
  MOUSE "wheel 320 150 120" THEN "Math.abs(plot.axisX.max - plot.axisX.min - 4.1 * 0.8) < 1e-6")

# None may be forgotten.
file(GLOB snippets RELATIVE ${PROJECT_SOURCE_DIR}/docs/snippets CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/snippets/*.qml)
foreach(snippet IN LISTS snippets)
  string(REPLACE ".qml" "" name ${snippet})
  if(NOT name IN_LIST VORLIX_SNIPPETS)
    message(FATAL_ERROR "docs/snippets/${snippet}: no test runs it")
  endif()
endforeach()
