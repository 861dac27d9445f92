// SPDX-License-Identifier: MIT
#pragma once

/// An option as --help, the man page and the completion of shells tell it.
struct SOption
{
    const char *names; ///< "size", or several: "step,bin-width"
    const char *value; ///< what stands for its value; empty for a switch
    const char *words;
};

// clang-format off
constexpr SOption optionTable[] = {
    {"column", "COLUMN", "Column of numbers to show: its number from 1, or its name."},
    {"x-column", "COLUMN", "Column that says where the values stand."},
    {"format", "FORMAT", "What the files are: text, npy, wav or raw; found out by default."},
    {"sample-type", "TYPE", "What raw samples are: float64, float32, int32, uint32, int16, uint16, int8 or uint8."},
    {"separator", "CHAR", "What is between the columns of a text; found out by default."},
    {"decimal-point", "CHAR", "A point or a comma; found out by default."},
    {"skip-lines", "N", "Lines at the beginning of a text that aren't looked at."},
    {"follow", "", "Go on reading while other programs write the files."},
    {"start", "X", "Where the first value stands; 0 by default."},
    {"step,bin-width", "W", "Width of one value along x, above 0; 1 by default."},
    {"unit", "UNIT", "Unit of x, such as keV, V or s."},
    {"line", "", "Draw lines. By default bars are drawn unless a value is negative."},
    {"area", "", "Draw filled areas."},
    {"smooth", "DEPTH", "Show a running average over DEPTH values, 1 to 1000000."},
    {"log", "", "Use a logarithmic scale for the values."},
    {"dark", "", "Use dark colors."},
    {"light", "", "Use light colors. By default those of the desktop are used, in a picture light ones."},
    {"range", "FROM:TO", "Show this part of x."},
    {"png", "OUT", "Write a picture of the plot to the file OUT and exit."},
    {"csv", "OUT", "Write the values in view to the file OUT, or to standard output for -, and exit."},
    {"size", "WxH", "Size of the picture or the window in pixels, from 64x64 to 8192x8192; 1280x720 by default."},
    {"no-settings", "", "Neither use nor change what the window remembers."},
    // Not Qt's own, which promise options of Qt's that are not taken here.
    {"h,help", "", "Print this and exit."},
    {"v,version", "", "Print the version and exit."},
};
// clang-format on
