#include "bkimgutl/core/Handle_Table.h"

#include "bkimgutl/core/Last_Error.h"
#include "tests/bkimgutl/Reference_Pictures.h"

#include <set>

namespace {

TEST(Handle_Table, Finds_What_It_Adopted)
{
    const Bitmap_Handle first = Adopt(Random_Picture(3, 4, 1, 1));
    const Bitmap_Handle second = Adopt(Random_Picture(5, 6, 3, 2));
    ASSERT_TRUE(Find_Bitmap(first));
    EXPECT_EQ((*Find_Bitmap(first))->Width(), 3);
    EXPECT_EQ((*Find_Bitmap_To_Change(second))->Width(), 5);
    EXPECT_TRUE(Release(first));
    EXPECT_TRUE(Release(second));
}

TEST(Handle_Table, A_Found_Bitmap_Stays_In_Place_While_Others_Are_Adopted)
{
    const Bitmap_Handle first = Adopt(Random_Picture(3, 4, 1, 1));
    const Bitmap* place = *Find_Bitmap(first);
    std::vector<Bitmap_Handle> others;
    for (int i = 0; i < 1000; ++i) others.push_back(Adopt(Random_Picture(1, 1, 1, 1)));
    EXPECT_EQ(*Find_Bitmap(first), place);
    for (const Bitmap_Handle handle : others) EXPECT_TRUE(Release(handle));
    EXPECT_TRUE(Release(first));
}

TEST(Handle_Table, Refuses_A_Stale_Handle_Even_When_Its_Slot_Is_Used_Again)
{
    const Bitmap_Handle stale = Adopt(Random_Picture(3, 4, 1, 1));
    EXPECT_TRUE(Release(stale));
    const Bitmap_Handle fresh = Adopt(Random_Picture(3, 4, 1, 1));
    EXPECT_NE(fresh, stale);
    ASSERT_FALSE(Find_Bitmap(stale));
    EXPECT_EQ(Find_Bitmap(stale).error().text, "invalid bitmap handle");
    EXPECT_FALSE(Release(stale));
    EXPECT_TRUE(Release(fresh));
}

TEST(Handle_Table, Refuses_Invented_Handles)
{
    const Bitmap_Handle good = Adopt(Random_Picture(3, 4, 1, 1));
    for (const Bitmap_Handle foreign :
         {0, 1, -1, 42, good + 1, good + 0x10000, good - 0x10000, ~good, INT32_MIN, INT32_MAX})
        EXPECT_FALSE(Find_Bitmap(foreign)) << foreign;
    EXPECT_TRUE(Release(good));
}

TEST(Handle_Table, Never_Gives_A_Handle_Twice_Though_A_Slot_Wears_Out)
{
    std::set<Bitmap_Handle> seen;
    for (int i = 0; i < 40000; ++i) {
        const Bitmap_Handle handle = Adopt(Random_Picture(1, 1, 1, 1));
        ASSERT_GT(handle, 0);
        ASSERT_TRUE(seen.insert(handle).second) << "after " << i;
        ASSERT_TRUE(Release(handle));
    }
}

TEST(Handle_Table, A_Failed_Result_Stores_Its_Reason)
{
    EXPECT_EQ(Adopt_Or_Fail(Failure("the reason")), 0);
    EXPECT_EQ(Last_Error_Text(), "the reason");
    EXPECT_EQ(Fail_Flag({"another"}), Flag_False);
    EXPECT_EQ(Last_Error_Text(), "another");
}

} // namespace
