#include "catalogue/Selection_For_Function.h"
#include "dev/samples/Jpeg_File.h"
#include "tests/catalogue/Picture_Fixture.h"

#include <QtCore/QFile>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class Picking : public Picture_Test {
protected:
    QStringList Make_Many(int count)
    {
        QStringList paths{Make("0.jpg")};
        for (int i = 1; i < count; ++i) {
            paths << Path(QString::number(i) + ".jpg");
            Put_File(paths.back().toStdString(), Contents_Of(paths.front().toStdString()));
        }
        return paths;
    }
};

TEST_F(Picking, Reads_Sizes_Texts_And_Leaves_The_Record_Unmodified)
{
    const int key = Pick(Make("a.jpg", 160, 96, 1, "Crop(1,2,3,4)", "sea"));
    ASSERT_EQ(1, key);
    EXPECT_EQ(160, form.Return_Picture_Horz_Pixels(key));
    EXPECT_EQ(96, form.Return_Picture_Vert_Pixels(key));
    EXPECT_EQ(24, form.Return_Picture_Pixel_Depth(key));
    EXPECT_EQ("sea", form.Return_Picture_Description(key));
    EXPECT_EQ("Crop(1,2,3,4)", form.Recall_Picture_All_Script_Items(key));
    EXPECT_FALSE(Item(key).Script_Modified);
    EXPECT_FALSE(Item(key).Description_Modified);
    EXPECT_EQ(Path("a.jpg"), form.Return_Picture_Path(key));
    EXPECT_EQ("a.jpg", form.Return_Picture_File_Name(key));
}

TEST_F(Picking, Reads_The_Resolutions_That_The_File_Tells)
{
    const auto bytes = Jpeg_File(Meadow(160, 96, 1), {.dpi = 240});
    Put_File(File("a.jpg"), std::string(bytes.begin(), bytes.end()));
    const int key = Pick(Path("a.jpg"));
    EXPECT_EQ(240, form.Return_Picture_Horz_Resolution(key));
    EXPECT_EQ(240, form.Return_Picture_Vert_Resolution(key));
}

TEST_F(Picking, Three_Files_With_Six_Columns_Show_No_Progress_Frame_And_Six_Do)
{
    Pick_List(Make_Many(3));
    EXPECT_EQ(0, view.progress_begun);
    Pick_List(Make_Many(6));
    EXPECT_EQ(1, view.progress_begun);
    EXPECT_EQ(1, view.progress_ended);
    EXPECT_EQ("1 of 6 (17%)", view.labels.front());
    EXPECT_EQ("6 of 6 (100%)", view.labels.back());
}

TEST_F(Picking, An_Empty_File_Goes_To_The_Failure_List_And_Leaves_No_Gap_And_No_Lost_Key)
{
    Put_File(File("empty.jpg"), "");
    Make("a.jpg");
    platform.dialogs.answers = {Message_Answer::Yes};
    Pick_List({Path("a.jpg"), Path("empty.jpg"), Path("a.jpg")});
    EXPECT_EQ(2, form.State().pictures.Count());
    EXPECT_EQ(2, form.State().pictures.Item(2).Picture_Key);
    EXPECT_EQ("Halvine was unable to read 1 of the selected pictures.\r\nDo you wish to see a list of failed files?",
              Last_Message());
    ASSERT_EQ(1U, platform.dialogs.lists_shown.size());
    EXPECT_EQ("Halvine read failure for", platform.dialogs.lists_shown[0].first);
    EXPECT_EQ(QStringList{Path("empty.jpg")}, platform.dialogs.lists_shown[0].second);
}

TEST_F(Picking, While_Appending_The_Old_Selection_Survives_Unless_It_Is_Refreshed)
{
    const int key = Pick_New("a.jpg");
    form.Set_Picture_Key_Selected(key, true);
    Pick_List({Make("b.jpg")}, true, false);
    EXPECT_EQ(std::vector<int>{1}, form.State().selection.Selected_Indices());
    Pick_List({Make("c.jpg")}, true, true);
    EXPECT_EQ(std::vector<int>{3}, form.State().selection.Selected_Indices());
}

