# SPDX-License-Identifier: MIT
# The viewer's pictures are what it shows of series that are the same everywhere.
if(NOT TARGET vorlixview)
  return()
endif()
set(series ${CMAKE_CURRENT_BINARY_DIR}/series)
add_test(NAME pictures.series COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/write-series ${series})
set_tests_properties(pictures.series PROPERTIES FIXTURES_SETUP series TIMEOUT ${vorlix_patience})

# vorlix_add_viewer_picture(NAME FILE COUNT MOUSE gestures COMMAND-LINE...): COUNT is how many series there are.
function(vorlix_add_viewer_picture name file count mouse)
  vorlix_add_picture(${name} PICTURE ${file} MOUSE "${mouse}"
    UNTIL "!reading && files.length === ${count}"
    COMMAND $<TARGET_FILE:vorlixview> --no-settings --light ${ARGN})
  set_tests_properties(picture.${name}.basic picture.${name}.threaded PROPERTIES FIXTURES_REQUIRED series)
endfunction()

set(spectra --size 1280x720 --bin-width 0.1667 --unit keV ${series}/sample.txt ${series}/background.txt)
vorlix_add_viewer_picture(viewer-light docs/pictures/viewer-light.png 2 "wheel 120 300 480,hover 670 300" ${spectra})
vorlix_add_viewer_picture(viewer-dark docs/pictures/viewer-dark.png 2 "hover 610 300" --dark --log ${spectra})
vorlix_add_viewer_picture(viewer-long docs/pictures/viewer-long.png 1 "wheel 905 300 960,hover 905 300"
  --size 1280x720 --area "${series}/ten million.txt")
vorlix_add_viewer_picture(viewer-beneath docs/pictures/viewer-beneath.png 2 "wheel 120 200 480,hover 670 200" --beneath ${spectra})
# The moving picture begins with this.
vorlix_add_viewer_picture(zoom docs/pictures/zoom.gif 1 "" --size 800x450 --dark "${series}/ten million.txt")
