#include "tests/catalogue/Catalogue_Fixture.h"

#include <random>

namespace {

using Indices = std::vector<int>;

class Listing : public Catalogue_Test {};

TEST_F(Listing, Keys_Start_At_1_And_Only_Grow)
{
    EXPECT_EQ(1, Add("a.jpg"));
    EXPECT_EQ(2, Add("b.jpg"));
    form.Discard_All();
    EXPECT_EQ(3, Add("c.jpg"));
    EXPECT_EQ(-1, form.State().pictures.Index_From_Key(1));
    EXPECT_EQ(1, form.State().pictures.Index_From_Key(3));
}

TEST_F(Listing, A_Name_That_Differs_Only_By_Case_Finds_The_Picture)
{
    const int key = Add("Sea.JPG");
    EXPECT_EQ(key, form.Return_Picture_Key("/PHOTOS/sea.jpg", false));
    EXPECT_EQ(0, form.Return_Picture_Key("/photos/other.jpg", false));
}

TEST_F(Listing, The_First_Of_Two_Pictures_With_One_Name_Is_Found_And_From_A_Start_The_Second)
{
    Add("a.jpg");
    Add("a.jpg");
    EXPECT_EQ(1, form.State().pictures.Index_From_Name("/photos/a.jpg"));
    EXPECT_EQ(2, form.State().pictures.Index_From_Name("/photos/a.jpg", 2));
    EXPECT_EQ((Indices{1, 2}), form.State().pictures.Indices_From_Name("/photos/A.jpg"));
}

TEST_F(Listing, A_Renamed_Picture_Is_Found_By_Its_New_Name_Alone)
{
    const int key = Add("a.jpg");
    form.State().pictures.Set_Name(1, "/other/", "b.jpg");
    EXPECT_EQ(0, form.Return_Picture_Key("/photos/a.jpg", false));
    EXPECT_EQ(key, form.Return_Picture_Key("/other/b.jpg", false));
}

TEST_F(Listing, An_Unknown_Key_Gives_Neutral_Values_And_Writers_Do_Nothing)
{
    bool copy = true;
    QString text = "x";
    EXPECT_EQ(QString(), form.Return_Picture_Path(9));
    EXPECT_EQ(QString(), form.Return_Picture_Description(9));
    EXPECT_EQ(0, form.Return_Picture_File_Date(9));
    EXPECT_EQ(-1, form.Return_Picture_Rotate(9));
    EXPECT_EQ(0, form.Return_Picture_Horz_Resolution(9));
    EXPECT_EQ(0, form.Return_Picture(9, 0, 1));
    EXPECT_EQ(0, form.Return_Thumbnail_Picture(9, 0, copy));
    EXPECT_FALSE(copy);
    EXPECT_FALSE(form.Set_Picture_All_Script_Items(9, "Blur(2,50,RGB)"));
    EXPECT_EQ(0, form.Set_Picture_Crop(9, 1, 2, 3, 4, 0));
    EXPECT_EQ(-1, form.Recall_Picture_Script_Item(9, 1, text));
    EXPECT_FALSE(form.Save_Adjusted_Picture(9, 0, {}, {}, {}, true));
    form.Rotate_Picture(9, 90);
    form.Set_Picture_Horz_Resolution(9, 300);
    form.Set_Picture_Key_Selected(9, true);
    EXPECT_TRUE(platform.dialogs.asked.empty());
}

TEST_F(Listing, Each_Reader_Gives_Its_Own_Field)
{
    const int key = Add("a.jpg", {}, 8);
    Picture_Item& item = Item(key);
    item.Description = "the sea";
    item.File_Date = 12345.25;
    item.Rotate = 270;
    item.Interval_In_Seconds = 2.5F;
    EXPECT_EQ("the sea", form.Return_Picture_Description(key));
    EXPECT_EQ(12345.25, form.Return_Picture_File_Date(key));
    EXPECT_EQ("a.jpg", form.Return_Picture_File_Name(key));
    EXPECT_EQ("/photos/a.jpg", form.Return_Picture_Path(key));
    EXPECT_EQ(270, form.Return_Picture_Rotate(key));
    EXPECT_EQ(2.5F, form.Return_Picture_Interval_In_Seconds(key));
    EXPECT_EQ(400, form.Return_Picture_Horz_Pixels(key));
    EXPECT_EQ(300, form.Return_Picture_Vert_Pixels(key));
    EXPECT_EQ(8, form.Return_Picture_Pixel_Depth(key));
    form.Set_Picture_Horz_Resolution(key, 240);
    form.Set_Picture_Vert_Resolution(key, 120);
    EXPECT_EQ(240, form.Return_Picture_Horz_Resolution(key));
    EXPECT_EQ(120, form.Return_Picture_Vert_Resolution(key));
}

TEST_F(Listing, Agrees_With_A_Plain_Search_Through_Random_Appends_And_Removals)
{
    const unsigned seed = 20260314;
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    Picture_List& list = form.State().pictures;
    std::vector<int> keys; // the plain list
    for (int step = 0; step < 400; ++step) {
        if (random() % 3 != 0) {
            keys.push_back(Add(QString::number(random() % 20) + ".jpg"));
        } else if (!keys.empty()) {
            Indices gone;
            for (int index = 1; index <= int(keys.size()); ++index)
                if (random() % 4 == 0) gone.push_back(index);
            list.Remove(gone);
            for (auto it = gone.rbegin(); it != gone.rend(); ++it) keys.erase(keys.begin() + *it - 1);
        }
        ASSERT_EQ(int(keys.size()), list.Count());
        for (int index = 1; index <= list.Count(); ++index) {
            const QString name = list.Item(index).Full_Name();
            ASSERT_EQ(index, list.Index_From_Key(keys[std::size_t(index) - 1]));
            int first = 1;
            while (list.Item(first).Full_Name() != name) ++first;
            ASSERT_EQ(first, list.Index_From_Name(name));
        }
    }
}

TEST_F(Listing, A_Removed_Picture_Is_Found_Neither_By_Its_Key_Nor_By_A_Name_That_Others_Share)
{
    const int keys[] = {Add("a.jpg"), Add("a.jpg"), Add("a.jpg"), Add("b.jpg")};
    const int last_of_three[] = {3};
    form.State().pictures.Remove(last_of_three);
    EXPECT_EQ(-1, form.State().pictures.Index_From_Key(keys[2]));
    EXPECT_EQ((Indices{1, 2}), form.State().pictures.Indices_From_Name("/photos/a.jpg"));
    form.State().pictures.Remove_All();
    EXPECT_EQ(Indices(), form.State().pictures.Indices_From_Name("/photos/a.jpg"));
}

TEST_F(Listing, Pictures_That_Get_One_Name_Stay_In_The_Order_Of_The_List)
{
    Add("a.jpg");
    Add("b.jpg");
    form.State().pictures.Set_Name(1, "/photos/", "b.jpg");
    EXPECT_EQ(1, form.State().pictures.Index_From_Name("/photos/b.jpg"));
    EXPECT_EQ((Indices{1, 2}), form.State().pictures.Indices_From_Name("/photos/b.jpg"));
}

TEST_F(Listing, Removing_All_In_Any_Order_And_Twice_Leaves_Nothing_To_Be_Found)
{
    const int keys[] = {Add("a.jpg"), Add("b.jpg"), Add("c.jpg")};
    const int indices[] = {3, 1, 2, 1, 99, 0};
    form.State().pictures.Remove(indices);
    EXPECT_EQ(0, form.State().pictures.Count());
    for (const int key : keys) EXPECT_EQ(nullptr, form.State().pictures.Find(key));
    EXPECT_EQ(0, form.State().pictures.Index_From_Name("/photos/a.jpg"));
    EXPECT_EQ(keys[2] + 1, Add("d.jpg")) << "no key comes back";
}

TEST_F(Listing, A_Great_Many_Records_Leave_At_Once_And_Are_Freed_A_Little_At_A_Time)
{
    constexpr int count = 3 * Picture_List::Most_Freed_At_Once;
    const int bitmaps = Bitmap_Count();
    for (int i = 0; i < count; ++i)
        Item(Add(QString::number(i))).Thumbnail_Bitmap.Reset(Count_Bitmap(Create_Empty_Bitmap_CPP(1, 1, 1, 8)));
    form.Discard_All();
    EXPECT_EQ(0, form.State().pictures.Count());
    EXPECT_EQ(0, form.State().pictures.Index_From_Name("/photos/7"));
    EXPECT_EQ(bitmaps + count - Picture_List::Most_Freed_At_Once, Bitmap_Count());
    ASSERT_EQ(1U, platform.timers.size());
    const int again = Add("7");
    EXPECT_EQ(1, form.State().pictures.Index_From_Name("/photos/7"));
    for (int i = 0; i < 5; ++i) platform.timers[0]->Fire();
    EXPECT_EQ(bitmaps, Bitmap_Count());
    EXPECT_FALSE(platform.timers[0]->Is_On());
    EXPECT_EQ(1, form.State().pictures.Index_From_Key(again)) << "what came later stays";
}

TEST_F(Listing, Records_Stay_In_Place_While_Others_Come_And_Go)
{
    const int key = Add("a.jpg");
    const Picture_Item* place = &Item(key);
    for (int i = 0; i < 100; ++i) Add("b.jpg");
    form.State().pictures.Remove(Indices{2, 3, 4});
    EXPECT_EQ(place, &Item(key));
}

TEST_F(Listing, Where_A_Drag_Began_Is_Held_For_The_Windows)
{
    EXPECT_EQ(nullptr, form.Return_Drag_Source());
    QObject strip;
    form.Set_Drag_Source(&strip);
    EXPECT_EQ(&strip, form.Return_Drag_Source());
    form.Set_Drag_Source(nullptr);
    EXPECT_EQ(nullptr, form.Return_Drag_Source());
}

TEST_F(Listing, The_Background_Color_Stays_Within_A_Byte)
{
    form.Set_Background_Color(-1, 128, 999);
    int red = 1, green = 1, blue = 1;
    form.Recall_Background_Color(red, green, blue);
    EXPECT_EQ((std::array{0, 128, 255}), (std::array{red, green, blue}));
    form.Set_Background_Color(255, 255, 255);
}

TEST_F(Listing, A_Tree_Refresh_Loses_The_Trailing_Separator)
{
    form.Refresh_Folder_Tree("/photos/sea/");
    EXPECT_EQ(QStringList{"/photos/sea"}, view.refreshed);
}

} // namespace
