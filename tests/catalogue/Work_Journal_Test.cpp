#include "catalogue/Catalogue_Commands.h"
#include "catalogue/Kept_Work_Offer.h"
#include "catalogue/Work_Journal.h"
#include "tests/catalogue/Picture_Fixture.h"
#include "tests/support/Failing_Calls.h"

#include <QtCore/QFile>
#include <cerrno>
#include <filesystem>

namespace {

class Keeping_Work : public Picture_Test {
protected:
    ~Keeping_Work() override { Failing_Calls::Refuse_Nothing(); }
    std::vector<std::string> Journals() const
    {
        std::vector<std::string> paths;
        if (std::filesystem::exists(state.Path()))
            for (const auto& entry : std::filesystem::directory_iterator(state.Path()))
                paths.push_back(entry.path().string());
        return paths;
    }
    Kept_Work Kept() const
    {
        return Journals().empty() ? Kept_Work{}
                                  : Read_Journal_Text(QByteArray::fromStdString(Contents_Of(Journals()[0])));
    }
    /// As if the program had been killed: the journal is left and nobody holds it.
    void Die() { journal.reset(); }
    /// The next start.
    void Start_Again(Message_Answer answer)
    {
        Die();
        next.platform.dialogs.answers = {answer};
        next.journal.emplace(next.form.State(), Folder());
        Offer_Kept_Work(next.form, *next.journal, Folder());
    }
    QString Folder() const { return QString::fromStdString(state.Path()); }
    /// A rotation, a flip, a slide time and a description.
    void Change(int key, int flip)
    {
        form.Rotate_Picture(key, 90);
        Item(key).Flip = flip;
        Item(key).Interval_In_Seconds = 2.5F;
        Item(key).Description = "sea";
        Item(key).Description_Modified = true;
    }

