// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

// For explicit instantiations at the end of a file of templates.

#define VORLIX_FOR_EVERY_TYPE(WORD) \
  WORD(double) WORD(float) WORD(qint32) WORD(quint32) WORD(qint16) WORD(quint16) WORD(qint8) WORD(quint8)
#define VORLIX_SERIES_OF(T) template class SeriesOf<T>;