TEST_F(Picking, A_Tiny_Picture_Ends_At_Divisor_1_And_A_Large_One_Stays_At_8)
{
    EXPECT_EQ(1, Item(Pick(Make("tiny.jpg", 100, 80))).Scale_Divisor);
    EXPECT_EQ(4, Item(Pick(Make("middle.jpg", 600, 80))).Scale_Divisor);
    EXPECT_EQ(8, Item(Pick(Make("large.jpg", 1024, 80))).Scale_Divisor);
}

TEST_F(Picking, Stop_After_The_First_Row_Keeps_What_Was_Read_And_Still_Reports_Failures)
{
    QStringList paths = Make_Many(12);
    Put_File(File("empty.jpg"), "");
    paths.insert(1, Path("empty.jpg"));
    platform.events.on_call = [this](int) { form.Picking().Request_Stop(); };
    Pick_List(paths);
    EXPECT_EQ(6, form.State().pictures.Count());
    EXPECT_TRUE(Last_Message().startsWith("Halvine was unable to read 1"));
    EXPECT_FALSE(form.Picking().Pick_In_Progress());
}

TEST_F(Picking, Yields_At_Each_Full_Row_And_Nowhere_Else)
{
    Pick_List(Make_Many(13));
    EXPECT_EQ(2, platform.events.calls);
}

TEST_F(Picking, The_Scroll_Range_Grows_With_Each_Row_That_Begins_Below_A_Full_View)
{
    Pick_List(Make_Many(24)); // just full
    EXPECT_EQ(0, view.progress_repaints);
    EXPECT_EQ(1, view.scroll_updates) << "at the end";
    Pick_List(Make_Many(32)); // rows begin with the 25th and the 31st
    EXPECT_EQ(2, view.progress_repaints);
    EXPECT_EQ(1 + 3, view.scroll_updates);
    view.columns = 1;
    view.progress_repaints = 0;
    Pick_List(Make_Many(4)); // each is a row
    EXPECT_EQ(0, view.progress_repaints);
    Pick_List(Make_Many(5));
    EXPECT_EQ(1, view.progress_repaints);
}

TEST_F(Picking, A_Discard_Shows_Strip_Range_And_Counts_Anew)
{
    Pick_List(Make_Many(2));
    form.Set_Picture_Selected(1, true);
    form.Pictures().Set_Current_Picture(1);
    view.all_drawn = view.scroll_updates = view.status_updates = view.current_shown = 0;
    form.Discard_Selected();
    EXPECT_EQ(1, view.all_drawn);
    EXPECT_EQ(1, view.scroll_updates);
    EXPECT_EQ(1, view.status_updates);
    EXPECT_EQ(1, view.current_shown) << "there is none any more";
    EXPECT_EQ(0, form.State().selection.Count());
    EXPECT_EQ("1.jpg", form.State().pictures.Item(1).File_Name);
}

TEST_F(Picking, Afresh_Begins_At_The_Top_Of_A_Clear_Strip_And_An_Append_Where_It_Is)
{
    const int key = Pick_New("a.jpg");
    form.Set_Picture_Key_Selected(key, true);
    form.Pictures().Set_Current_Picture(1);
    view.top_rows.clear();
    view.strips_cleared = 0;
    slide_show.stopped = 0;
    Pick_List({Path("a.jpg")}, true);
    EXPECT_EQ(QList<int>(), view.top_rows);
    EXPECT_EQ(0, view.strips_cleared);
    EXPECT_EQ(0, form.State().current_picture_key) << "there is none while files are read, nor after it";
    EXPECT_FALSE(form.State().Current_Picture_Bitmap);
    EXPECT_EQ((QList<int>{1, 2}), view.drawn);
    Pick_List({Path("a.jpg")});
    EXPECT_EQ(QList<int>{0}, view.top_rows);
    EXPECT_EQ(1, view.strips_cleared);
    EXPECT_EQ(1, form.State().pictures.Count());
    EXPECT_EQ(0, form.State().selection.Count());
    EXPECT_EQ(3, form.State().pictures.Item(1).Picture_Key) << "no key comes again";
    EXPECT_EQ(2, slide_show.stopped);
    EXPECT_EQ(0, platform.shell.busy_depth);
}