    struct Next_Run {
        Scripted_Platform platform;
        Recording_View view;
        Halvine_Form form{platform.platform, &view};
        std::optional<Work_Journal> journal;
        const Picture_Item& Item(int index) { return form.State().pictures.Item(index); }
    };
    Test_Folder state;
    std::optional<Work_Journal> journal{std::in_place, form.State(), Folder()};
    Next_Run next;
};

TEST_F(Keeping_Work, Nothing_Is_Written_Before_A_Picture_Is_Picked)
{
    journal->Start();
    journal->Write_Changes();
    EXPECT_TRUE(Journals().empty());
}

TEST_F(Keeping_Work, Looks_At_Least_Once_A_Second)
{
    journal->Start();
    ASSERT_EQ(1U, platform.timers.size());
    EXPECT_TRUE(platform.timers[0]->Is_On());
    EXPECT_LE(platform.timers[0]->interval, 1000);
    Pick_New("a.jpg");
    platform.timers[0]->Fire();
    EXPECT_EQ(1U, Kept().pictures.size());
}

TEST_F(Keeping_Work, Holds_The_Picks_And_Every_Kind_Of_Change)
{
    const int key = Pick_New("a.jpg");
    Pick_New("b.jpg");
    Change(key, Flip_Left_To_Right);
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    EXPECT_TRUE(journal->Write_Changes());
    const Kept_Work work = Kept();
    ASSERT_EQ(2U, work.pictures.size());
    EXPECT_EQ(Path("a.jpg"), work.pictures[0].file);
    EXPECT_EQ(90, work.pictures[0].rotate);
    EXPECT_EQ(Flip_Left_To_Right, work.pictures[0].flip);
    EXPECT_EQ(2.5F, work.pictures[0].seconds);
    EXPECT_EQ("sea", work.pictures[0].description);
    EXPECT_EQ(form.Recall_Picture_All_Script_Items(key), work.pictures[0].script);
    EXPECT_FALSE(work.pictures[1].Has_Changes());
}

TEST_F(Keeping_Work, Sees_Each_Kind_Of_Change_By_Itself)
{
    const int key = Pick_New("a.jpg");
    const std::pair<const char*, std::function<void(Picture_Item&)>> kinds[] = {
        {"rotation", [](Picture_Item& item) { item.Rotate = 90; }},
        {"flip", [](Picture_Item& item) { item.Flip = 1; }},
        {"slide time", [](Picture_Item& item) { item.Interval_In_Seconds = 1; }},
        {"script", [](Picture_Item& item) { item.Script_Modified = true; }},
        {"its text", [](Picture_Item& item) { Parse_Script_Items("Crop(1,2,3,4)", item.Script_Items); }},
        {"script saved", [](Picture_Item& item) { item.Script_Modified = false; }},
        {"description", [](Picture_Item& item) { item.Description_Modified = true; }},
        {"its words", [](Picture_Item& item) { item.Description = "sea"; }},
        {"description saved", [](Picture_Item& item) { item.Description_Modified = false; }},
        {"inode", [](Picture_Item& item) { ++item.Identity.inode; }},
        {"size", [](Picture_Item& item) { ++item.Identity.size; }},
        {"time", [](Picture_Item& item) { ++item.Identity.modified_nanoseconds; }},
        {"folder", [](Picture_Item& item) { item.Path.chop(1), item.Path += '!'; }},
        {"name", [](Picture_Item& item) { item.File_Name = "b.jpg"; }},
        {"path cut elsewhere", [](Picture_Item& item) { item.Path += item.File_Name, item.File_Name = "/c.jpg"; }},
    };
    journal->Write_Changes();
    for (const auto& [name, change] : kinds) {
        const auto before = Contents_Of(Journals()[0]).size();
        change(Item(key));
        journal->Write_Changes();
        EXPECT_GT(Contents_Of(Journals()[0]).size(), before) << name;
    }
}

TEST_F(Keeping_Work, Is_Flushed_To_The_Disk)
{
    Pick_New("a.jpg");
    journal->Write_Changes();
    form.Rotate_Picture(1, 90);
    Failing_Calls::Refuse_Once("fdatasync", EIO);
    EXPECT_FALSE(journal->Write_Changes());
}

TEST_F(Keeping_Work, Only_What_Changed_Is_Added)
{
    Pick_New("a.jpg");
    Pick_New("b.jpg");
    journal->Write_Changes();
    const std::string before = Contents_Of(Journals()[0]);
    journal->Write_Changes();
    EXPECT_EQ(before, Contents_Of(Journals()[0]));
    form.Rotate_Picture(2, 90);
    journal->Write_Changes();
    const std::string added = Contents_Of(Journals()[0]).substr(before.size());
    EXPECT_EQ(1, std::count(added.begin(), added.end(), '\n'));
}

/// Long commands, during which no timer fires.
class Keeping_Work_In_Commands : public Keeping_Work {
protected:
    Keeping_Work_In_Commands() { form.Set_Work_Keeper(&*journal); }
    ~Keeping_Work_In_Commands() override { form.Set_Work_Keeper(nullptr); }
    void Pass(int milliseconds) { platform.clock.now = platform.clock.now.addMSecs(milliseconds); }
    int Turned() const
    {
        const Kept_Work work = Kept();
        return int(std::count_if(work.pictures.begin(), work.pictures.end(),
                                 [](const Kept_Picture& one) { return one.rotate != 0; }));
    }
    /// Looks at what stands on the disk in the middle of a step that cannot be interrupted.
    struct Looking_View : Recording_View {
        void Show_Current_Picture() override
        {
            if (look) look();
        }
        std::function<void()> look;
    };
    Window_Host host;
    Catalogue_Commands commands{form, host};
};

TEST_F(Keeping_Work_In_Commands, Between_Two_Pictures_Twice_A_Second)
{
    std::vector<int> keys;
    for (int i = 0; i < 4; ++i) keys.push_back(Pick_New(QString("%1.jpg").arg(i)));
    journal->Write_Changes();
    form.Rotate_Picture(keys[0], 90);
    EXPECT_EQ(0, Turned()) << "it was written a moment ago";
    Pass(400);
    form.Rotate_Picture(keys[1], 90);
    EXPECT_EQ(0, Turned());
    Pass(100);
    form.Rotate_Picture(keys[2], 90);
    EXPECT_EQ(3, Turned());
    Pass(-3'600'000);
    form.Rotate_Picture(keys[3], 90);
    EXPECT_EQ(4, Turned()) << "a clock that was set back does not hold it up";
}

TEST_F(Keeping_Work_In_Commands, Scripts_That_Are_Set_One_After_Another)
{
    const int first = Pick_New("a.jpg");
    journal->Write_Changes();
    Pass(500);
    form.Set_Picture_All_Script_Items(first, "Crop(1,2,3,4)");
    EXPECT_TRUE(Kept().pictures.at(0).script);
}

TEST_F(Keeping_Work_In_Commands, A_Deletion_Of_Many_Files)
{
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) form.Set_Picture_Key_Selected(Pick_New(name), true);
    journal->Write_Changes();
    std::vector<std::size_t> listed;
    platform.shell.on_trash = [&] {
        listed.push_back(Kept().pictures.size());
        Pass(500);
    };
    platform.dialogs.responses = {Response_Code::Yes};
    commands.Run({Menu::File, 204});
    EXPECT_EQ((std::vector<std::size_t>{3, 2, 1}), listed);
}

