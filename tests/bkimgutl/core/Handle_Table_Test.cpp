#include "bkimgutl/core/Handle_Table.h"

#include "bkimgutl/core/Last_Error.h"
#include "tests/bkimgutl/Reference_Pictures.h"

#include <atomic>
#include <set>
#include <thread>

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

TEST(Handle_Table, Threads_Adopt_Find_And_Release_Side_By_Side)
{
    constexpr int Threads = 4, Rounds = 3000;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int thread = 1; thread <= Threads; ++thread)
        threads.emplace_back([&wrong, thread] {
            std::vector<Bitmap_Handle> own;
            for (int i = 0; i < Rounds; ++i) {
                own.push_back(Adopt(Random_Picture(thread, 1, 1, 1)));
                const auto found = Find_Bitmap(own.back());
                if (!found || (*found)->Width() != thread) ++wrong;
                if (i % 3 != 2) continue;
                if (!Release(own.front())) ++wrong;
                own.erase(own.begin());
            }
            for (const Bitmap_Handle handle : own)
                if (!Release(handle)) ++wrong;
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(wrong, 0);
}

TEST(Handle_Table, A_Thread_Has_A_Last_Error_Of_Its_Own)
{
    Fail({"mine"});
    std::thread([] {
        EXPECT_EQ(Last_Error_Text(), "");
        Fail({"another thread's"});
    }).join();
    EXPECT_EQ(Last_Error_Text(), "mine");
}

} // namespace
