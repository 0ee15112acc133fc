#include "evaluate/bkcStack.h"

#include <gtest/gtest.h>

using namespace Formula;

TEST(bkcStack, Starts_Empty_With_A_Quantum_Of_Ten)
{
    bkcStack stack;
    EXPECT_EQ(10, stack.Quantum());
    EXPECT_EQ(0, stack.Depth());
    EXPECT_EQ(0, stack.HighwaterDepth());
    EXPECT_TRUE(stack.Pop().Is_Empty());
    EXPECT_EQ(0, stack.Depth());
}

TEST(bkcStack, Gives_Back_In_Reverse_Order_Past_Its_Quantum)
{
    bkcStack stack;
    stack.Set_Quantum(3);
    for (int i = 1; i <= 10; ++i) EXPECT_EQ(i, stack.Push(Variant(std::int32_t(i))));
    for (int i = 10; i >= 1; --i) EXPECT_EQ(i, stack.Pop().Long());
    EXPECT_EQ(10, stack.HighwaterDepth());
}

TEST(bkcStack, Depth_Moves_Up_To_The_High_Water_Mark)
{
    bkcStack stack;
    for (int i = 1; i <= 3; ++i) stack.Push(Variant(std::int32_t(i)));
    stack.Set_Depth(1);
    EXPECT_EQ(1, stack.Depth());
    stack.Set_Depth(3);
    EXPECT_EQ(3, stack.Pop().Long());
    stack.Set_Depth(4);
    EXPECT_EQ(2, stack.Depth());
    stack.Set_Depth(-1);
    EXPECT_EQ(2, stack.Depth());
}

TEST(bkcStack, A_New_Quantum_Empties_It)
{
    bkcStack stack;
    stack.Push(Variant(std::int32_t(1)));
    stack.Set_Quantum(0);
    EXPECT_EQ(1, stack.Quantum());
    EXPECT_EQ(0, stack.Depth());
    EXPECT_EQ(0, stack.HighwaterDepth());
}