TEST_F(Keeping_Work_In_Commands, What_Was_Done_Before_A_Command_Is_Safe_When_It_Begins)
{
    const int key = Pick_New("a.jpg");
    form.Set_Picture_Key_Selected(key, true);
    journal->Write_Changes();
    Item(key).Rotate = 90;
    std::optional<int> turned;
    commands.Run_Unlisted([&] { turned = Turned(); });
    EXPECT_EQ(1, turned);
}

TEST_F(Keeping_Work_In_Commands, A_Turn_Or_Script_Is_Safe_Before_The_Picture_Is_Shown_With_It)
{
    Looking_View looking;
    form.Set_View(&looking);
    const int key = Pick_New("a.jpg");
    form.Pictures().Set_Current_Picture(1);
    journal->Write_Changes();
    std::optional<Kept_Picture> kept;
    looking.look = [&] { kept = Kept().pictures.at(0); };
    form.Rotate_Picture(key, 90);
    EXPECT_EQ(90, kept->rotate);
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    EXPECT_TRUE(kept->script);
    form.Set_Picture_Key_Selected(key, true);
    commands.Run({Menu::Script, 101}); // erases
    EXPECT_EQ("", kept->script);
    looking.look = nullptr;
    form.Set_View(&view);
}

TEST_F(Keeping_Work_In_Commands, A_Full_Disk_Is_Told_Afterwards)
{
    const int key = Pick_New("a.jpg");
    journal->Write_Changes();
    Pass(500);
    Failing_Calls::Refuse_Once("write", ENOSPC);
    form.Rotate_Picture(key, 90);
    EXPECT_TRUE(platform.dialogs.asked.empty()) << "no question in the middle of a command";
    Failing_Calls::Refuse_Once("write", ENOSPC);
    EXPECT_FALSE(journal->Write_Changes());
    EXPECT_EQ(1U, platform.dialogs.asked.size());
    EXPECT_TRUE(journal->Write_Changes());
    EXPECT_EQ(1, Turned());
}

TEST_F(Keeping_Work, What_Was_Saved_Or_Discarded_Is_Kept_No_Longer)
{
    const int key = Pick_New("a.jpg");
    const int other = Pick_New("b.jpg");
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    journal->Write_Changes();
    form.Saving().Save_Texts(key);
    form.Picking().Remove_Pictures(std::array{form.State().pictures.Index_From_Key(other)});
    journal->Write_Changes();
    ASSERT_EQ(1U, Kept().pictures.size());
    EXPECT_FALSE(Kept().pictures[0].Has_Changes());
}

