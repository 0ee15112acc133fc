#include "frame/ui/bkcExplorer_Form.h"

#include "frame/ports/Scripted_Platform.h"
#include "tests/support/Accessible_Names.h"
#include "tests/support/Modal_Windows.h"
#include "tests/support/Test_Folder.h"

#include <QtTest/QSignalSpy>

namespace {

/// A picker over a folder with sea.jpg, show.hvs and the folder Summer, which holds beach.jpg.
class Explorer_Form : public testing::Test {
protected:
    Explorer_Form()
    {
        QDir(root).mkpath("Summer");
        for (const char* file : {"sea.jpg", "show.hvs", "Summer/beach.jpg"}) Put_File(folder.File(file), "x");
    }
    /// Opens the picker and lets `act` work on it; it is cancelled when it does not end by that.
    bool Ask(int function, const std::function<void()>& act, const QString& pattern = "*.jpg;*.tif")
    {
        When_Asked([&](QWidget* modal) {
            act();
            modal->close();
        });
        return form.Explorer(function, "Halvine - Save As", path, pattern, name);
    }
    void Press_OK() { form.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->click(); }
    bkcGrid& Grid() { return *form.findChild<bkcGrid*>(); }
    BKC_DirTree& Tree() { return *form.findChild<BKC_DirTree*>(); }
    QLineEdit& Field(const char* label)
    {
        for (QLabel* each : form.findChildren<QLabel*>())
            if (QString(each->text()).remove(u'&') == label) return *qobject_cast<QLineEdit*>(each->buddy());
        throw std::runtime_error(label);
    }
    QToolButton& Button(const char* name_of_it)
    {
        for (auto* each : form.findChildren<QToolButton*>())
            if (each->accessibleName() == name_of_it) return *each;
        throw std::runtime_error(name_of_it);
    }
    void Double_Click_Row(int row)
    {
        const QPoint place = Grid().visualRect(Grid().model()->index(row - 1, 0)).center();
        QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, {}, place);
    }
    QStringList Shown()
    {
        QStringList names;
        for (int row = 1; row <= Grid().Content().Rows(); ++row) names << Grid().Content().CellText(1, row);
        return names;
    }

    Test_Folder folder;
    QString root = QString::fromStdString(folder.Path());
    QString path = root;
    QString name;
    Scripted_Platform scripted;
    bkcExplorer_Form form{&scripted.platform, scripted.dialogs, nullptr};
};

TEST_F(Explorer_Form, Opens_The_File_That_Is_Double_Clicked)
{
    EXPECT_TRUE(Ask(0, [&] {
        EXPECT_EQ("Halvine - Save As", form.windowTitle());
        EXPECT_EQ(QStringList{"sea.jpg"}, Shown());
        Double_Click_Row(1);
    }));
    EXPECT_EQ(root + "/", path);
    EXPECT_EQ("sea.jpg", name);
}

TEST_F(Explorer_Form, Offers_A_Name_With_Its_Base_Selected)
{
    name = "sea.jpg";
    EXPECT_TRUE(Ask(1, [&] {
        auto& field = Field("File name:");
        EXPECT_EQ("sea", field.selectedText());
        EXPECT_EQ(&field, form.focusWidget());
        QTest::keyClicks(&field, "shore");
        QTest::keyClick(&field, Qt::Key_Return);
    }));
    EXPECT_EQ("shore.jpg", name);
}

TEST_F(Explorer_Form, Picks_The_Folder_It_Shows_Or_The_One_That_Is_Selected)
{
    EXPECT_TRUE(Ask(2, [&] {
        EXPECT_EQ(QStringList{"Summer"}, Shown());
        EXPECT_EQ(root, Field("Folder:").text());
        Press_OK();
    }));
    EXPECT_EQ(root, path);
    EXPECT_EQ("", name);
    EXPECT_TRUE(Ask(2, [&] {
        QTest::mouseClick(Grid().viewport(), Qt::LeftButton, {},
                          Grid().visualRect(Grid().model()->index(0, 0)).center());
        EXPECT_EQ(root + "/Summer", Field("Folder:").text());
        Press_OK();
    }));
    EXPECT_EQ(root + "/Summer", path);
}

TEST_F(Explorer_Form, A_Double_Click_On_A_Folder_Goes_Into_It)
{
    EXPECT_FALSE(Ask(2, [&] {
        Double_Click_Row(1);
        EXPECT_TRUE(form.isVisible());
        EXPECT_EQ(root + "/Summer", Field("Folder:").text());
        EXPECT_EQ(root + "/Summer", Tree().Path());
    }));
    EXPECT_EQ(root, path) << "a cancel changes nothing";
}

