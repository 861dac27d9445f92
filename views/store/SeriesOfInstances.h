// SPDX-License-Identifier: MIT
#pragma once

/// What stands at the end of each file that holds member functions of SeriesOf.
#define VORLIX_SERIES_OF_EVERY_TYPE \
  template class SeriesOf<double>; \
  template class SeriesOf<float>; \
  template class SeriesOf<qint32>; \
  template class SeriesOf<quint32>; \
  template class SeriesOf<qint16>; \
  template class SeriesOf<quint16>; \
  template class SeriesOf<qint8>; \
  template class SeriesOf<quint8>;
