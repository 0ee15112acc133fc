#include "frame/ui/Qt_Dialogs.h"

#include "frame/ports/Scripted_Platform.h"
#include "frame/ui/File_List_Dialog.h"
#include "frame/ui/Message_Response_Form.h"
#include "frame/ui/Progress_Form.h"
#include "frame/ui/bkcExplorer_Form.h"
#include "tests/support/Accessible_Names.h"
#include "tests/support/Modal_Windows.h"
#include "tests/support/Test_Folder.h"

#include <gtest/gtest.h>

namespace {

struct Message_Case {
    const char* name;
    Message_Buttons buttons;
    Message_Answer standard;
    Qt::Key key;
    Message_Answer expected;
};

class Messages : public testing::TestWithParam<Message_Case> {};

using enum Message_Answer;
INSTANTIATE_TEST_SUITE_P(
    All, Messages,
    testing::Values(Message_Case{"enter_answers_the_standard", Message_Buttons::Yes_No_Cancel, No, Qt::Key_Return, No},
                    Message_Case{"another_standard", Message_Buttons::Yes_No, Yes, Qt::Key_Return, Yes},
                    Message_Case{"escape_is_cancel", Message_Buttons::Yes_No_Cancel, No, Qt::Key_Escape, Cancel},
                    Message_Case{"escape_is_no_without_cancel", Message_Buttons::Yes_No, Yes, Qt::Key_Escape, No},
                    Message_Case{"escape_is_ok_where_nothing_is_asked", Message_Buttons::Ok, Ok, Qt::Key_Escape, Ok},
                    Message_Case{"ok_and_cancel", Message_Buttons::Ok_Cancel, Ok, Qt::Key_Escape, Cancel},
                    Message_Case{"retry_and_cancel", Message_Buttons::Retry_Cancel, Retry, Qt::Key_Return, Retry},
                    Message_Case{"escape_aborts", Message_Buttons::Abort_Retry_Ignore, Ignore, Qt::Key_Escape, Abort},
                    Message_Case{"ignore", Message_Buttons::Abort_Retry_Ignore, Ignore, Qt::Key_Return, Ignore}),
    [](const auto& row) { return row.param.name; });

TEST_P(Messages, Are_Answered_By_Key)
{
    Press_When_Asked(GetParam().key);
    const Message message{.text = "Sure?", .buttons = GetParam().buttons, .standard = GetParam().standard};
    EXPECT_EQ(GetParam().expected, Qt_Dialogs().Ask(message));
}

TEST(Qt_Dialogs, Markup_In_A_Message_Is_Shown_As_It_Stands)
{
    When_Asked([](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        ASSERT_NE(nullptr, box);
        EXPECT_EQ(Qt::PlainText, box->textFormat());
        EXPECT_EQ("Halvine", box->windowTitle());
        box->close();
    });
    Qt_Dialogs().Refuse("<b>name</b>.jpg");
}

TEST(Qt_Dialogs, The_Pointer_Is_Ordinary_While_Somebody_Is_Asked)
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    When_Asked([](QWidget* modal) {
        EXPECT_EQ(Qt::ArrowCursor, QGuiApplication::overrideCursor()->shape());
        modal->close();
    });
    Qt_Dialogs().Refuse("x");
    EXPECT_EQ(Qt::WaitCursor, QGuiApplication::overrideCursor()->shape());
    QGuiApplication::restoreOverrideCursor();
}

TEST(Qt_Dialogs, An_Input_Gives_What_Was_Typed)
{
    When_Asked([](QWidget* modal) {
        auto* edit = modal->findChild<QLineEdit*>();
        EXPECT_EQ("before", edit->text());
        edit->clear();
        QTest::keyClicks(edit, "after");
        QTest::keyClick(edit, Qt::Key_Return);
    });
    EXPECT_EQ("after", Qt_Dialogs().Input({.prompt = "Name:", .text = "before"}));
}

TEST(Qt_Dialogs, A_Cancelled_Input_Gives_Nothing_And_An_Empty_One_An_Empty_Text)
{
    Press_When_Asked(Qt::Key_Escape);
    EXPECT_EQ(std::nullopt, Qt_Dialogs().Input({.prompt = "Name:", .text = "before"}));
    Press_When_Asked(Qt::Key_Return);
    EXPECT_EQ(QString(), Qt_Dialogs().Input({.prompt = "Name:"}));
}

struct Response_Case {
    const char* button;
    Response_Code expected;
};

