// Saves of texts alone: the coded data goes as it is, nothing is decoded.

#include "frame/files/Replacement_File.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <filesystem>
#include <fstream>

namespace {

/// How many pictures a step decodes.
template <class Step>
std::int64_t Decodes_Of(Step step)
{
    const std::int64_t before = Count_Of_Decoded_Pictures_CPP();
    step();
    return Count_Of_Decoded_Pictures_CPP() - before;
}

class Text_Saves : public Picture_Test {
protected:
    Text_Saves() { platform.dialogs.answers.assign(20, Message_Answer::Yes); }

    int Pick_Type(int type)
    {
        const int key = Pick(Make(type == 1 ? "a.jpg" : "a.tif", 160, 96, type, "Crop(9,9,9,9)", "old"));
        form.Set_Picture_Key_Selected(key, true);
        form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
        Item(key).Description = "new";
        return key;
    }
    QString Script_In(const QString& path) { return Get_Image_Script(path, 0); }

    /// Behind the picture data of a JPEG file; its end mark included.
    void Cut_Off(const QString& name, std::size_t bytes)
    {
        std::filesystem::resize_file(File(name), std::filesystem::file_size(File(name)) - bytes);
    }
};

TEST_F(Text_Saves, Decode_Nothing_Onto_The_Original)
{
    for (const int type : {1, 2}) {
        const int key = Pick_Type(type);
        EXPECT_EQ(0, Decodes_Of([&] { EXPECT_TRUE(form.Saving().Save_Texts(key)) << Last_Message().toStdString(); }));
        EXPECT_EQ("Crop(1,2,3,4)", Script_In(Item(key).Full_Name()));
        EXPECT_EQ("new", Get_Comment(Item(key).Full_Name(), 0));
        EXPECT_FALSE(Item(key).Script_Modified);
        EXPECT_FALSE(Item(key).Description_Modified);
    }
    EXPECT_EQ((QStringList{"a.jpg", "a.tif"}), Names());
}

TEST_F(Text_Saves, Decode_Nothing_As_A_Copy_With_Scripts)
{
    for (const int type : {1, 2}) {
        const int key = Pick_Type(type);
        const auto pixels = Pixels_Of(Owned_Bitmap(form.Return_Picture(key, 0, 1)).Get());
        EXPECT_EQ(0, Decodes_Of([&] {
                      EXPECT_EQ(1, form.Save_Selected_As({.Script_Option = Save_Options::Scripts::Save_With,
                                                          .Save_Option = Save_Options::Target::Auto_Copy}));
                  }));
        const QString copy = Path(type == 1 ? "a-hv.jpg" : "a-hv.tif");
        EXPECT_EQ("Crop(1,2,3,4)", Script_In(copy));
        EXPECT_EQ(pixels, Pixels_Of(Owned_Bitmap(Load_Bitmap(copy, 0, 1, 0)).Get()));
        form.Set_Picture_Key_Selected(key, false);
    }
}

TEST_F(Text_Saves, Decode_Nothing_When_Selected_Are_Saved_Onto_Originals)
{
    Pick_Type(1);
    EXPECT_EQ(0, Decodes_Of([&] {
                  EXPECT_EQ(1, form.Save_Selected_As({.Script_Option = Save_Options::Scripts::Save_With}));
              }));
    EXPECT_EQ("Crop(1,2,3,4)", Script_In(Path("a.jpg")));
}

TEST_F(Text_Saves, Decode_Nothing_For_A_Snapshot_Of_An_Upright_Picture)
{
    Pick_Type(1);
    EXPECT_EQ(0, Decodes_Of([&] { EXPECT_EQ(1, form.Snapshots().Save_Selected_As_Snapshots()); }));
    EXPECT_EQ("Crop(1,2,3,4)", Script_In(Path("~a-20260314-150926.jpg")));
}

TEST_F(Text_Saves, Leave_A_Pending_Rotation_Pending)
{
    const int key = Pick_Type(1);
    form.Rotate_Picture(key, 90);
    Item(key).Flip = 1;
    EXPECT_TRUE(form.Saving().Save_Texts(key));
    EXPECT_EQ(90, Item(key).Rotate);
    EXPECT_EQ(1, Item(key).Flip);
    EXPECT_EQ("Crop(1,2,3,4)", Script_In(Path("a.jpg"))) << "of the picture as stored";
}

TEST_F(Text_Saves, Store_A_Resolution_That_Was_Set)
{
    for (const int type : {1, 2}) {
        const int key = Pick_Type(type);
        Item(key).Horz_Resolution = Item(key).Vert_Resolution = 240;
        EXPECT_TRUE(form.Saving().Save_Texts(key)) << Last_Message().toStdString();
        File_Dimensions facts;
        EXPECT_TRUE(Get_Dimensions(Item(key).Full_Name(), 0, facts));
        EXPECT_EQ(240, facts.horizontal_dpi);
    }
}

TEST_F(Text_Saves, Refuse_A_File_That_Was_Cut_Off)
{
    for (const int type : {1, 2}) {
        const int key = Pick_Type(type);
        const QString name = Item(key).File_Name;
        if (type == 1) {
            Cut_Off(name, std::filesystem::file_size(File(name)) / 3);
        } else { // the directory stands at the end: the strips are made to point behind it
            Make(name, 160, 96, 2);
            std::string bytes = Contents_Of(File(name));
            const auto at = bytes.rfind(std::string("\x17\x01\x04\x00", 4)); // tag 279, 32 bits
            ASSERT_NE(std::string::npos, at);
            bytes.replace(at + 8, 4, std::string("\xFF\xFF\xFF\x7F", 4));
            Put_File(File(name), bytes);
        }
        const std::string before = Contents_Of(File(name));
        EXPECT_FALSE(form.Saving().Save_Texts(key));
        EXPECT_TRUE(Last_Message().startsWith("Error saving picture to " + Item(key).Full_Name()))
            << Last_Message().toStdString();
        EXPECT_EQ(before, Contents_Of(File(name)));
        form.Set_Picture_Key_Selected(key, false);
    }
    EXPECT_EQ((QStringList{"a.jpg", "a.tif"}), Names());
}

TEST_F(Text_Saves, Take_A_Picture_That_Only_Lacks_Its_End_Mark)
{
    const int key = Pick_Type(1);
    Cut_Off("a.jpg", 2);
    EXPECT_EQ(1, Decodes_Of([&] { // to see that the pixels are all there
                     EXPECT_TRUE(form.Saving().Save_Texts(key)) << Last_Message().toStdString();
                 }) - 2)
        << "two more for the thumbnail of a file that was changed meanwhile";
    EXPECT_EQ("Crop(1,2,3,4)", Script_In(Path("a.jpg")));
}

TEST_F(Text_Saves, Never_Cut_A_Stored_Script_Of_Too_Many_Items)
{
    const QString script = QStringList(1001, "Crop(1,2,3,4)").join(';');
    const int key = Pick(Make("a.jpg", 160, 96, 1, script, "old"));
    const std::string before = Contents_Of(File("a.jpg"));
    EXPECT_EQ(1000, Item(key).Script_Items.Count());
    Item(key).Description = "new";
    const auto refused = [&] {
        return Last_Message().endsWith("its script would be cut: the script has more than 1000 items");
    };
    EXPECT_FALSE(form.Saving().Save_Texts(key));
    EXPECT_TRUE(refused()) << Last_Message().toStdString();
    form.Set_Picture_Key_Selected(key, true);
    EXPECT_EQ(0, form.Save_Selected_As({.Script_Option = Save_Options::Scripts::Save_With}));
    EXPECT_TRUE(refused()) << Last_Message().toStdString();
    form.Rotate_Picture(key, 90);
    EXPECT_FALSE(form.Saving().Save_Rotation_And_Flips(key));
    EXPECT_TRUE(refused()) << Last_Message().toStdString();
    EXPECT_EQ(before, Contents_Of(File("a.jpg")));
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)"); // what the user wants instead
    EXPECT_TRUE(form.Saving().Save_Texts(key)) << Last_Message().toStdString();
    EXPECT_EQ("Crop(1,2,3,4)", Script_In(Path("a.jpg")));
    EXPECT_EQ("new", Get_Comment(Path("a.jpg"), 0));
    Item(key).Description = "newer";
    EXPECT_TRUE(form.Saving().Save_Texts(key)) << "the script is whole now";
}