TEST_F(Explorer_Form, A_Folder_In_The_Name_Is_Shown_And_A_Save_Keeps_Its_Name)
{
    name = "sea.jpg";
    EXPECT_TRUE(Ask(1, [&] {
        Field("Look in:").setText("Summer");
        QTest::keyClick(&Field("Look in:"), Qt::Key_Return);
        EXPECT_TRUE(form.isVisible()) << "Enter there only goes there";
        EXPECT_EQ(root + "/Summer", Field("Look in:").text());
        EXPECT_EQ("sea.jpg", Field("File name:").text());
        Field("File name:").setText("..");
        Press_OK();
        EXPECT_EQ(root, Field("Look in:").text());
        Field("File name:").setText("Summer/new.jpg");
        Press_OK();
    }));
    EXPECT_EQ(root + "/Summer/", path);
    EXPECT_EQ("new.jpg", name);
}

TEST_F(Explorer_Form, Goes_Up_And_Back)
{
    path = root + "/Summer";
    Ask(0, [&] {
        EXPECT_EQ(QStringList{"beach.jpg"}, Shown());
        Button("Up to the folder above").click();
        EXPECT_EQ(QStringList{"sea.jpg"}, Shown());
        Button("Back to the folder before").click();
        EXPECT_EQ(QStringList{"beach.jpg"}, Shown());
        Field("Look in:").setText("/");
        QTest::keyClick(&Field("Look in:"), Qt::Key_Return);
        EXPECT_FALSE(Button("Up to the folder above").isEnabled());
    });
}

TEST_F(Explorer_Form, Shows_Other_Files_When_Asked_To)
{
    Ask(0, [&] {
        form.findChild<QComboBox*>()->setCurrentIndex(1);
        EXPECT_EQ((QStringList{"sea.jpg", "show.hvs"}), Shown());
        Field("File name:").setText("*.hvs");
        Press_OK();
        EXPECT_EQ(QStringList{"show.hvs"}, Shown());
        EXPECT_EQ("*.hvs", form.findChild<QComboBox*>()->currentText());
    });
}

TEST_F(Explorer_Form, Starts_At_The_Nearest_Folder_That_Is_There)
{
    path = root + "/gone/deep/";
    Ask(0, [&] { EXPECT_EQ(root, Field("Look in:").text()); });
    path.clear();
    Ask(0, [&] { EXPECT_EQ(QDir::cleanPath(QDir::homePath()), Field("Look in:").text()); });
}

TEST_F(Explorer_Form, Says_Why_A_Name_Cannot_Be_Taken_And_Stays)
{
    EXPECT_FALSE(Ask(0, [&] {
        Field("File name:").setText("gone.jpg");
        Press_OK();
        EXPECT_TRUE(form.isVisible());
        ASSERT_EQ(1U, scripted.dialogs.asked.size());
        EXPECT_EQ("There is no file \"" + root + "/gone.jpg\".", scripted.dialogs.asked[0].text);
        Field("File name:").clear();
        EXPECT_FALSE(form.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled());
    }));
}

TEST_F(Explorer_Form, Makes_A_Folder_And_Goes_Into_It)
{
    scripted.dialogs.inputs = {"Winter"};
    EXPECT_TRUE(Ask(2, [&] {
        Button("Create new folder...").click();
        Press_OK();
    }));
    EXPECT_EQ("Halvine - Create New Folder", scripted.dialogs.input_asked[0].title);
    EXPECT_EQ(root + "/Winter", path);
    EXPECT_TRUE(QFileInfo(path).isDir());
}

TEST_F(Explorer_Form, Renames_And_Deletes_No_Folder)
{
    const QSignalSpy renames(&Tree(), &BKC_DirTree::Rename);
    const QSignalSpy deletes(&Tree(), &BKC_DirTree::Delete);
    Ask(2, [&] {
        QTest::keyClick(&Tree(), Qt::Key_F2);
        QTest::keyClick(&Tree(), Qt::Key_Delete);
        EXPECT_FALSE(Tree().acceptDrops());
        EXPECT_FALSE(Tree().dragEnabled());
    });
    EXPECT_EQ(0, renames.size() + deletes.size());
}

TEST_F(Explorer_Form, Remembers_Its_Place_And_Its_Splitter)
{
    Ask(0, [&] { form.findChild<bkcSplit*>()->Drag(60, form.findChild<bkcSplit*>()->Pixels_LT()); });
    const double ratio = form.findChild<bkcSplit*>()->SplitRatio();
    EXPECT_TRUE(scripted.settings.user["Brennick\\Halvine"].contains("Halvine-bkcExplorer"));
    bkcExplorer_Form again(&scripted.platform, scripted.dialogs, nullptr);
    When_Asked([](QWidget* modal) { modal->close(); });
    again.Explorer(0, {}, path, {}, name);
    EXPECT_EQ("Halvine", again.windowTitle());
    EXPECT_NEAR(ratio, again.findChild<bkcSplit*>()->SplitRatio(), 0.001);
}

TEST_F(Explorer_Form, Every_Part_Has_A_Name)
{
    Ask(0, [&] { EXPECT_EQ("", Widgets_Without_A_Name(form).join('\n').toStdString()); });
}

} // namespace
