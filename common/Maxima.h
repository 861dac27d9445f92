// SPDX-License-Identifier: MIT
#pragma once

// Largest values. A value replaces the maximum only when it is strictly greater, so a NaN never does. Thread-safe.

/// The largest of `count` values and 0.0.
double maximumFromZero(const double *values, int count);

/// The first of the largest of `count` values; 0.0 if there are none. A NaN in front stays, because nothing is greater.
double firstMaximum(const double *values, int count);

/// maxima[i] = the largest of values[2i], values[2i + 1] and 0.0, for `count` pairs.
void pairMaxima(const double *values, int count, double *maxima);