TEST_F(Text_Saves, Refuse_The_Item_Beyond_The_Limit_And_Take_The_Last_Within)
{
    const int key = Pick_Type(1);
    EXPECT_TRUE(form.Set_Picture_All_Script_Items(key, QStringList(999, "Crop(1,2,3,4)").join(';')));
    EXPECT_EQ(1000, form.Set_Picture_Crop(key, 1, 2, 3, 4, 0));
    EXPECT_EQ(0, form.Set_Picture_Crop(key, 1, 2, 3, 4, 0));
    EXPECT_EQ("the script has more than 1000 items", Last_Message());
    EXPECT_FALSE(form.Set_Picture_All_Script_Items(key, QStringList(1001, "Crop(1,2,3,4)").join(';')));
    EXPECT_EQ(1000, Item(key).Script_Items.Count()) << "the record stays as it was";
    EXPECT_TRUE(form.Saving().Save_Texts(key)) << Last_Message().toStdString();
    EXPECT_EQ(form.Recall_Picture_All_Script_Items(key), Script_In(Path("a.jpg")));
}

TEST_F(Text_Saves, Refuse_Texts_Beyond_The_Limits_And_Name_Them)
{
    for (const int type : {1, 2}) {
        const int key = Pick_Type(type);
        const QString path = Item(key).Full_Name();
        const std::string before = Contents_Of(File(Item(key).File_Name));
        Item(key).Description = QString(1025, 'd');
        EXPECT_FALSE(form.Saving().Save_Texts(key));
        EXPECT_TRUE(Last_Message().contains("the description has 1025 bytes, 1024 are the limit"))
            << Last_Message().toStdString();
        Item(key).Description = QString(513, QChar(0xE4)); // two bytes each
        EXPECT_FALSE(form.Saving().Save_Texts(key));
        EXPECT_TRUE(Last_Message().contains("1026 bytes, 1024"));
        Item(key).Description = QString(512, QChar(0xE4));
        form.Set_Picture_All_Script_Items(key, "Text(\"" + QString(65'600, 't') + "\")");
        EXPECT_FALSE(form.Saving().Save_Texts(key));
        EXPECT_TRUE(Last_Message().contains("the script has ") && Last_Message().contains(", 65535 are the limit"))
            << Last_Message().toStdString();
        EXPECT_EQ(before, Contents_Of(File(Item(key).File_Name)));
        form.Set_Picture_All_Script_Items(key, "Text(\"" + QString(65'500, 't') + "\")");
        EXPECT_TRUE(form.Saving().Save_Texts(key)) << Last_Message().toStdString();
        EXPECT_EQ(form.Recall_Picture_All_Script_Items(key), Script_In(path));
        EXPECT_EQ(Item(key).Description, Get_Comment(path, 0));
    }
}

} // namespace
