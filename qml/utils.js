// SPDX-License-Identifier: MIT
.pragma library

/// Writes the entries of varObj to the console log, one per line, the values from column desiredLength on.
function varToString(varObj, title = "VALUES", desiredLength = 20) {
    let text = title + ": \n";
    for (const [key, value] of Object.entries(varObj))
        text += (" - " + key + ":").padEnd(desiredLength) + value + "\n";
    console.log(text);
}

/// val cut to min, then to max: max wins where the two cross.
function bound(val, min, max) {
    return Math.min(Math.max(val, min), max);
}

/// A count with two decimals and K, M or G from a thousand on. Negative values are not scaled.
function format_event(val) {
    if (val >= 1e9)
        return (val / 1e9).toFixed(2) + "G";
    if (val >= 1e6)
        return (val / 1e6).toFixed(2) + "M";
    if (val >= 1e3)
        return (val / 1e3).toFixed(2) + "K";
    return val.toFixed(2);
}
