#include "catalogue/Thumbnail_Reader.h"

#include "catalogue/Picture_Flips.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <QtCore/QFile>
#include <thread>
#include <utility>

namespace {

class Reading_Thumbnails : public Picture_Test {
protected:
    int Pick_Given_Up(const QString& path)
    {
        const int key = Pick(path);
        Item(key).Thumbnail_Bitmap.Reset();
        return key;
    }
    /// What the next one to end gives; nothing when all have ended without a word.
    std::optional<int> Await()
    {
        while (reader.Being_Read() > 0) {
            if (const auto key = reader.Take()) return key;
            std::this_thread::yield();
        }
        return std::nullopt;
    }
    void Want(const std::vector<int>& keys) { reader.Want(keys); }
    /// Long enough for a small file to be read.
    static void Let_It_Be_Read() { std::this_thread::sleep_for(std::chrono::milliseconds(100)); }

    Thumbnail_Reader reader{form.State(), form.Pictures()};
};

TEST_F(Reading_Thumbnails, Gives_What_The_Pick_Had_Given)
{
    const int key = Pick(Make("a.jpg", 1600, 960));
    const auto pixels = Pixels_Of(Item(key).Thumbnail_Bitmap.Get());
    const int divisor = std::exchange(Item(key).Scale_Divisor, 1); // another program made the file smaller before
    Item(key).Thumbnail_Bitmap.Reset();
    Want({key});
    EXPECT_EQ(key, Await());
    EXPECT_EQ(pixels, Pixels_Of(Item(key).Thumbnail_Bitmap.Get()));
    EXPECT_EQ(divisor, Item(key).Scale_Divisor);
}

TEST_F(Reading_Thumbnails, Of_A_Turned_And_Flipped_Picture_Come_In_Line)
{
    const int key = Pick(Make("a.tif", 400, 240, 2));
    form.Rotate_Picture(key, 90);
    Flip_Picture(form.State(), form.Pictures(), key, Flip_Left_To_Right);
    const auto pixels = Pixels_Of(Thumbnail(key));
    Item(key).Thumbnail_Bitmap.Reset();
    Want({key});
    EXPECT_EQ(key, Await());
    EXPECT_TRUE(Item(key).Thumbnail_Bitmap);
    EXPECT_EQ(pixels, Pixels_Of(Thumbnail(key)));
}

TEST_F(Reading_Thumbnails, A_Turn_Meanwhile_Is_Made_Up_For)
{
    const int key = Pick(Make("a.tif", 400, 240, 2));
    form.Rotate_Picture(key, 90);
    const auto pixels = Pixels_Of(Thumbnail(key));
    form.Rotate_Picture(key, 270);
    Item(key).Thumbnail_Bitmap.Reset();
    Want({key});
    Item(key).Rotate = 90;
    EXPECT_EQ(key, Await());
    EXPECT_FALSE(Item(key).Thumbnail_Is_In_Line());
    EXPECT_EQ(pixels, Pixels_Of(Thumbnail(key)));
}

TEST_F(Reading_Thumbnails, At_Most_Some_Are_Read_At_A_Time_And_The_First_Ones_First)
{
    std::vector<int> keys;
    for (int i = 0; i < 7; ++i) keys.push_back(Pick_Given_Up(Make(QStringLiteral("%1.jpg").arg(i))));
    Want(keys);
    EXPECT_EQ(Thumbnail_Reader::Most_At_Once, reader.Being_Read());
    std::vector<int> read;
    while (const auto key = Await()) read.push_back(*key);
    std::sort(read.begin(), read.end());
    EXPECT_EQ(std::vector(keys.begin(), keys.begin() + Thumbnail_Reader::Most_At_Once), read);
}

TEST_F(Reading_Thumbnails, What_Is_Wanted_No_More_Makes_Room_For_What_Is)
{
    std::vector<int> keys;
    for (int i = 0; i < 8; ++i) keys.push_back(Pick_Given_Up(Make(QStringLiteral("%1.jpg").arg(i))));
    const int bitmaps = Bitmap_Count();
    Want({keys[0], keys[1], keys[2], keys[3]});
    Want({keys[6], keys[3]});
    EXPECT_EQ(2, reader.Being_Read());
    std::vector<int> read{*Await(), *Await()};
    std::sort(read.begin(), read.end());
    EXPECT_EQ((std::vector{keys[3], keys[6]}), read);
    Want({keys[5]});
    Want({});
    EXPECT_EQ(0, reader.Being_Read());
    EXPECT_EQ(std::nullopt, Await());
    EXPECT_EQ(bitmaps + 2, Bitmap_Count());
}

TEST_F(Reading_Thumbnails, Two_Very_Large_Pictures_Are_Not_Read_Side_By_Side)
{
    std::vector<int> keys;
    for (int i = 0; i < 3; ++i) keys.push_back(Pick_Given_Up(Make(QStringLiteral("%1.jpg").arg(i))));
    for (const int large : {0, 1}) Item(keys[std::size_t(large)]).Horz_Pixels = 4'000'000;
    Want(keys);
    EXPECT_EQ(2, reader.Being_Read());
    EXPECT_TRUE(Await() && Await());
    Want({keys[1]});
    EXPECT_EQ(keys[1], Await());
}

TEST_F(Reading_Thumbnails, A_File_That_Another_Program_Changed_Meanwhile_Is_Read_Again)
{
    const int key = Pick_Given_Up(Make("a.jpg", 160, 96, 1, {}, {}, 1));
    const auto fresh = Pixels_Of(Thumbnail(Pick(Make("b.jpg", 160, 96, 1, {}, {}, 9))));
    Want({key});
    Let_It_Be_Read();
    ASSERT_TRUE(QFile::remove(Path("a.jpg")) && QFile::rename(Path("b.jpg"), Path("a.jpg")));
    EXPECT_EQ(std::nullopt, Await());
    EXPECT_FALSE(Item(key).Thumbnail_Bitmap);
    Want({key});
    EXPECT_EQ(key, Await());
    EXPECT_EQ(fresh, Pixels_Of(Item(key).Thumbnail_Bitmap.Get()));
}

TEST_F(Reading_Thumbnails, A_Record_That_Has_Another_File_Now_Gets_Nothing_Of_The_Former_One)
{
    const int key = Pick_Given_Up(Make("a.jpg"));
    const int bitmaps = Bitmap_Count();
    Want({key});
    Make("b.jpg");
    form.State().pictures.Set_Name(1, Item(key).Path, "b.jpg");
    EXPECT_EQ(std::nullopt, Await());
    EXPECT_FALSE(Item(key).Thumbnail_Bitmap);
    EXPECT_EQ(bitmaps, Bitmap_Count());
}

TEST_F(Reading_Thumbnails, A_Record_That_Went_Or_Has_A_Thumbnail_By_Now_Is_Left_Alone)
{
    const int key = Pick_Given_Up(Make("a.jpg"));
    const int gone = Pick_Given_Up(Make("b.jpg"));
    Want({key, gone});
    const Bitmap_Handle own = Thumbnail(key);
    const int indices[] = {2};
    form.Picking().Remove_Pictures(indices);
    const int bitmaps = Bitmap_Count();
    EXPECT_EQ(key, Await());
    EXPECT_EQ(std::nullopt, Await());
    EXPECT_EQ(own, Item(key).Thumbnail_Bitmap.Get());
    EXPECT_EQ(bitmaps, Bitmap_Count());
}

TEST_F(Reading_Thumbnails, A_File_That_Cannot_Be_Read_Ends_Without_One)
{
    const int key = Pick_Given_Up(Make("a.jpg"));
    ASSERT_TRUE(QFile::remove(Path("a.jpg")));
    Want({key, 12345});
    EXPECT_EQ(1, reader.Being_Read());
    EXPECT_EQ(key, Await());
    EXPECT_FALSE(Item(key).Thumbnail_Bitmap);
}

} // namespace
