#compdef vorlixview
# SPDX-License-Identifier: MIT
# Written by scripts/write-viewer-pages.
_arguments \
    '--column[Column of numbers to show\: its number from 1, or its name.]:COLUMN: ' \
    '--x-column[Column that says where the values stand.]:COLUMN: ' \
    '--format[What the files are\: text, npy, wav or raw; found out by default.]:FORMAT:(auto text npy raw wav)' \
    '--sample-type[What raw samples are\: float64, float32, int32, uint32, int16, uint16, int8 or uint8.]:TYPE:(float64 float32 int32 uint32 int16 uint16 int8 uint8)' \
    '--separator[What is between the columns of a text; found out by default.]:CHAR: ' \
    '--decimal-point[A point or a comma; found out by default.]:CHAR:(. ,)' \
    '--skip-lines[Lines at the beginning of a text that aren’t looked at.]:N: ' \
    '--follow[Go on reading while other programs write the files.]' \
    '--start[Where the first value stands; 0 by default.]:X: ' \
    '(--step --bin-width)--step[Width of one value along x, above 0; 1 by default.]:W: ' \
    '(--step --bin-width)--bin-width[Width of one value along x, above 0; 1 by default.]:W: ' \
    '--unit[Unit of x, such as keV, V or s.]:UNIT: ' \
    '--line[Draw lines. By default bars are drawn unless a value is negative.]' \
    '--area[Draw filled areas.]' \
    '--smooth[Show a running average over DEPTH values, 1 to 1000000.]:DEPTH: ' \
    '--beneath[Draw each file in a plot of its own, one beneath the other, over the same part of x.]' \
    '--difference[Show the difference of two files, too\: the first less the second.]' \
    '--log[Use a logarithmic scale for the values.]' \
    '--dark[Use dark colors.]' \
    '--light[Use light colors. By default those of the desktop are used, in a picture light ones.]' \
    '--range[Show this part of x.]:FROM\:TO: ' \
    '--png[Write a picture of the plot to the file OUT and exit; as a page of PDF if OUT ends with .pdf.]:OUT:_files' \
    '--csv[Write the values in view to the file OUT, or to standard output for -, and exit.]:OUT:_files' \
    '--size[Size of the picture or the window in pixels, from 64x64 to 8192x8192; 1280x720 by default.]:WxH: ' \
    '--no-settings[Neither use nor change what the window remembers.]' \
    '(-h --help)-h[Print this and exit.]' \
    '(-h --help)--help[Print this and exit.]' \
    '(-v --version)-v[Print the version and exit.]' \
    '(-v --version)--version[Print the version and exit.]' \
    '*:file:_files'
