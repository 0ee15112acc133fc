#include "evaluate/Literal_Values.h"

#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Dates.h"

namespace Formula {

Evaluated<Variant> Whole_Literal(const QString& text)
{
    return Long_From_Text(text).map([](std::int32_t number) { return Variant(number); });
}

Evaluated<Variant> Decimal_Literal(const QString& text)
{
    return Val(text).map([](double number) { return Variant(number); });
}

Evaluated<Variant> Date_Literal(const QString& text)
{
    return Date_From_Text(text, This_Year()).map([](double days) { return Variant(Date_Value{days}); });
}

} // namespace Formula
