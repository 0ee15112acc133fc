#include "catalogue/Thumbnail_Budget.h"

#include "catalogue/Picture_Flips.h"
#include "imaging/Script_Interpreter.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <QtCore/QFile>

namespace {

class Budget : public Picture_Test {
protected:
    /// More pictures than are always kept.
    static constexpr int Count = Thumbnail_Budget::Least_Kept + 10;
    void Pick_Many()
    {
        QStringList paths{Make("0.jpg")};
        while (paths.size() < Count) paths << paths.front();
        Pick_List(paths);
    }
    int Thumbnails() const
    {
        int count = 0;
        for (int index = 1; index <= Count; ++index) count += bool(form.State().pictures.Item(index).Thumbnail_Bitmap);
        return count;
    }
};

TEST_F(Budget, Gives_Up_What_Was_Not_On_View_For_The_Longest_Time)
{
    Pick_Many();
    Thumbnail_Budget budget(form.State(), form.Pictures(), 1);
    for (int index = 1; index <= Count; ++index) EXPECT_TRUE(budget.Use(form.State().pictures.Item(index).Picture_Key));
    EXPECT_EQ(Thumbnail_Budget::Least_Kept, Thumbnails());
    EXPECT_FALSE(form.State().pictures.Item(1).Thumbnail_Bitmap);
    EXPECT_TRUE(form.State().pictures.Item(Count).Thumbnail_Bitmap);
}

TEST_F(Budget, Keeps_No_More_Than_The_Library_Has_Handles_For_However_Small_They_Are)
{
    for (int i = 0; i < Thumbnail_Budget::Most_Kept + 2; ++i) {
        Item(Add(QString::number(i))).Thumbnail_Bitmap.Reset(Count_Bitmap(Create_Empty_Bitmap_CPP(1, 1, 3, 8)));
    }
    Thumbnail_Budget budget(form.State(), form.Pictures());
    for (int index = 1; index <= form.State().pictures.Count(); ++index) budget.Note(index); // keys begin at 1
    EXPECT_EQ(Thumbnail_Budget::Most_Kept, budget.Kept());
    EXPECT_FALSE(Item(2).Thumbnail_Bitmap);
    EXPECT_TRUE(Item(3).Thumbnail_Bitmap);
}

TEST_F(Budget, What_Comes_On_View_Again_Is_Kept_Longer)
{
    Pick_Many();
    Thumbnail_Budget budget(form.State(), form.Pictures(), 1);
    const auto use = [&](int index) { budget.Use(form.State().pictures.Item(index).Picture_Key); };
    for (int index = 1; index <= Thumbnail_Budget::Least_Kept; ++index) use(index);
    use(1);
    use(Count);
    EXPECT_TRUE(form.State().pictures.Item(1).Thumbnail_Bitmap);
    EXPECT_FALSE(form.State().pictures.Item(2).Thumbnail_Bitmap);
}

TEST_F(Budget, Reads_A_Thumbnail_Again_When_It_Comes_On_View)
{
    Pick_Many();
    const auto pixels = Pixels_Of(form.State().pictures.Item(1).Thumbnail_Bitmap.Get());
    Thumbnail_Budget budget(form.State(), form.Pictures(), 1);
    for (int index = 1; index <= Count; ++index) budget.Use(form.State().pictures.Item(index).Picture_Key);
    Picture_Item& first = form.State().pictures.Item(1);
    EXPECT_TRUE(budget.Use(first.Picture_Key));
    EXPECT_EQ(pixels, Pixels_Of(first.Thumbnail_Bitmap.Get()));
    EXPECT_EQ(Thumbnail_Budget::Least_Kept, Thumbnails());
}

TEST_F(Budget, A_Given_Up_Thumbnail_Turns_With_Its_Record_And_Working_Windows_Still_Get_It)
{
    const int key = Pick(Make("a.jpg", 160, 96));
    Item(key).Thumbnail_Bitmap.Reset();
    form.Rotate_Picture(key, 90);
    bool is_copy = true;
    const Bitmap_Handle bitmap = form.Return_Thumbnail_Picture(key, 0, is_copy);
    EXPECT_FALSE(is_copy);
    EXPECT_LT(Size_Of_Bitmap(bitmap).width, Size_Of_Bitmap(bitmap).height);
}

TEST_F(Budget, Forgets_Pictures_That_Went_And_Files_That_Vanished)
{
    const int key = Pick_New("a.jpg");
    Thumbnail_Budget budget(form.State(), form.Pictures());
    EXPECT_TRUE(budget.Use(key));
    EXPECT_GT(budget.Bytes(), 0);
    Item(key).Thumbnail_Bitmap.Reset();
    QFile::remove(Path("a.jpg"));
    EXPECT_FALSE(budget.Use(key));
    EXPECT_EQ(0, budget.Bytes());
    EXPECT_FALSE(budget.Use(12345));
}

/// What the strip draws is what the script makes of the picture as it is turned and flipped.
class Drawn_Thumbnails : public Picture_Test {
protected:
    std::vector<std::uint8_t> Drawn(int key)
    {
        EXPECT_TRUE(budget.Use(key));
        EXPECT_TRUE(budget.Is_Ready(Item(key)));
        return Pixels_Of(budget.Drawn(Item(key)));
    }
    /// From the file, by the road that saves and large views go.
    std::vector<std::uint8_t> From_The_File(int key)
    {
        const Picture_Item& item = Item(key);
        const Owned_Bitmap plain(
            Load_Picture_Bitmap(item.Full_Name(), item.File_Type, item.Scale_Divisor, item.Rotate, item.Flip));
        bool is_copy = false;
        const Bitmap_Handle made = Adjusted_Thumbnail(plain.Get(), form.State().Items_In_Force(item),
                                                      item.Scale_Divisor, item.Rotate, is_copy);
        const Owned_Bitmap owned(is_copy ? made : 0);
        return Pixels_Of(made);
    }
    Thumbnail_Budget budget{form.State(), form.Pictures()};
};

TEST_F(Drawn_Thumbnails, Have_The_Script_Of_The_File_Applied_After_The_Pick)
{
    const int key = Pick(Make("a.tif", 400, 240, 2, "ColBal(1,0.5,1.5)"));
    const auto plain = Pixels_Of(Item(key).Thumbnail_Bitmap.Get());
    EXPECT_NE(plain, Drawn(key));
    EXPECT_EQ(From_The_File(key), Drawn(key));
    EXPECT_EQ(plain, Pixels_Of(Item(key).Thumbnail_Bitmap.Get())) << "the record keeps the thumbnail without it";
}

TEST_F(Drawn_Thumbnails, Without_Any_Script_Are_The_Records_Own_And_Take_No_Memory_Twice)
{
    const int key = Pick_New("a.jpg");
    const int bitmaps = Bitmap_Count();
    Drawn(key);
    EXPECT_EQ(Item(key).Thumbnail_Bitmap.Get(), budget.Drawn(Item(key)));
    EXPECT_EQ(bitmaps, Bitmap_Count());
}

TEST_F(Drawn_Thumbnails, Are_Made_Anew_At_Each_Change_Of_The_Script)
{
    const int key = Pick(Make("a.tif", 400, 240, 2));
    const auto plain = Drawn(key);
    form.Set_Picture_Blur(key, 3, 100, 7, 0);
    EXPECT_FALSE(budget.Is_Ready(Item(key)));
    const auto blurred = Drawn(key);
    EXPECT_NE(plain, blurred);
    EXPECT_EQ(From_The_File(key), blurred);
    form.Set_Picture_All_Script_Items(key, "Gamma(0,1.5,255,0,1.5,255,0,1.5,255)");
    EXPECT_EQ(blurred, Pixels_Of(budget.Drawn(Item(key)))) << "the former one, until there is time";
    EXPECT_EQ(From_The_File(key), Drawn(key));
    form.Set_Picture_All_Script_Items(key, "");
    EXPECT_EQ(plain, Drawn(key));
}

TEST_F(Drawn_Thumbnails, Follow_The_Prepared_Script_In_Force_While_They_Have_None_Of_Their_Own)
{
    const int without = Pick(Make("a.tif", 400, 240, 2));
    const int with = Pick(Make("b.tif", 400, 240, 2, "Crop(8,8,8,8)"));
    const auto plain = Drawn(without);
    const auto cropped = Drawn(with);
    form.State().Current_Prepared_Script = 3;
    EXPECT_FALSE(budget.Is_Ready(Item(without)));
    EXPECT_TRUE(budget.Is_Ready(Item(with)));
    EXPECT_NE(plain, Drawn(without));
    EXPECT_EQ(cropped, Drawn(with));
    form.State().Current_Prepared_Script = 0;
    EXPECT_EQ(plain, Drawn(without));
}

TEST_F(Drawn_Thumbnails, Are_Made_Anew_From_A_Turned_Or_Flipped_Picture_With_The_Crop_Turned_Along)
{
    const int key = Pick(Make("a.tif", 400, 240, 2, "Crop(80,0,0,40)"));
    Drawn(key);
    for (const int angle : {90, 90, 270, 180}) {
        form.Rotate_Picture(key, angle);
        EXPECT_FALSE(budget.Is_Ready(Item(key)));
        EXPECT_EQ(0, budget.Drawn(Item(key))) << "never a picture that stands wrongly";
        EXPECT_EQ(From_The_File(key), Drawn(key)) << Item(key).Rotate;
    }
    for (const int flip : {Flip_Left_To_Right, Flip_Top_To_Bottom}) {
        Flip_Picture(form.State(), form.Pictures(), key, flip);
        EXPECT_EQ(From_The_File(key), Drawn(key)) << Item(key).Flip;
    }
}

TEST_F(Drawn_Thumbnails, Take_Crop_Margins_By_Whole_Division_Through_The_Divisor)
{
    const int key = Pick(Make("a.tif", 1040, 800, 2, "Crop(7,16,15,0)"));
    ASSERT_EQ(8, Item(key).Scale_Divisor);
    Drawn(key);
    EXPECT_EQ((Pixel_Size{130 - 1, 100 - 2}), Size_Of_Bitmap(budget.Drawn(Item(key))));
}

TEST_F(Drawn_Thumbnails, A_Scale_Item_That_Enlarges_Is_Kept_At_The_Thumbnails_Size)
{
    const int key = Pick(Make("a.tif", 400, 240, 2, "Scale(1600,800,Triangle,300,300)"));
    Drawn(key);
    const Pixel_Size thumbnail = Size_Of_Bitmap(Item(key).Thumbnail_Bitmap.Get());
    const Pixel_Size drawn = Size_Of_Bitmap(budget.Drawn(Item(key)));
    EXPECT_EQ(thumbnail.width, drawn.width);
    EXPECT_EQ(thumbnail.width / 2, drawn.height);
}

TEST_F(Drawn_Thumbnails, Have_Their_Script_Again_When_They_Were_Given_Up_And_Come_Back)
{
    const int key = Pick(Make("a.tif", 400, 240, 2, "Blur(3,100,RGB)"));
    form.Rotate_Picture(key, 90);
    const auto before = Drawn(key);
    Item(key).Thumbnail_Bitmap.Reset();
    EXPECT_FALSE(budget.Is_Ready(Item(key)));
    EXPECT_EQ(0, budget.Drawn(Item(key)));
    EXPECT_EQ(before, Drawn(key));
}

TEST_F(Drawn_Thumbnails, Away_From_The_View_Count_But_Run_No_Script)
{
    const int key = Pick(Make("a.tif", 400, 240, 2, "Blur(3,100,RGB)"));
    const int bitmaps = Bitmap_Count();
    budget.Note(key);
    EXPECT_EQ(1, budget.Kept());
    EXPECT_GT(budget.Bytes(), 0);
    EXPECT_EQ(bitmaps, Bitmap_Count());
    const std::int64_t plain = budget.Bytes();
    Drawn(key);
    EXPECT_EQ(2 * plain, budget.Bytes());
    form.Pictures().Reload_Picture_Thumbnail(1, false);
    budget.Note(key);
    EXPECT_EQ(bitmaps, Bitmap_Count()) << "what was made of the old thumbnail is gone";
}

TEST_F(Drawn_Thumbnails, Of_Removed_Pictures_Leave_No_Bitmap_Behind)
{
    const int before = Bitmap_Count();
    const int first = Pick(Make("a.tif", 400, 240, 2, "Blur(3,100,RGB)"));
    const int second = Pick(Make("b.tif", 400, 240, 2, "Blur(3,100,RGB)"));
    Drawn(first);
    Drawn(second);
    const int gone[] = {1};
    form.Picking().Remove_Pictures(gone);
    budget.Forget_Removed();
    EXPECT_EQ(before + 2, Bitmap_Count());
    EXPECT_EQ(1, budget.Kept());
    form.Discard_All();
    budget.Forget_Removed();
    EXPECT_EQ(before, Bitmap_Count());
    EXPECT_EQ(0, budget.Bytes());
}

TEST_F(Drawn_Thumbnails, A_Script_That_Is_Written_Asks_For_Its_Cell_And_Its_Large_View)
{
    const int key = Pick_New("a.jpg");
    view.drawn.clear();
    form.Set_Picture_Blur(key, 3, 100, 7, 0);
    EXPECT_EQ(QList<int>{1}, view.drawn);
    form.Set_Picture_All_Script_Items(key, "Crop(1,1,1,1)");
    EXPECT_EQ((QList<int>{1, 1}), view.drawn);
    const int none[] = {0};
    form.Set_Picture_Script_Item(key, "", none, 1);
    EXPECT_EQ((QList<int>{1, 1}), view.drawn) << "nothing was written";
}

} // namespace