TEST_F(Picking, The_Pointer_Is_Busy_While_Files_Are_Read)
{
    platform.events.on_call = [&](int) { EXPECT_EQ(1, platform.shell.busy_depth); };
    Pick_List(Make_Many(6));
    EXPECT_EQ(1, platform.events.calls);
    EXPECT_EQ(0, platform.shell.busy_depth);
}

TEST_F(Picking, Nothing_Is_Listed_Without_A_Yes)
{
    platform.dialogs.answers = {Message_Answer::No};
    Pick_List({Path("missing.jpg")});
    EXPECT_EQ(1U, platform.dialogs.asked.size());
    EXPECT_EQ(Message_Buttons::Yes_No_Cancel, platform.dialogs.asked[0].buttons);
    EXPECT_EQ(Message_Answer::No, platform.dialogs.asked[0].standard);
    EXPECT_TRUE(platform.dialogs.lists_shown.empty());
}

TEST_F(Picking, Yields_Behind_A_File_When_The_Last_Time_Is_Fifty_Milliseconds_Ago)
{
    Stepping_Clock clock(30);
    Platform slow{platform.dialogs, platform.events, clock, platform.settings, platform.shell, {}};
    view.shows_thumbnails = false; // headers are there as soon as they are waited for
    Halvine_Form other(slow, &view, &slide_show);
    std::vector<File_Entry> entries;
    for (const QString& path : Make_Many(5)) entries.push_back(Entry_Of_File(path));
    other.Pick_Files(entries, false, false);
    EXPECT_EQ(5, other.State().pictures.Count());
    EXPECT_EQ(2, platform.events.calls) << "behind the second and the fourth file";
}

TEST_F(Picking, Without_A_View_That_Shows_Them_Thumbnails_Are_Not_Decoded)
{
    view.shows_thumbnails = false;
    const QString path = Make("a.jpg", 160, 96, 1, "Crop(1,2,3,4)");
    const auto decoded = Count_Of_Decoded_Pictures_CPP();
    const int key = Pick(path);
    form.Rotate_Picture(key, 90);
    form.Pictures().Reload_Picture_Thumbnail(1, true);
    EXPECT_FALSE(Item(key).Thumbnail_Bitmap);
    EXPECT_EQ(decoded, Count_Of_Decoded_Pictures_CPP());
    EXPECT_EQ(160, Item(key).Horz_Pixels);
    EXPECT_EQ(1, Item(key).Script_Items.Count());
}

TEST_F(Picking, A_Script_That_Cannot_Be_Read_Is_A_Fault_Of_The_Record_And_Not_Of_The_Picture)
{
    const std::string name = "Halvine script";
    std::vector<std::uint8_t> half(name.begin(), name.end());
    half.insert(half.end(), {0, 1, 2, 'C'}); // the first part of two
    const auto bytes = Jpeg_File(Meadow(160, 96, 1), {.segments = {{0xEA, half}}});
    Put_File(File("half.jpg"), std::string(bytes.begin(), bytes.end()));
    const int key = Pick(Path("half.jpg"));
    ASSERT_NE(0, key);
    EXPECT_TRUE(Item(key).Thumbnail_Bitmap);
    EXPECT_TRUE(Item(key).Script_Items.Is_Empty());
    EXPECT_FALSE(Item(key).Script_Modified);
    EXPECT_TRUE(Item(key).Script_Fault.contains("incomplete script")) << Item(key).Script_Fault.toStdString();
    EXPECT_EQ("", Item(Pick_New("whole.jpg")).Script_Fault);
}