TEST(Message_Response, Each_Button_Has_Its_Code)
{
    const Response_Case cases[] = {{"Yes", Response_Code::Yes},
                                   {"Yes To All", Response_Code::Yes_To_All},
                                   {"No", Response_Code::No},
                                   {"Cancel", Response_Code::Cancel}};
    for (const Response_Case& row : cases) {
        Click_When_Asked(row.button);
        EXPECT_EQ(row.expected, Qt_Dialogs().Yes_Yes_To_All_No_Cancel_Dialog("Halvine - Copy File Overwrite", "Sure?"));
    }
}

TEST(Message_Response, A_Close_By_The_System_Is_Cancel)
{
    When_Asked([](QWidget* modal) { modal->close(); });
    EXPECT_EQ(Response_Code::Cancel, Qt_Dialogs().Yes_Yes_To_All_No_Cancel_Dialog("c", "p"));
    When_Asked([](QWidget* modal) { modal->close(); });
    EXPECT_EQ(Response_Code::Cancel, Qt_Dialogs().Commitment_Dialog("c", "p"));
}

TEST(Message_Response, Enter_Answers_What_Loses_Nothing)
{
    Press_When_Asked(Qt::Key_Return);
    EXPECT_EQ(Response_Code::No, Qt_Dialogs().Yes_Yes_To_All_No_Cancel_Dialog("c", "p"));
    Press_When_Asked(Qt::Key_Return);
    EXPECT_EQ(Response_Code::Cancel, Qt_Dialogs().Delete_File_List_Cancel_Dialog("c", "p"));
}

TEST(Message_Response, An_Empty_Caption_Means_The_Program)
{
    When_Asked([](QWidget* modal) {
        EXPECT_EQ("Halvine", modal->windowTitle());
        modal->close();
    });
    Qt_Dialogs().Yes_Yes_To_All_No_Cancel_Dialog(QString(), "p");
}

TEST(Message_Response, Remembers_Its_Place)
{
    Scripted_Platform scripted;
    Qt_Dialogs dialogs;
    dialogs.Set_Platform(scripted.platform);
    Click_When_Asked("Yes");
    dialogs.Yes_Yes_To_All_No_Cancel_Dialog("c", "p");
    EXPECT_TRUE(scripted.settings.user["Brennick\\Halvine"].contains("Halvine-Message"));
}

TEST(File_List, Is_Read_Only_And_Tells_Ok_From_Cancel)
{
    Click_When_Asked("OK");
    EXPECT_TRUE(Qt_Dialogs().Confirm_File_List("Halvine recycle files", {"a.jpg", "b.jpg"}));
    When_Asked([](QWidget* modal) {
        auto* grid = modal->findChild<bkcGrid*>();
        EXPECT_EQ(2, grid->Content().Rows());
        EXPECT_EQ("b.jpg", grid->Content().CellText(1, 2));
        EXPECT_FALSE(grid->EditCellStart(1, 1));
        modal->close();
    });
    EXPECT_FALSE(Qt_Dialogs().Confirm_File_List("Halvine recycle files", {"a.jpg", "b.jpg"}));
}

