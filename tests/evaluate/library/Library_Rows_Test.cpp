#include "tests/evaluate/library/Direct_Call.h"

#include <gtest/gtest.h>

TEST(Library_Texts, Give_What_The_Rows_Say)
{
    Expect_Call_Rows("tests/evaluate/library/texts.cases", 200);
}

TEST(Library_Numbers_And_Dates, Give_What_The_Rows_Say)
{
    Expect_Call_Rows("tests/evaluate/library/numbers_and_dates.cases", 240);
}