TEST_F(Picking, A_Long_Run_Of_Unreadable_Files_Can_Be_Stopped)
{
    QStringList paths;
    for (int i = 0; i < 50; ++i) paths << Path(QString("missing%1.jpg").arg(i));
    platform.events.on_call = [this](int) { form.Picking().Request_Stop(); };
    Pick_List(paths);
    EXPECT_EQ(1, platform.events.calls);
}

TEST_F(Picking, Stop_Is_Obeyed_While_A_File_Is_Still_Being_Read)
{
    const auto slow = Jpeg_File(Meadow(2400, 1600, 1), {.progressive = true});
    Put_File(File("slow.jpg"), std::string(slow.begin(), slow.end()));
    Stepping_Clock clock(1000);
    Platform hasty{platform.dialogs, platform.events, clock, platform.settings, platform.shell, {}};
    Halvine_Form other(hasty, &view, &slide_show);
    platform.events.on_call = [&](int) { other.Picking().Request_Stop(); };
    const int bitmaps = Bitmap_Count();
    const std::vector<File_Entry> entries(9, Entry_Of_File(Path("slow.jpg")));
    other.Pick_Files(entries, false, false);
    EXPECT_EQ(1, platform.events.calls);
    EXPECT_EQ(0, other.State().pictures.Count());
    EXPECT_EQ(bitmaps, Bitmap_Count()) << "what was read ahead is gone";
    EXPECT_FALSE(other.Picking().Pick_In_Progress());
}

TEST_F(Picking, Records_Come_In_The_Order_Of_The_List_As_If_Each_Was_Picked_Alone)
{
    QStringList paths;
    for (int i = 0; i < 24; ++i) {
        // Large and small ones by turns: the small ones are done first.
        const int side = i % 3 == 0 ? 1600 : 40 + i;
        paths << Make(QStringLiteral("%1.%2").arg(i).arg(i % 4 == 1 ? "tif" : "jpg"), side, side * 3 / 4,
                      i % 4 == 1 ? 2 : 1, i % 2 == 0 ? QStringLiteral("Crop(%1,0,0,0)").arg(i) : QString(),
                      QString::number(i), i);
        if (i % 5 == 2) QFile::resize(paths.back(), 40);
    }
    Halvine_Form alone(platform.platform, &view, &slide_show);
    for (const QString& path : paths) alone.Add_Picture_By_File_Name(path);
    Pick_List(paths);
    const Picture_List& expected = alone.State().pictures;
    const Picture_List& actual = form.State().pictures;
    ASSERT_EQ(expected.Count(), actual.Count());
    EXPECT_LT(actual.Count(), paths.size()) << "some were cut short";
    for (int index = 1; index <= actual.Count(); ++index) {
        const Picture_Item& one = expected.Item(index);
        const Picture_Item& other = actual.Item(index);
        EXPECT_EQ(one.Full_Name(), other.Full_Name());
        EXPECT_EQ(one.Picture_Key, other.Picture_Key);
        EXPECT_EQ(one.Horz_Pixels, other.Horz_Pixels);
        EXPECT_EQ(one.Scale_Divisor, other.Scale_Divisor);
        EXPECT_EQ(one.Description, other.Description);
        EXPECT_TRUE(one.Script_Items == other.Script_Items);
        EXPECT_EQ(one.Identity, other.Identity);
        EXPECT_EQ(Pixels_Of(one.Thumbnail_Bitmap.Get()), Pixels_Of(other.Thumbnail_Bitmap.Get()));
    }
}

