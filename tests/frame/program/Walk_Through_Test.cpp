// One walk through the program on real events: browse, pick, rotate, run a prepared script, save, open again, look at the
// file with a foreign reader, play the pictures.

#include "frame/program/Slide_Wiring.h"
#include "frame/ui/Icon_Set.h"
#include "tests/catalogue/ui/Window_Fixture.h"

#include <filesystem>

namespace {

/// One run of the program, from its start to its end.
struct Program_Run {
    explicit Program_Run(const QString& folder)
    {
        window = Window_On(folder, form, entry, Icon);
        slides = std::make_unique<Slide_Wiring>(form, *window, entry.state, entry.scripted.platform, Icon);
        Bring_Up(*window);
    }
    ~Program_Run() { slides.reset(); }

    void Press(const char* tooltip)
    {
        for (auto* button :
             window->findChild<bkcButtonPanel*>("Halvine_bkcButtonPanel")->findChildren<QToolButton*>()) {
            if (button->toolTip() != QLatin1String(tooltip) || !button->isVisible()) continue;
            ASSERT_TRUE(button->isEnabled()) << tooltip;
            QTest::mouseClick(button, Qt::LeftButton);
            QApplication::processEvents();
            return;
        }
        FAIL() << "no button " << tooltip;
    }
    void Choose(Menu menu, const QString& caption)
    {
        QMenu& opened = window->Menu_Of(menu);
        opened.popup(window->mapToGlobal(QPoint(40, 40)));
        QApplication::processEvents();
        for (QAction* action : opened.actions()) {
            if (action->text().remove(u'&') != caption) continue;
            ASSERT_TRUE(action->isEnabled()) << caption.toStdString();
            QTest::mouseClick(&opened, Qt::LeftButton, {}, opened.actionGeometry(action).center());
            QApplication::processEvents();
            return;
        }
        FAIL() << "no item " << caption.toStdString();
    }
    void Click_Cell(int index)
    {
        QTest::mouseClick(window->Filmstrip().viewport(), Qt::LeftButton, {},
                          window->Filmstrip().Cell_On_View(index).center());
    }
    void Go_Into(const QString& name)
    {
        BKC_DirTree& tree = window->Explorer().ExplorerTree();
        const QModelIndex root = tree.currentIndex();
        tree.expand(root);
        QApplication::processEvents();
        for (int row = 0; row < tree.model()->rowCount(root); ++row) {
            const QModelIndex index = tree.model()->index(row, 0, root);
            if (index.data().toString() != name) continue;
            tree.scrollTo(index);
            QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(index).center());
            QApplication::processEvents();
            return;
        }
        FAIL() << "no folder " << name.toStdString();
    }
    Picture_Item& Nth(int index) { return form.State().pictures.Item(index); }

    Entry_Fixture entry;
    Halvine_Form form{entry.scripted.platform};
    std::unique_ptr<Halvine_Window> window;
    std::unique_ptr<Slide_Wiring> slides;
};

/// What exiftool says about a file, by tag.
QMap<QString, QString> Foreign_Reading(const QString& path)
{
    QProcess reader;
    reader.start(QStringLiteral("exiftool"),
                 {QStringLiteral("-s"), QStringLiteral("-warning"), QStringLiteral("-error"),
                  QStringLiteral("-ImageSize"), QStringLiteral("-FileType"), QStringLiteral("-Comment"), path});
    EXPECT_TRUE(reader.waitForFinished(30000)) << "exiftool is one of the packages of a developer's machine";
    QMap<QString, QString> facts;
    for (const QString& line : QString::fromUtf8(reader.readAllStandardOutput()).split(u'\n'))
        if (const auto colon = line.indexOf(u':'); colon > 0)
            facts.insert(line.left(colon).trimmed(), line.mid(colon + 1).trimmed());
    return facts;
}

const QString Prepared = QStringLiteral("ConOpt(0.005,0.005,LUM)");

TEST(A_Session, From_Browsing_To_The_Slide_Show)
{
    Test_Folder folder;
    const QString root = QString::fromStdString(folder.Path());
    std::filesystem::create_directory(folder.File("Summer"));
    for (int i = 1; i <= 3; ++i)
        ASSERT_TRUE(Save_Bitmap(Drawn_Bitmap(160, 96, i).Get(), root + QStringLiteral("/Summer/%1.jpg").arg(i), 1,
                                {.comment = QStringLiteral("number %1").arg(i), .script = {}, .parent = {}}));
    const QString second = root + QStringLiteral("/Summer/2.jpg");
    {
        Program_Run run(root);
        run.Go_Into(QStringLiteral("Summer"));
        run.Press("Pick selected files");
        ASSERT_EQ(run.form.State().pictures.Count(), 3);
        run.Click_Cell(2);
        run.Press("Rotate selected 90 degrees clockwise");
        EXPECT_EQ(run.Nth(2).Rotate, 270);
        run.Choose(Menu::Rotate, QStringLiteral("Save Selected Rotations/Flips"));
        EXPECT_EQ(run.Nth(2).Rotate, 0);
        run.Choose(Menu::Script, QStringLiteral("Contrast Optimize"));
        run.Choose(Menu::Script, QStringLiteral("Paste Prepared Script Into Selected"));
        EXPECT_TRUE(run.Nth(2).Script_Modified);
        run.Choose(Menu::Script, QStringLiteral("Save Selected Scripts"));
        EXPECT_FALSE(run.Nth(2).Script_Modified);
        EXPECT_TRUE(run.window->close());
        EXPECT_TRUE(run.entry.scripted.dialogs.asked.empty()) << run.entry.scripted.dialogs.asked[0].text.toStdString();
    }
    EXPECT_EQ(Bitmap_Count(), 0);

    const auto facts = Foreign_Reading(second);
    EXPECT_EQ(facts.value("FileType"), "JPEG");
    EXPECT_EQ(facts.value("ImageSize"), "96x160");
    EXPECT_EQ(facts.value("Comment"), "number 2");
    EXPECT_FALSE(facts.contains("Warning") || facts.contains("Error")) << facts.value("Warning").toStdString();
    EXPECT_EQ(Foreign_Reading(root + "/Summer/1.jpg").value("ImageSize"), "160x96") << "the others are untouched";

    Program_Run run(root + QStringLiteral("/Summer"));
    run.Press("Pick selected files");
    ASSERT_EQ(run.form.State().pictures.Count(), 3);
    EXPECT_EQ(run.form.Recall_Picture_All_Script_Items(run.Nth(2).Picture_Key), Prepared);
    EXPECT_EQ(run.Nth(2).Horz_Pixels, 96);
    run.Choose(Menu::Select, QStringLiteral("Select None"));
    run.Press("Start slide show");
    const Slide_Show_Control_Form& control = run.slides->Control_Form();
    EXPECT_TRUE(control.isVisible());
    EXPECT_EQ(control.Label_Text(), "Slide 1 of 3");
    Scripted_Timer& tick = *run.entry.scripted.timers.at(run.entry.scripted.timers.size() - 2);
    EXPECT_TRUE(QTest::qWaitFor([&] { return tick.Fire(), control.Label_Text() == "Slide 2 of 3"; }, 10000));
    EXPECT_TRUE(run.window->windowTitle().endsWith(" - 2.jpg"));
    run.Press("Stop slide show");
    EXPECT_FALSE(control.isVisible());
    EXPECT_EQ(run.form.State().selection.Selected_Indices(), std::vector{2});
    EXPECT_TRUE(run.window->close());
    EXPECT_EQ(Bitmap_Count(), 0);
}

} // namespace
