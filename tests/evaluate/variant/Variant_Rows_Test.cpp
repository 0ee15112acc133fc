#include "tests/evaluate/library/Direct_Call.h"

#include <gtest/gtest.h>

TEST(Variant_Operators, Give_What_The_Rows_Say)
{
    Expect_Call_Rows("tests/evaluate/variant/operators.cases", 200);
}

TEST(Variant_Conversions, Give_What_The_Rows_Say)
{
    Expect_Call_Rows("tests/evaluate/variant/conversions.cases", 120);
}