TEST_F(Picking, What_Is_No_Picture_File_Costs_One_Line_Each_In_Its_Place)
{
    const QStringList good{Make("a.jpg"), Make("b.jpg"), Make("c.jpg")};
    mkfifo(File("pipe.jpg").c_str(), 0600);
    symlink(File("loop_b.jpg").c_str(), File("loop_a.jpg").c_str());
    symlink(File("loop_a.jpg").c_str(), File("loop_b.jpg").c_str());
    symlink("/dev/zero", File("device.jpg").c_str());
    symlink(File("nowhere.jpg").c_str(), File("dangling.jpg").c_str());
    mkdir(File("folder.jpg").c_str(), 0700);
    Put_File(File("text.jpg"), "no picture at all");
    Put_File(File("cut.jpg"), Contents_Of(File("a.jpg")).substr(0, 50));
    const QStringList bad{Path("pipe.jpg"),   Path("loop_a.jpg"),   QStringLiteral("/dev/null"),
                          Path("device.jpg"), Path("dangling.jpg"), Path("folder.jpg"),
                          Path("text.jpg"),   Path("cut.jpg")};
    platform.dialogs.answers = {Message_Answer::Yes};
    Pick_List(QStringList{good[0]} + bad.mid(0, 4) + QStringList{good[1]} + bad.mid(4) + QStringList{good[2]});
    ASSERT_EQ(3, form.State().pictures.Count());
    for (int i = 0; i < 3; ++i) EXPECT_EQ(good[i], form.State().pictures.Item(i + 1).Full_Name());
    EXPECT_EQ(3, form.State().pictures.Item(3).Picture_Key);
    ASSERT_EQ(1U, platform.dialogs.lists_shown.size());
    EXPECT_EQ(bad, platform.dialogs.lists_shown[0].second);
}

TEST_F(Picking, A_File_That_May_Not_Be_Read_Goes_To_The_Failure_List)
{
    const QStringList paths{Make("a.jpg"), Make("closed.jpg"), Make("b.jpg")};
    ASSERT_EQ(0, chmod(folder.Path().c_str(), 0755));
    for (const QString& path : paths) ASSERT_EQ(0, chmod(path.toStdString().c_str(), 0644));
    ASSERT_EQ(0, chmod(File("closed.jpg").c_str(), 0));
    const int answer = As_Ordinary_User([&] {
        platform.dialogs.answers = {Message_Answer::Yes};
        Pick_List(paths);
        const bool listed =
            platform.dialogs.lists_shown.size() == 1 && platform.dialogs.lists_shown[0].second == QStringList{paths[1]};
        return form.State().pictures.Count() == 2 && listed ? 0 : 1;
    });
    EXPECT_EQ(0, answer);
}

TEST_F(Picking, A_File_That_Vanishes_Between_Listing_And_Pick_Goes_To_The_Failure_List)
{
    QStringList paths = Make_Many(60);
    platform.events.on_call = [&](int call) {
        if (call == 1) QFile::remove(paths[57]); // far behind all that may have been read ahead
    };
    platform.dialogs.answers = {Message_Answer::Yes};
    Pick_List(paths);
    EXPECT_EQ(59, form.State().pictures.Count());
    ASSERT_EQ(1U, platform.dialogs.lists_shown.size());
    EXPECT_EQ(QStringList{paths[57]}, platform.dialogs.lists_shown[0].second);
    EXPECT_EQ("60 of 60 (100%)", view.labels.back());
}

