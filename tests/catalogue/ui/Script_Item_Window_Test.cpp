#include "catalogue/ui/Script_Item_Dialog.h"
#include "tests/catalogue/ui/Window_Fixture.h"

namespace {

class Script_Item_Window : public Window_Test {
protected:
    void SetUp() override
    {
        Open_And_Pick(2);
        for (const int index : {1, 2}) {
            keys.push_back(form.State().pictures.Item(index).Picture_Key);
            form.Set_Picture_All_Script_Items(keys.back(), "Crop(1,2,30,40);Blur(1,50,7)");
        }
        model = std::make_unique<Script_Item_Deletion>(form.State(), keys);
        dialog = std::make_unique<Script_Item_Dialog>(*model, &entry.scripted.platform, window.get());
        dialog->show();
    }
    Grid_Model& Rows() { return dialog->Utility_bkcGrid().Content(); }
    QPushButton* Button(const QString& caption)
    {
        for (QPushButton* button : dialog->findChildren<QPushButton*>())
            if (button->text().remove('&') == caption) return button;
        return nullptr;
    }
    QString Script(int index) { return form.Recall_Picture_All_Script_Items(keys[std::size_t(index) - 1]); }

    std::vector<int> keys;
    std::unique_ptr<Script_Item_Deletion> model;
    std::unique_ptr<Script_Item_Dialog> dialog;
};

TEST_F(Script_Item_Window, Shows_The_Items_Of_One_Picture_After_The_Other)
{
    EXPECT_EQ("Halvine - Script Items For 01.jpg (1 of 2)", dialog->windowTitle());
    EXPECT_EQ("Type", Rows().ColumnHeaderText(1));
    EXPECT_EQ("Script", Rows().ColumnHeaderText(2));
    ASSERT_EQ(2, Rows().Rows());
    EXPECT_EQ("Blur", Rows().CellText(1, 2));
    EXPECT_EQ("Blur(1,50,7)", Rows().CellText(2, 2));
    EXPECT_FALSE(Button("Previous")->isEnabled());
    Button("Next")->click();
    EXPECT_EQ("Halvine - Script Items For 02.jpg (2 of 2)", dialog->windowTitle());
    EXPECT_FALSE(Button("Next")->isEnabled());
}

TEST_F(Script_Item_Window, Deletes_What_Is_Marked_When_It_Is_Committed)
{
    EXPECT_FALSE(Button("Delete Marked")->isEnabled());
    Rows().SelectRow(2);
    Button("Mark For Deletion")->click();
    EXPECT_EQ(Cell_Struck_Out, Rows().CellAttribute(1, 2));
    EXPECT_EQ(2, form.State().pictures.Item(1).Script_Items.Count());
    Button("Unmark")->click();
    EXPECT_FALSE(Button("Delete Marked")->isEnabled());
    Rows().SelectRow(2);
    Button("Mark For Deletion")->click();
    Button("Delete Marked")->click();
    EXPECT_EQ(1, Rows().Rows());
    EXPECT_EQ("Crop(1,2,30,40)", Script(1));
    EXPECT_EQ(2, form.State().pictures.Item(2).Script_Items.Count()) << "of this picture alone";
    dialog->close();
    EXPECT_TRUE(entry.scripted.dialogs.asked.empty());
}

TEST_F(Script_Item_Window, Asks_Before_It_Closes_Over_Marks)
{
    Rows().SelectRow(1);
    Button("Mark For Deletion")->click();
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ("There have been uncommitted deletions, do you wish to abandon?",
              entry.scripted.dialogs.asked.back().text);
    entry.scripted.dialogs.answers = {Message_Answer::Yes};
    Button("Close")->click();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(2, form.State().pictures.Item(1).Script_Items.Count());
    EXPECT_TRUE(entry.scripted.settings.user["Brennick\\Halvine"].contains("Halvine-Grid"));
}

class Picture_List : public Window_Test {};

TEST_F(Picture_List, Has_All_That_Is_Known_Of_A_Picture)
{
    Open_And_Pick(1);
    window->Commands().Run({Menu::Options, 401});
    const Grid_Model& list = Part<bkcGrid>("Picture_List_bkcGrid")->Content();
    QStringList titles;
    for (int column = 1; column <= list.Columns(); ++column) titles << list.ColumnHeaderText(column);
    EXPECT_EQ("Path|Name|Type|Last Modified|Size|Horz|Vert|Bits|Speed, f/Stop, Flash|Description",
              titles.join('|').toStdString());
    const Picture_Item& item = form.State().pictures.Item(1);
    EXPECT_EQ(item.Path, list.CellText(1, 1));
    EXPECT_EQ("01.jpg", list.CellText(2, 1));
    EXPECT_EQ(QStringLiteral("%1KB").arg(item.File_Size_KB), list.CellText(5, 1));
    EXPECT_EQ("168", list.CellText(6, 1));
    EXPECT_EQ("120", list.CellText(7, 1));
    EXPECT_EQ("24", list.CellText(8, 1));
}

TEST_F(Picture_List, The_Alias_Of_The_Tree_Comes_Back_As_It_Was_Given)
{
    Make_Pictures(1);
    Open();
    form.Set_Alias_String("any \"text\";'");
    EXPECT_EQ("any \"text\";'", form.Return_Alias_String());
    EXPECT_EQ("any \"text\";'", window->Explorer().ExplorerTree().Alias());
    form.Set_Pattern_String("*.tif");
    EXPECT_EQ("*.tif", window->Explorer().ExplorerTree().Pattern());
    EXPECT_EQ(window->Explorer().Path(), form.Return_Explorer_Path());
}

} // namespace
