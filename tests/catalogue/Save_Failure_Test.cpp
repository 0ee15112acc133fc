// What the user is told when a save onto the original fails, and what stands on the disk then.

#include "catalogue/Recover_Folder.h"
#include "frame/files/Replacement_File.h"
#include "tests/catalogue/Picture_Fixture.h"
#include "tests/support/Failing_Calls.h"

#include <cerrno>
#include <filesystem>

namespace {

const std::vector<int> Clear_Nothing{0};

class Save_Failure : public Picture_Test {
protected:
    ~Save_Failure() override { Failing_Calls::Refuse_Nothing(); }
    bool Save()
    {
        const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
        const bool saved = form.Save_Adjusted_Picture(key, bitmap.Get(), {}, {}, Clear_Nothing, true);
        Failing_Calls::Refuse_Nothing();
        return saved;
    }
    bool The_Old_Picture_Stands_Under(const QString& name) const
    {
        const auto times = Times_Of(File(name));
        return Contents_Of(File(name)) == old_contents && times && times->modified.tv_sec == 2000 &&
               times->modified.tv_nsec == 5;
    }

    int key = [this] {
        const QString path = Make("a.jpg");
        EXPECT_TRUE(Set_Times(File("a.jpg"), {{1000, 0}, {2000, 5}}));
        return Pick(path);
    }();
    std::string old_contents = Contents_Of(File("a.jpg"));
};

TEST_F(Save_Failure, Leaves_The_Original_Under_Its_Own_Name_And_With_Its_Date)
{
    Failing_Calls::Refuse_Always("fsync", EIO);
    EXPECT_FALSE(Save());
    EXPECT_TRUE(Last_Message().startsWith("Error saving picture to " + Path("a.jpg") + "\r\n"));
    EXPECT_EQ(Message_Icon::Exclamation, platform.dialogs.asked.back().icon);
    EXPECT_TRUE(The_Old_Picture_Stands_Under("a.jpg"));
    EXPECT_EQ(QStringList{"a.jpg"}, Names());
}

TEST_F(Save_Failure, Without_Links_Leaves_The_Original_Under_Its_Own_Name_And_With_Its_Date)
{
    Failing_Calls::Refuse_Always("link", EPERM);
    Failing_Calls::Refuse_Always("fsync", EIO);
    EXPECT_FALSE(Save());
    EXPECT_TRUE(The_Old_Picture_Stands_Under("a.jpg"));
    EXPECT_EQ(QStringList{"a.jpg"}, Names());
}

TEST_F(Save_Failure, That_Cannot_Be_Put_Right_Tells_Where_The_Original_Is)
{
    Failing_Calls::Refuse_Always("link", EPERM);
    Failing_Calls::Refuse_From(2, "rename", EIO); // the first moves the original aside
    EXPECT_FALSE(Save());
    const QString start = "Error saving picture to " + Path("a.jpg") + "\r\nOriginal file is " + Path("a.jpg~") +
                          "\r\nfailed save file is " + Path("a.jpg") + ", ";
    EXPECT_TRUE(Last_Message().startsWith(start)) << Last_Message().toStdString();
    EXPECT_GT(Last_Message().size(), start.size()) << "the reason is missing";
    EXPECT_TRUE(The_Old_Picture_Stands_Under("a.jpg~"));
    EXPECT_EQ(QStringList{"a.jpg~"}, Names());
    EXPECT_EQ(QStringList{Path("a.jpg")}, Recover_Folder(platform.platform, QString::fromStdString(folder.Path())));
    EXPECT_TRUE(The_Old_Picture_Stands_Under("a.jpg"));
}

TEST_F(Save_Failure, Is_Told_Only_To_Callers_That_Want_It)
{
    Failing_Calls::Refuse_Always("fsync", EIO);
    const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
    EXPECT_FALSE(form.Save_Adjusted_Picture(key, bitmap.Get(), {}, {}, Clear_Nothing, false));
    EXPECT_TRUE(platform.dialogs.asked.empty());
}

TEST_F(Save_Failure, Leaves_The_Record_As_It_Was)
{
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    form.Rotate_Picture(key, 90);
    Item(key).Description_Modified = true;
    Failing_Calls::Refuse_Always("fsync", EIO);
    EXPECT_FALSE(Save());
    EXPECT_EQ(90, form.Return_Picture_Rotate(key));
    EXPECT_EQ("Crop(1,2,3,4)", form.Recall_Picture_All_Script_Items(key));
    EXPECT_TRUE(Item(key).Description_Modified);
    EXPECT_EQ(160, form.Return_Picture_Horz_Pixels(key));
}

TEST_F(Save_Failure, Does_Not_Ask_Again_For_The_Other_Names_Of_The_File)
{
    std::filesystem::create_hard_link(File("a.jpg"), File("b.jpg"));
    platform.dialogs.answers = {Message_Answer::Yes};
    Failing_Calls::Refuse_Always("fsync", EIO);
    EXPECT_FALSE(Save());
    EXPECT_TRUE(Save()) << Last_Message().toStdString();
}

TEST_F(Save_Failure, In_A_Series_Is_Skipped_Without_A_Message)
{
    Make("b.jpg");
    form.Set_Picture_Key_Selected(key, true);
    form.Set_Picture_Key_Selected(Pick(Path("b.jpg")), true);
    platform.dialogs.answers = {Message_Answer::Yes};
    const auto before = platform.dialogs.asked.size();
    Failing_Calls::Refuse_Always("fsync", EIO);
    EXPECT_EQ(0, form.Save_Selected_As({.Script_Option = Save_Options::Scripts::Ignore, .JPEG_Quality = 50}));
    EXPECT_EQ(before + 1, platform.dialogs.asked.size()) << "the question before the series alone";
    EXPECT_TRUE(The_Old_Picture_Stands_Under("a.jpg"));
}

TEST_F(Save_Failure, To_A_New_Name_Leaves_No_File)
{
    const Owned_Bitmap bitmap = Drawn_Bitmap(80, 50, 9);
    Failing_Calls::Refuse_Always("fsync", EIO);
    EXPECT_FALSE(form.Save_Adjusted_Picture(key, bitmap.Get(), Path("b.jpg"), {}, Clear_Nothing, true));
    EXPECT_TRUE(Last_Message().startsWith("Error saving picture to " + Path("b.jpg")));
    EXPECT_EQ(QStringList{"a.jpg"}, Names());
    EXPECT_EQ(1, form.State().pictures.Count());
}

} // namespace
