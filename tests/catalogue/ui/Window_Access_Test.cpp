#include "catalogue/ui/Save_Options_Dialog.h"
#include "catalogue/ui/Script_Item_Dialog.h"
#include "tests/catalogue/ui/Window_Fixture.h"
#include "tests/support/Accessible_Names.h"

// What people hear who do not see the window, and what the pointer tells those who do.

namespace {

class Window_Access : public Window_Test {
protected:
    QAccessibleInterface* Strip() const { return QAccessible::queryAccessibleInterface(&window->Filmstrip()); }
    QAccessibleInterface* Cell(int index) const { return Strip()->child(index - 1); }
};

TEST_F(Window_Access, Every_Widget_Has_A_Name)
{
    Open_And_Pick(3);
    EXPECT_EQ("", Widgets_Without_A_Name(*window).join('\n').toStdString());
    window->Commands().Run({Menu::Options, 401});
    EXPECT_EQ("", Widgets_Without_A_Name(*window).join('\n').toStdString());
}

TEST_F(Window_Access, Every_Widget_Of_The_Dialogs_Has_A_Name)
{
    Save_Options_Dialog options;
    EXPECT_EQ("", Widgets_Without_A_Name(options).join('\n').toStdString());
    Open_And_Pick(1);
    const std::vector<int> keys{form.State().pictures.Item(1).Picture_Key};
    Script_Item_Deletion model(form.State(), keys);
    Script_Item_Dialog items(model, nullptr, nullptr);
    EXPECT_EQ("", Widgets_Without_A_Name(items).join('\n').toStdString());
}

TEST_F(Window_Access, Every_Button_And_Field_Has_A_Tooltip)
{
    Open_And_Pick(1);
    for (const QWidget* widget : window->findChildren<QWidget*>()) {
        const bool wants_one = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                               qobject_cast<const QLineEdit*>(widget) != nullptr ||
                               qobject_cast<const QProgressBar*>(widget) != nullptr;
        const bool inner = Is_Inner_Part(*widget) || widget->objectName() == "bkcCell_Text";
        if (wants_one && !inner) {
            EXPECT_FALSE(widget->toolTip().isEmpty())
                << widget->metaObject()->className() << ' ' << widget->objectName().toStdString();
        }
    }
}

TEST_F(Window_Access, Pictures_Are_Items_Of_A_List)
{
    Open_And_Pick(5);
    EXPECT_EQ(QAccessible::List, Strip()->role());
    EXPECT_TRUE(Strip()->state().multiSelectable);
    ASSERT_EQ(5, Strip()->childCount());
    EXPECT_EQ(QAccessible::ListItem, Cell(2)->role());
    EXPECT_EQ("02.jpg", Cell(2)->text(QAccessible::Name).toStdString());
    EXPECT_TRUE(Cell(2)->text(QAccessible::Description).startsWith("02.jpg, "));
    EXPECT_EQ(Strip(), Cell(2)->parent());
    EXPECT_EQ(1, Strip()->indexOfChild(Cell(2)));
    EXPECT_EQ(nullptr, Strip()->child(5));
    EXPECT_EQ(nullptr, Strip()->child(-1));
    const QPoint middle = Cell(2)->rect().center();
    EXPECT_EQ(Cell(2), Strip()->childAt(middle.x(), middle.y()));
}

TEST_F(Window_Access, Items_Tell_Selection_And_Focus)
{
    Open_And_Pick(4);
    window->Filmstrip().setFocus();
    Click(2);
    Click(3, Qt::ControlModifier);
    EXPECT_TRUE(Cell(2)->state().selected);
    EXPECT_TRUE(Cell(3)->state().selected);
    EXPECT_FALSE(Cell(1)->state().selected);
    EXPECT_TRUE(Cell(3)->state().focused);
    EXPECT_FALSE(Cell(2)->state().focused);
    EXPECT_EQ(Cell(3), Strip()->focusChild());
}

TEST_F(Window_Access, Items_Off_The_View_Are_There_And_Say_So)
{
    Open_And_Pick(60);
    ASSERT_EQ(60, Strip()->childCount());
    EXPECT_FALSE(Cell(1)->state().offscreen);
    EXPECT_TRUE(Cell(60)->state().offscreen);
    QTest::keyClick(&window->Filmstrip(), Qt::Key_End);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Cell(60)->state().offscreen; }, 3000));
}

TEST_F(Window_Access, Items_Can_Be_Pressed_And_Toggled)
{
    Open_And_Pick(4);
    QAccessibleActionInterface* actions = Cell(4)->actionInterface();
    ASSERT_NE(nullptr, actions);
    actions->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(std::vector{4}, Selected());
    Cell(1)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_EQ((std::vector{4, 1}), Selected());
}

TEST_F(Window_Access, An_Item_Stays_With_Its_Picture_And_Ends_With_It)
{
    Open_And_Pick(3);
    QAccessibleInterface* last = Cell(3);
    QAccessibleInterface* first = Cell(1);
    Click(1);
    window->Commands().Run({Menu::File, 103});
    EXPECT_EQ(2, Strip()->childCount());
    EXPECT_EQ(last, Cell(2));
    EXPECT_FALSE(first->isValid());
    EXPECT_TRUE(first->state().invalid);
    EXPECT_EQ("", first->text(QAccessible::Name).toStdString());
}

} // namespace