TEST_F(Keeping_Work, A_Clean_End_Leaves_Nothing)
{
    Pick_New("a.jpg");
    journal->Write_Changes();
    journal->Remove();
    EXPECT_TRUE(Journals().empty());
}

TEST_F(Keeping_Work, The_Journal_Stays_Small_However_Much_Is_Changed)
{
    const int key = Pick_New("a.jpg");
    std::int64_t largest = 0;
    for (int i = 0; i < 400; ++i) {
        Item(key).Description = QString::number(i) + QString(1000, 'x');
        Item(key).Description_Modified = true;
        journal->Write_Changes();
        largest = std::max<std::int64_t>(largest, std::int64_t(std::filesystem::file_size(Journals()[0])));
    }
    EXPECT_LT(largest, 300 << 10);
    EXPECT_GT(largest, 200 << 10) << "too few changes to show anything";
    ASSERT_EQ(1U, Kept().pictures.size());
    EXPECT_EQ(Item(key).Description, Kept().pictures[0].description);
}

TEST_F(Keeping_Work, After_A_Full_Disk_The_Next_Look_Writes_Everything)
{
    Pick_New("a.jpg");
    journal->Write_Changes();
    form.Rotate_Picture(1, 90);
    Failing_Calls::Refuse_Once("write", ENOSPC);
    EXPECT_FALSE(journal->Write_Changes());
    EXPECT_TRUE(Last_Message().startsWith("Work that is not saved can't be kept safe from a crash.\r\n"));
    EXPECT_TRUE(Last_Message().endsWith("No space left on device"));
    EXPECT_EQ(0, Kept().pictures.at(0).rotate);
    Failing_Calls::Refuse_Once("write", ENOSPC);
    EXPECT_FALSE(journal->Write_Changes());
    EXPECT_EQ(1U, platform.dialogs.asked.size()) << "told once";
    EXPECT_TRUE(journal->Write_Changes());
    EXPECT_EQ(90, Kept().pictures.at(0).rotate);
}

TEST_F(Keeping_Work, The_Next_Start_Offers_It_And_Gives_It_Back)
{
    const int key = Pick(Make("a.jpg", 160, 96, 1, {}, "old"));
    Pick_New("b.jpg");
    Change(key, Flip_Top_To_Bottom);
    form.Set_Picture_All_Script_Items(2, "Crop(1,2,3,4)");
    journal->Write_Changes();
    Start_Again(Message_Answer::Yes);
    ASSERT_EQ(1U, next.platform.dialogs.asked.size());
    const Message& question = next.platform.dialogs.asked[0];
    EXPECT_EQ("Halvine was not closed properly. The list of 2 pictures was kept, among them:"
              "\r\n1 with a script not saved\r\n1 with a description not saved\r\n1 with a rotation or flip not saved"
              "\r\n1 with a slide time not saved\r\n\r\nDo you wish to restore it?\r\n"
              "'No' discards it, 'Cancel' asks again at the next start.",
              question.text);
    EXPECT_EQ("Halvine - Restore", question.title);
    EXPECT_EQ(Message_Answer::Yes, question.standard);
    ASSERT_EQ(2, next.form.State().pictures.Count());
    EXPECT_EQ(90, next.Item(1).Rotate);
    EXPECT_EQ(Flip_Top_To_Bottom, next.Item(1).Flip);
    EXPECT_EQ(2.5F, next.Item(1).Interval_In_Seconds);
    EXPECT_EQ("sea", next.Item(1).Description);
    EXPECT_TRUE(next.Item(1).Description_Modified);
    EXPECT_FALSE(next.Item(1).Script_Modified);
    EXPECT_TRUE(next.Item(2).Script_Modified);
    EXPECT_EQ(form.Recall_Picture_All_Script_Items(2), next.form.Recall_Picture_All_Script_Items(2));
    EXPECT_EQ(1U, Journals().size()) << "the new run's own";
    EXPECT_EQ(2U, Kept().pictures.size());
}

