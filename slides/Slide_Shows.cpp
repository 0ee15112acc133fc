#include "slides/Slide_Shows.h"

#include "catalogue/File_Confirmation.h"
#include "catalogue/File_Dialogs.h"
#include "catalogue/Modifications.h"
#include "catalogue/Selection_For_Function.h"
#include "documents/Document_File.h"
#include "frame/text/Text_Utilities.h"
#include "slides/Slide_Show_Copy.h"
#include "slides/Slide_Show_Finder.h"

namespace {

const QString Extension = QStringLiteral("hvs");

void Tell_Failure(User_Dialogs& dialogs, const Error& error)
{
    dialogs.Ask({.text = QString::fromStdString(error.text),
                 .icon = Message_Icon::Exclamation,
                 .title = QStringLiteral("Halvine Error Saving Slide Show")});
}

/// A name as it can stand in a caption.
QString Shown_Name(const QString& name)
{
    constexpr qsizetype Most_Shown = 255;
    return name.size() <= Most_Shown ? name : name.left(Most_Shown) + QStringLiteral("...");
}

/// Collects the files that are there, and asks for the others.
class Asking_Sink final : public Slide_Show_Sink {
public:
    Asking_Sink(User_Dialogs& dialogs, const QString& show_file, float& seconds, QStringList& sounds)
        : dialogs_(dialogs), finder_(show_file), folder_(Folder_Part(show_file)), seconds_(seconds), sounds_(sounds)
    {}
    void Take_Folder(const QString& folder) override { finder_.Set_Folder(folder); }
    void Take_Seconds(float seconds) override { seconds_ = seconds; }
    bool Take_Slide(const Slide& slide) override
    {
        const QString found = Find_Moved_File(slide.file);
        if (found.isEmpty()) return May_Continue();
        File_Entry entry = Entry_Of_File(found);
        entry.File_Date = Normalize_Date(entry.File_Date, true);
        entry.Rotate = slide.rotate;
        entry.Interval = slide.seconds;
        entries.push_back(entry);
        return true;
    }
    bool Take_Sound(const QString& file) override
    {
        const QString found = Find_Moved_File(file);
        if (found.isEmpty()) return May_Continue();
        sounds_ << found;
        return true;
    }
    std::vector<File_Entry> entries;

private:
    QString Find_Moved_File(const QString& name);
    bool May_Continue() { return dialogs_.Confirm(QStringLiteral("Do you wish to continue?")); }

    User_Dialogs& dialogs_;
    Slide_Show_Finder finder_;
    QString folder_;
    float& seconds_;
    QStringList& sounds_;
};

/// Empty after a cancel.
QString Asking_Sink::Find_Moved_File(const QString& name)
{
    QString found = finder_.Find(name);
    const QString bare = Slide_Show_Finder::Bare_Name(name);
    const bool by_folder = Slide_Show_Finder::Is_Below_Folder(name);
    const Picker_Question question{.caption = (by_folder ? QStringLiteral("Halvine - Find Folder Containing: ")
                                                         : QStringLiteral("Halvine - Find File: ")) +
                                              Shown_Name(bare),
                                   .folder = folder_,
                                   .name = by_folder ? QString() : Shown_Name(Name_Part(bare)),
                                   .pattern = QStringLiteral("*.*"),
                                   .kind =
                                       by_folder ? Picker_Question::Kind::Folder : Picker_Question::Kind::Open_File};
    while (found.isEmpty()) {
        const QStringList picked = dialogs_.Pick(question);
        if (picked.isEmpty() || picked.front().isEmpty()) return {};
        if (by_folder) {
            found = finder_.Find_In(picked.front(), name);
        } else if (Test_File_Exists(picked.front(), false).value_or(0) == 1) {
            found = Existing_Path(picked.front());
            finder_.Remember(found);
        }
    }
    return found;
}

} // namespace

