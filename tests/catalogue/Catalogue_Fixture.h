#pragma once

#include "catalogue/Halvine_Form.h"
#include "frame/ports/Scripted_Platform.h"

#include <QtCore/QStringList>
#include <gtest/gtest.h>
#include <string>

/// Remembers what the catalogue asked of its window.
class Recording_View : public Catalogue_View {
public:
    int Thumbnails_Per_Row() const override { return columns; }
    int Thumbnail_Rows() const override { return rows; }
    bool Shows_Thumbnails() const override { return shows_thumbnails; }
    void Set_Top_Row(int row) override { top_rows << row; }
    void Clear_Strip() override { ++strips_cleared; }
    void Update_Scroll_Range() override { ++scroll_updates; }
    void Repaint_Pick_Progress() override { ++progress_repaints; }
    void Draw_Thumbnail(int index) override { drawn << index; }
    void Draw_All_Thumbnails() override { ++all_drawn; }
    void Set_Thumbnail_Frame(int index, bool selected) override { frames << (selected ? index : -index); }
    void Scroll_To_Index(int index) override { scrolled_to = index; }
    void Update_Status() override { ++status_updates; }
    void Show_Current_Picture() override { ++current_shown; }
    void Begin_Pick_Progress() override { ++progress_begun; }
    void Show_Pick_Progress(const QString& label, int, int) override { labels << label; }
    void End_Pick_Progress() override { ++progress_ended; }
    void Refresh_Folder_Tree(const QString& folder) override { refreshed << folder; }

    bool shows_thumbnails = true;
    int columns = 6;
    int rows = 4;
    QList<int> drawn;
    QList<int> frames; // negative: taken away
    QStringList labels;
    QStringList refreshed;
    int scrolled_to = 0;
    int current_shown = 0;
    int all_drawn = 0;
    int status_updates = 0;
    QList<int> top_rows;
    int strips_cleared = 0;
    int scroll_updates = 0;
    int progress_repaints = 0;
    int progress_begun = 0;
    int progress_ended = 0;
};

class Recording_Slide_Show : public Slide_Show_Link {
public:
    bool Is_Running() const override { return running; }
    void Stop() override { ++stopped; }
    bool Confirm_Abandon() override { return may_abandon; }
    bool Is_File_Open() const override { return open; }
    void Set_File_Modified() override { modified = true; }
    void Forget_File() override { open = false; }
    int Picture_Key_Of_Slide(int slide) const override { return slide; }
    bool running = false;
    bool may_abandon = true;
    bool open = false;
    bool modified = false;
    int stopped = 0;
};

/// A clock on which every look is some milliseconds later than the one before.
class Stepping_Clock : public Clock {
public:
    explicit Stepping_Clock(int step) : step_(step) {}
    QDateTime Now() const override { return start_.addMSecs(qint64(step_) * looks_++); }

private:
    QDateTime start_ = QDateTime(QDate(2026, 3, 14), QTime(15, 9, 26));
    int step_;
    mutable int looks_ = 0;
};

/// A main window without files: records are put in as a pick would.
class Catalogue_Test : public testing::Test {
protected:
    /// Returns the key.
    int Add(const QString& name, const QString& script = {}, int depth = 24)
    {
        Picture_Item item;
        item.Picture_Key = form.State().pictures.Take_Next_Key();
        item.Path = QStringLiteral("/photos/");
        item.File_Name = name;
        item.File_Type = 1;
        item.Pixel_Depth = depth;
        item.Horz_Pixels = 400;
        item.Vert_Pixels = 300;
        Parse_Script_Items(script, item.Script_Items);
        const int key = item.Picture_Key;
        form.State().pictures.Append(std::move(item));
        return key;
    }
    Picture_Item& Item(int key) { return *form.State().pictures.Find(key); }
    QString Last_Message() const
    {
        return platform.dialogs.asked.empty() ? QString() : platform.dialogs.asked.back().text;
    }

    Scripted_Platform platform;
    Recording_View view;
    Recording_Slide_Show slide_show;
    Halvine_Form form{platform.platform, &view, &slide_show};
};
