#pragma once

#include "frame/Settings_Store.h"
#include "rename/Rename_Job.h"
#include "rename/ui/Rename_Describe_Form.h"
#include "rename/ui/Rename_Describe_Windows.h"
#include "tests/catalogue/Picture_Fixture.h"
#include "tests/support/Accessible_Names.h"

#include <QtTest/QtTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <numeric>

inline QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

/// The rename and describe window in its modes, on real events.
class Rename_Window_Test : public Picture_Test {
protected:
    Rename_Window_Test()
    {
        Complete_Empty_Lists(program);
        windows.Show_Form = [this](Rename_Describe_Form& shown) {
            window = &shown;
            shown.show();
            QApplication::setActiveWindow(&shown);
            QApplication::processEvents();
            user();
            EXPECT_FALSE(shown.isVisible()) << "the user leaves the window";
            if (shown.isVisible()) shown.reject();
            window = nullptr;
        };
    }
    void Put_Picture(const char* name)
    {
        Picture_Item item;
        item.Picture_Key = form.State().pictures.Take_Next_Key();
        item.Path = QString::fromStdString(folder.Path()) + u'/';
        item.File_Name = Q(name);
        item.File_Type = 1;
        item.File_Date = 46095.5; // 14 March 2026
        item.Horz_Pixels = 160;
        item.Vert_Pixels = 96;
        form.State().pictures.Append(std::move(item));
    }
    std::vector<int> All() const
    {
        std::vector<int> indices(std::size_t(form.State().pictures.Count()));
        std::iota(indices.begin(), indices.end(), 1);
        return indices;
    }
    /// Opens the rename mode; `what` is what the user does. The names that came out; empty when cancelled.
    QStringList Rename(std::function<void()> what)
    {
        user = std::move(what);
        QStringList names;
        const bool accepted = windows.Rename_Dialog(Q("Halvine - Rename Selected"), All(), names);
        return accepted ? names : QStringList();
    }

    template <class Widget>
    Widget& Part(const char* name)
    {
        auto* part = window->findChild<Widget*>(QLatin1String(name));
        if (part == nullptr) throw std::runtime_error(name);
        return *part;
    }
    void Type(const char* name, const char* text)
    {
        auto& field = Part<QLineEdit>(name);
        field.setFocus();
        field.selectAll();
        QTest::keyClick(&field, Qt::Key_Delete);
        QTest::keyClicks(&field, Q(text));
    }
    /// The first letter opens a cell's editor, which gets the others.
    void Type_At_Focus(const char* text)
    {
        for (const QChar letter : Q(text)) QTest::keyClicks(QApplication::focusWidget(), letter);
    }
    QString Text(const char* name) { return Part<QLineEdit>(name).text(); }
    void Choose(const char* name, const char* text) { Part<QComboBox>(name).setCurrentText(Q(text)); }
    void Press(const char* name) { QTest::mouseClick(&Part<QPushButton>(name), Qt::LeftButton); }
    void Execute() { Press("Execute_Command"); }
    bkcGrid& Grid() { return window->Grid(); }
    QString Cell(int column, int row) { return Grid().Content().CellText(column, row); }
    QString Head(int column) { return Grid().model()->headerData(column - 1, Qt::Horizontal).toString(); }
    QStringList New_Names()
    {
        QStringList names;
        for (int row = 1; row <= Grid().Content().Rows(); ++row) names << Cell(2, row);
        return names;
    }
    void Edit(int column, int row, const char* text)
    {
        ASSERT_TRUE(Grid().EditCellStart(column, row));
        auto* editor = Grid().findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        editor->selectAll();
        QTest::keyClick(editor, Qt::Key_Delete);
        QTest::keyClicks(editor, Q(text));
        QTest::keyClick(editor, Qt::Key_Return);
    }

    Program_State program;
    Rename_Describe_Windows windows{form, program};
    Rename_Describe_Form* window = nullptr;
    std::function<void()> user;
};
