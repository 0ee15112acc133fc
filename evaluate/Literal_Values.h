#pragma once

#include "evaluate/variant/Evaluate_Error.h"
#include "evaluate/variant/Variant.h"

#include <QtCore/QString>

namespace Formula {

/// The values of the literals in a text, or the number of the conversion's error.
Evaluated<Variant> Whole_Literal(const QString& text);   ///< a number without a point: a Long, never anything wider
Evaluated<Variant> Decimal_Literal(const QString& text); ///< a number with a point: a Double
Evaluated<Variant> Date_Literal(const QString& text);

} // namespace Formula