TEST_F(Picking, Fifty_Thousand_Files_Are_Picked_And_The_Missing_Ones_Are_Told)
{
    const QString small = Make("small.jpg", 16, 12);
    QStringList paths;
    for (int i = 0; i < 50'000; ++i) paths << (i % 2 == 0 ? small : Path(QStringLiteral("gone%1.jpg").arg(i)));
    platform.dialogs.answers = {Message_Answer::Yes};
    Pick_List(paths);
    EXPECT_EQ(25'000, form.State().pictures.Count());
    EXPECT_EQ(25'000, form.State().pictures.Item(25'000).Picture_Key);
    ASSERT_EQ(1U, platform.dialogs.lists_shown.size());
    EXPECT_EQ(25'000, platform.dialogs.lists_shown[0].second.size());
    EXPECT_EQ(paths.back(), platform.dialogs.lists_shown[0].second.back());
}

TEST_F(Picking, A_Picture_That_Cannot_Be_Turned_As_The_List_Says_Is_A_Failure_Of_That_File_Alone)
{
    std::vector<File_Entry> entries(3, Entry_Of_File(Make("a.jpg")));
    entries[1].Rotate = 45;
    entries[2].Rotate = 90;
    form.Pick_Files(entries, false, false);
    ASSERT_EQ(2, form.State().pictures.Count());
    EXPECT_EQ((Pixel_Size{96, 160}), Size_Of_Bitmap(form.State().pictures.Item(2).Thumbnail_Bitmap.Get()));
    EXPECT_EQ(160, form.State().pictures.Item(2).Horz_Pixels) << "as stored";
}

TEST_F(Picking, Without_A_Date_In_The_List_Date_And_Size_Are_The_Files)
{
    const QString path = Make("a.jpg");
    const File_Entry known = Entry_Of_File(path);
    const File_Entry stale{.Path_Name = path, .File_Date = 40000, .File_Size_KB = 7};
    const File_Entry entries[] = {known, {.Path_Name = path}, stale};
    form.Pick_Files(entries, false, false);
    ASSERT_EQ(3, form.State().pictures.Count());
    EXPECT_DOUBLE_EQ(form.Return_Picture_File_Date(1), form.Return_Picture_File_Date(2));
    EXPECT_EQ(Item(1).File_Size_KB, Item(2).File_Size_KB);
    EXPECT_EQ(40000, form.Return_Picture_File_Date(3)) << "a list that knows better is believed";
    EXPECT_EQ(7, Item(3).File_Size_KB);
}

TEST_F(Picking, An_Event_During_A_Pick_Cannot_Start_Another)
{
    const QStringList paths = Make_Many(6);
    platform.events.on_call = [&](int) { Pick_List(paths); };
    Pick_List(paths);
    EXPECT_EQ(6, form.State().pictures.Count());
}

TEST_F(Picking, Afresh_Is_Refused_While_Pictures_Are_In_Use)
{
    Item(Pick_New("a.jpg")).Lock_Flags = 0x1000;
    const File_Entry entry[] = {Entry_Of_File(Path("a.jpg"))};
    form.Picking().Pick_Selected(entry, false, false);
    EXPECT_EQ("Some or all of the pictures that would be discarded are in use.\r\nUse Pick/Append Selected to add "
              "selected pictures to thumbnail.",
              Last_Message());
    EXPECT_EQ(1, form.Return_Picture_Key(Path("a.jpg"), false));
}

TEST_F(Picking, A_Missing_Key_Is_Loaded_When_Asked_For)
{
    const QString path = Make("a.jpg");
    EXPECT_EQ(0, form.Return_Picture_Key(path, false));
    EXPECT_EQ(1, form.Return_Picture_Key(path, true));
    EXPECT_EQ(0, form.Return_Picture_Key(Path("missing.jpg"), true));
}

TEST_F(Picking, Four_Turns_By_90_Leave_No_Trace_In_The_Record_Or_On_Disk)
{
    const int key = Pick_New("a.jpg");
    const std::string before = Contents_Of(File("a.jpg"));
    const auto pixels = Pixels_Of(Thumbnail(key));
    slide_show.open = true;
    form.Rotate_Picture(key, 90);
    EXPECT_EQ(90, form.Return_Picture_Rotate(key));
    EXPECT_TRUE(slide_show.modified);
    EXPECT_EQ((Pixel_Size{96, 160}), Size_Of_Bitmap(Thumbnail(key)));
    for (int i = 0; i < 3; ++i) form.Rotate_Picture(key, 90);
    EXPECT_EQ(0, form.Return_Picture_Rotate(key));
    EXPECT_EQ(pixels, Pixels_Of(Thumbnail(key)));
    EXPECT_EQ(before, Contents_Of(File("a.jpg")));
}

TEST_F(Picking, The_Turned_Thumbnail_Of_A_Flipped_Picture_Is_What_A_Reload_Would_Show)
{
    const int key = Pick(Make("a.tif", 60, 40, 2));
    Item(key).Flip = Flip_Left_To_Right;
    form.Pictures().Reload_Picture_Thumbnail(1, false);
    form.Rotate_Picture(key, 90);
    const auto turned = Pixels_Of(Thumbnail(key));
    form.Pictures().Reload_Picture_Thumbnail(1, false);
    EXPECT_EQ(turned, Pixels_Of(Thumbnail(key)));
}

TEST_F(Picking, After_A_Change_Of_Size_The_Divisor_Is_Found_Anew)
{
    const int key = Pick(Make("a.jpg", 1200, 900));
    ASSERT_EQ(8, Item(key).Scale_Divisor);
    Make("a.jpg", 100, 80);
    form.Pictures().Reload_Picture_Thumbnail(1, true);
    EXPECT_EQ(1, Item(key).Scale_Divisor);
    EXPECT_EQ((Pixel_Size{100, 80}), Size_Of_Bitmap(Item(key).Thumbnail_Bitmap.Get()));
    form.Pictures().Reload_Picture_Thumbnail(1, false);
    EXPECT_EQ((Pixel_Size{100, 80}), Size_Of_Bitmap(Item(key).Thumbnail_Bitmap.Get()));
}

TEST_F(Picking, The_Thumbnail_Itself_Is_Given_Out_Unless_It_Must_Be_Turned)
{
    const int key = Pick_New("a.jpg");
    bool copy = true;
    EXPECT_EQ(Item(key).Thumbnail_Bitmap.Get(), form.Return_Thumbnail_Picture(key, 0, copy));
    EXPECT_FALSE(copy);
    EXPECT_EQ(Item(key).Thumbnail_Bitmap.Get(), form.Return_Thumbnail_Picture_Adjusted(key, 0, copy));
    EXPECT_FALSE(copy);
    const Owned_Bitmap turned(form.Return_Thumbnail_Picture(key, 90, copy));
    EXPECT_TRUE(copy);
    EXPECT_TRUE(turned);
}

TEST_F(Picking, A_Picture_Without_Items_Borrows_The_Prepared_Script)
{
    const int key = Pick_New("a.jpg");
    const Owned_Bitmap plain(form.Return_Picture_Adjusted(key, 0, 1));
    form.State().Current_Prepared_Script = 3;
    const Owned_Bitmap adjusted(form.Return_Picture_Adjusted(key, 0, 1));
    EXPECT_NE(Pixels_Of(plain.Get()), Pixels_Of(adjusted.Get()));
}

TEST_F(Picking, A_Grey_Picture_Stays_Grey_Through_Its_Whole_Life)
{
    const auto bytes = Jpeg_File(To_Grey(Meadow(160, 96, 1)));
    Put_File(File("grey.jpg"), std::string(bytes.begin(), bytes.end()));
    const int key = Pick(Path("grey.jpg"));
    const int color = Pick_New("color.jpg");
    EXPECT_EQ(8, form.Return_Picture_Pixel_Depth(key));
    EXPECT_EQ(24, form.Return_Picture_Pixel_Depth(color));
    EXPECT_EQ(std::vector<int>{2}, Pictures_For_Function(form.State(), {.grey_allowed = false}));
    EXPECT_EQ((std::vector<int>{1, 2}), Pictures_For_Function(form.State(), {}));
    form.Rotate_Picture(key, 90);
    ASSERT_TRUE(form.Saving().Save_Rotation_And_Flips(key)) << Last_Message().toStdString();
    EXPECT_EQ(8, form.Return_Picture_Pixel_Depth(key));
    Bitmap_Facts facts;
    ASSERT_TRUE(Get_Bitmap_Facts_CPP(Owned_Bitmap(form.Return_Picture(key, 0, 1)).Get(), &facts));
    EXPECT_EQ(8, facts.bits_per_pixel);
}

TEST_F(Picking, At_The_End_No_Bitmap_Is_Left_Over)
{
    const int before = Bitmap_Count();
    Pick_List(Make_Many(7));
    form.Pictures().Set_Current_Picture(2);
    EXPECT_EQ(before + 8, Bitmap_Count());
    form.Discard_All();
    EXPECT_EQ(before, Bitmap_Count());
}

} // namespace