TEST_F(Keeping_Work, No_Discards_It_And_Cancel_Asks_Again)
{
    Pick_New("a.jpg");
    journal->Write_Changes();
    Start_Again(Message_Answer::Cancel);
    EXPECT_EQ(0, next.form.State().pictures.Count());
    EXPECT_EQ(1U, Journals().size());
    Start_Again(Message_Answer::No);
    EXPECT_TRUE(Journals().empty());
    EXPECT_EQ(0, next.form.State().pictures.Count());
}

TEST_F(Keeping_Work, A_Running_Programs_Journal_Is_Not_Offered)
{
    Pick_New("a.jpg");
    journal->Write_Changes();
    next.journal.emplace(next.form.State(), Folder());
    Offer_Kept_Work(next.form, *next.journal, Folder());
    EXPECT_TRUE(next.platform.dialogs.asked.empty());
    EXPECT_EQ(1U, Journals().size());
}

TEST_F(Keeping_Work, A_Picture_That_Was_Turned_On_Disk_Meanwhile_Is_Not_Turned_Again)
{
    const int key = Pick_New("a.jpg");
    form.Rotate_Picture(key, 90);
    form.Set_Picture_All_Script_Items(key, "Crop(1,2,3,4)");
    journal->Write_Changes();
    form.Saving().Save_Rotation_And_Flips(key); // and then the kill, before the next look
    Start_Again(Message_Answer::Yes);
    EXPECT_EQ(0, next.Item(1).Rotate);
    EXPECT_TRUE(next.Item(1).Script_Modified);
    ASSERT_EQ(1U, next.platform.dialogs.lists_shown.size());
    EXPECT_EQ(QStringList{Path("a.jpg")}, next.platform.dialogs.lists_shown[0].second);
}

TEST_F(Keeping_Work, A_Picture_That_Is_Gone_Does_Not_Mix_Up_The_Others)
{
    for (const char* name : {"a.jpg", "b.jpg", "c.jpg"}) form.Rotate_Picture(Pick_New(name), name[0] == 'c' ? 180 : 90);
    journal->Write_Changes();
    QFile::remove(Path("b.jpg"));
    Start_Again(Message_Answer::Yes);
    ASSERT_EQ(2, next.form.State().pictures.Count());
    EXPECT_EQ(90, next.Item(1).Rotate);
    EXPECT_EQ("c.jpg", next.Item(2).File_Name);
    EXPECT_EQ(180, next.Item(2).Rotate);
}

TEST_F(Keeping_Work, A_Damaged_Journal_Gives_Back_What_Stands_Before_The_Fault)
{
    Pick_New("a.jpg");
    journal->Write_Changes();
    form.Rotate_Picture(1, 90);
    journal->Write_Changes();
    Die();
    const std::string path = Journals()[0];
    Put_File(path, Contents_Of(path).substr(0, Contents_Of(path).size() - 5));
    Start_Again(Message_Answer::Yes);
    ASSERT_EQ(1, next.form.State().pictures.Count());
    EXPECT_EQ(0, next.Item(1).Rotate);
}

TEST_F(Keeping_Work, What_Is_No_Journal_Of_Ours_Is_Left_Alone_And_An_Empty_One_Goes)
{
    Put_File(state.File("work-later.journal"), "hvJournal 2\nwho knows\n");
    Put_File(state.File("work-empty.journal"), "");
    Start_Again(Message_Answer::Yes);
    EXPECT_TRUE(next.platform.dialogs.asked.empty());
    EXPECT_EQ(std::vector{state.File("work-later.journal")}, Journals());
}

TEST_F(Keeping_Work, The_Old_Journal_Stays_When_The_New_One_Cannot_Be_Written)
{
    Pick_New("a.jpg");
    journal->Write_Changes();
    Die();
    Failing_Calls::Refuse_Always("mkostemps", ENOSPC);
    Start_Again(Message_Answer::Yes);
    EXPECT_EQ(1U, Journals().size());
}

} // namespace
