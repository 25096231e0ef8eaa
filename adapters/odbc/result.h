// The results of a statement that has run, read into memory.
#pragma once

#include "odbc/handles.h"

namespace orve::adapters::odbc {

/// The rows of the first result that has columns; none when there is no such result. All results are read to
/// the end, since an error may follow the first. Raises the driver's error.
[[nodiscard]] rows::Rows LeggiRisultati(const Handle& istruzione);

}  // namespace orve::adapters::odbc