TEST(File_List, A_Hundred_Thousand_Names_Are_No_Trouble)
{
    QStringList names;
    for (int i = 0; i < 100'000; ++i) names << QStringLiteral("IMG_%1.jpg").arg(i);
    When_Asked([](QWidget* modal) {
        EXPECT_EQ("Halvine read failure for", modal->windowTitle());
        EXPECT_EQ("IMG_99999.jpg", modal->findChild<bkcGrid*>()->Content().CellText(1, 100'000));
        EXPECT_EQ(nullptr, modal->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel));
        modal->close();
    });
    Qt_Dialogs().Show_File_List("Halvine read failure for", names);
}

TEST(Picker, Gives_The_Whole_Path_Of_What_Was_Named)
{
    const Test_Folder folder;
    Put_File(folder.File("sea.jpg"), "x");
    const QString path = QString::fromStdString(folder.Path());
    Click_When_Asked("OK"); // whether it may be written over is asked by who saves
    EXPECT_EQ(QStringList{path + "/sea.jpg:80"},
              Qt_Dialogs().Pick({.caption = "Halvine - Save As", .folder = path, .name = "sea.jpg:80"}));
    Click_When_Asked("OK");
    EXPECT_EQ(QStringList{path}, Qt_Dialogs().Pick({.folder = path, .kind = Picker_Question::Kind::Folder}));
}

TEST(Picker, A_Cancel_Gives_Nothing)
{
    When_Asked([](QWidget* modal) { modal->close(); });
    EXPECT_TRUE(Qt_Dialogs().Pick({.caption = "c", .kind = Picker_Question::Kind::Folder}).isEmpty());
}

TEST(Picker, An_Open_One_Hears_Of_A_New_Folder)
{
    const Test_Folder folder;
    const QString path = QString::fromStdString(folder.Path());
    Qt_Dialogs dialogs;
    dialogs.Explorer_Tree_Refresh(path, true); // nobody is asked: nothing to do
    When_Asked([&](QWidget* modal) {
        auto& tree = *modal->findChild<BKC_DirTree*>();
        const auto rows = [&] { return tree.model()->rowCount(tree.currentIndex()); };
        tree.expand(tree.currentIndex());
        EXPECT_EQ(0, rows());
        QDir(path).mkdir("new");
        dialogs.Explorer_Tree_Refresh(path + "/", true);
        EXPECT_EQ(1, rows());
        modal->close();
    });
    dialogs.Pick({.folder = path, .kind = Picker_Question::Kind::Folder});
}

QDialog* Progress_Dialog()
{
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->windowTitle() == "Progress") return qobject_cast<QDialog*>(window);
    return nullptr;
}

TEST(Progress, A_Short_Operation_Shows_No_Window)
{
    Progress_Form progress(nullptr, "Progress", "Saving", nullptr);
    progress.Show("a.jpg", 1, 2);
    EXPECT_FALSE(progress.Stop_Requested());
    EXPECT_EQ(nullptr, Progress_Dialog());
}

TEST(Progress, A_Long_One_Does_And_Its_Size_Stays)
{
    Progress_Form progress(nullptr, "Progress", "Saving", nullptr);
    progress.Show("a.jpg", 1, 3);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !progress.Stop_Requested() && Progress_Dialog() != nullptr; }));
    const QSize before = Progress_Dialog()->size();
    progress.Show(QString(500, u'w') + "\n" + QString(500, u'm'), 2, 3);
    EXPECT_FALSE(progress.Stop_Requested());
    EXPECT_EQ(before, Progress_Dialog()->size());
    EXPECT_FALSE(Progress_Dialog()->isModal());
}

TEST(Progress, Stop_Escape_And_Close_All_Stop)
{
    const std::function<void(QDialog*)> ways[] = {
        [](QDialog* dialog) { QTest::mouseClick(dialog->findChild<QPushButton*>(), Qt::LeftButton); },
        [](QDialog* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); }, [](QDialog* dialog) { dialog->close(); }};
    for (const auto& way : ways) {
        Progress_Form progress(nullptr, "Progress", "Saving", nullptr);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !progress.Stop_Requested() && Progress_Dialog() != nullptr; }));
        way(Progress_Dialog());
        EXPECT_TRUE(progress.Stop_Requested());
    }
}

TEST(Progress, Remembers_Its_Place)
{
    Scripted_Platform scripted;
    QPoint corner;
    {
        Progress_Form progress(&scripted.platform, "Progress", "Saving", nullptr);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !progress.Stop_Requested() && Progress_Dialog() != nullptr; }));
        Progress_Dialog()->move(33, 44);
        corner = Progress_Dialog()->geometry().topLeft() * 15; // twips
    }
    const QString place = scripted.settings.user["Brennick\\Halvine"]["Halvine-Message"];
    EXPECT_TRUE(place.startsWith(QStringLiteral("WOR:%1:%2,").arg(corner.x()).arg(corner.y()))) << place.toStdString();
}

TEST(Progress, Outlives_Its_Owner)
{
    auto owner = std::make_unique<QWidget>();
    Progress_Form progress(nullptr, "Progress", "Saving", owner.get());
    owner.reset();
    progress.Show("a.jpg", 1, 2);
    EXPECT_TRUE(progress.Stop_Requested());
}

TEST(Names_Of_Widgets, Are_There_In_Every_Dialog)
{
    const auto nameless = [](QWidget& dialog) { return Widgets_Without_A_Name(dialog).join('\n').toStdString(); };
    Message_Response_Form question(nullptr, {}, "Sure?", {{"&Yes", Response_Code::Yes}}, Response_Code::Yes, nullptr);
    EXPECT_EQ("", nameless(question));
    File_List_Dialog list(nullptr, "Files that cannot be read", {"/a.jpg"}, true, nullptr);
    EXPECT_EQ("", nameless(list));
    QWidget owner;
    Progress_Form progress(nullptr, "Saving", "one", &owner);
    EXPECT_EQ("", nameless(*owner.findChild<QDialog*>()));
    std::string shown = "nothing was shown";
    When_Asked([&](QWidget* modal) {
        shown = nameless(*modal);
        modal->close();
    });
    Qt_Dialogs().Show_Text("Camera", "f/8");
    EXPECT_EQ("", shown);
}

} // namespace