bool Slide_Shows::Confirm_Abandon_Slide_Show() const
{
    if (!Is_File_Open() || !modified_) return true;
    return Dialogs().Confirm(
        file_name_ +
        QStringLiteral(" modified, do you wish to abandon modifications?\r\nTo save, click 'No' or "
                       "'Cancel' then use Slides menu to save ") +
        file_name_ + u'.');
}

bool Slide_Shows::Open_Slide_Show(const QString& File_Name, bool Append, bool Pick_Pictures)
{
    if (!Append) {
        if (!pick_.May_Replace_All() || !Confirm_Abandon_Slide_Show() || !Confirm_Abandon_Scripts(catalogue_, true) ||
            !Confirm_Abandon_Descriptions(catalogue_, true))
            return false;
        sounds_.clear();
    }
    QString file = File_Name;
    if (file.isEmpty() && !Open_File_Dialog(Dialogs(), catalogue_.view->Explorer_Path(), {}, Extension,
                                            QStringLiteral("Halvine - Open Slide Show"), file))
        return false;
    file = Existing_Path(file);
    const auto text = Read_Document(file);
    if (!text) {
        Dialogs().Refuse(QString::fromStdString(text.error().text));
        return false;
    }
    Asking_Sink sink(Dialogs(), file, program_.Slide_Display_Interval, sounds_);
    Read_Slide_Show(*text, sink);
    if (!Pick_Pictures) return true;
    if (!sink.entries.empty()) pick_.Pick_Files(sink.entries, Append, /*Refresh_Selection=*/false);
    file_name_ = file;
    modified_ = Append;
    return true;
}

std::vector<Slide> Slide_Shows::Slides_To_Write(bool selected_only) const
{
    std::vector<Slide> slides;
    const int minimum = selected_only ? 1 : catalogue_.pictures.Count();
    for (const int index : Pictures_For_Function(catalogue_, {.minimum = minimum})) {
        const Picture_Item& item = catalogue_.pictures.Item(index);
        slides.push_back({item.Full_Name(), item.Rotate, item.Interval_In_Seconds});
    }
    return slides;
}

bool Slide_Shows::Save_Slide_Show(bool Selected_Only)
{
    const std::vector<Slide> slides = Slides_To_Write(Selected_Only);
    if (slides.empty()) return false;
    QString file;
    if (!Save_File_Dialog(Dialogs(), catalogue_.view->Explorer_Path(), file_name_, Extension,
                          QStringLiteral("Halvine - Save Slide Show"), file))
        return false;
    const auto written = Write_Document(file, Slide_Show_Text(slides, program_.Slide_Display_Interval));
    if (!written) {
        Tell_Failure(Dialogs(), written.error());
        return false;
    }
    file_name_ = file;
    modified_ = false;
    return true;
}

bool Slide_Shows::Copy_Slide_Show_As(bool Selected_Only)
{
    const std::vector<Slide> slides = Slides_To_Write(Selected_Only);
    if (slides.empty()) return false;
    const QStringList picked = Dialogs().Pick({.caption = QStringLiteral("Halvine - Copy Slide Show As"),
                                               .folder = catalogue_.view->Explorer_Path(),
                                               .name = {},
                                               .pattern = QStringLiteral("*.hvs"),
                                               .kind = Picker_Question::Kind::Save_File});
    if (picked.isEmpty() || picked.front().isEmpty()) return false;
    const QString target = With_Default_Extension(picked.front(), Extension);
    if (!Confirm_Overwrite(Dialogs(), target) ||
        !Confirm_Writable(Dialogs(), target, QStringLiteral("overwrite"), true))
        return false;
    Shell& shell = catalogue_.platform.shell;
    shell.Show_Busy_Pointer(true);
    const auto copied = Copy_Slide_Show(slides, program_.Slide_Display_Interval, target);
    shell.Show_Busy_Pointer(false);
    if (!copied) Tell_Failure(Dialogs(), copied.error());
    return copied.has_value();
}
