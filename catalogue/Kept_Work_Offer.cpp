#include "catalogue/Kept_Work_Offer.h"

#include "frame/files/Limits.h"
#include "frame/text/Path_Utilities.h"

#include <algorithm>

namespace {

QString Counted(const Kept_Work& work, const QString& what, bool (*has)(const Kept_Picture&))
{
    const auto count = std::count_if(work.pictures.begin(), work.pictures.end(), has);
    return count == 0 ? QString() : QStringLiteral("\r\n%1 with %2 not saved").arg(QString::number(count), what);
}

/// The file is the one that was read in that run; the number of its device may differ after a restart.
bool Is_Same_Contents(const Kept_Picture& kept, const File_Identity& now)
{
    return kept.inode == now.inode && kept.size == now.size && kept.modified_nanoseconds == now.modified_nanoseconds;
}

File_Entry Entry_Of(const Kept_Picture& kept, bool is_same)
{
    File_Entry entry = Entry_Of_File(kept.file);
    entry.Rotate = is_same ? kept.rotate : 0;
    entry.Interval = kept.seconds;
    return entry;
}

void Give_Back(Halvine_Form& form, Picture_Item& item, const Kept_Picture& kept, bool is_same)
{
    if (is_same) item.Flip = kept.flip;
    if (kept.script) form.Set_Picture_All_Script_Items(item.Picture_Key, *kept.script);
    if (kept.description) {
        item.Description = *kept.description;
        item.Description_Modified = true;
    }
    if (is_same && kept.flip != 0)
        form.Pictures().Reload_Picture_Thumbnail(form.State().pictures.Index_From_Key(item.Picture_Key), false);
}

/// Asks, restores, and tells whether the journal has done its work.
bool May_Go(Halvine_Form& form, Work_Journal& journal, const Kept_Work& work)
{
    if (work.pictures.empty()) return true;
    User_Dialogs& dialogs = form.State().platform.dialogs;
    const auto answer = dialogs.Ask({.text = Kept_Work_Question(work),
                                     .buttons = Message_Buttons::Yes_No_Cancel,
                                     .standard = Message_Answer::Yes,
                                     .icon = Message_Icon::Question,
                                     .title = QStringLiteral("Halvine - Restore")});
    if (answer != Message_Answer::Yes) return answer == Message_Answer::No;
    const QStringList changed = Restore_Kept_Work(form, work);
    const bool is_kept = journal.Write_Changes();
    if (!changed.isEmpty())
        dialogs.Show_File_List(QStringLiteral("Halvine - changed meanwhile, not turned again"), changed);
    return is_kept;
}

} // namespace

QString Kept_Work_Question(const Kept_Work& work)
{
    const QString changes =
        Counted(work, QStringLiteral("a script"), [](const Kept_Picture& one) { return one.script.has_value(); }) +
        Counted(work, QStringLiteral("a description"),
                [](const Kept_Picture& one) { return one.description.has_value(); }) +
        Counted(work, QStringLiteral("a rotation or flip"),
                [](const Kept_Picture& one) { return one.rotate != 0 || one.flip != 0; }) +
        Counted(work, QStringLiteral("a slide time"), [](const Kept_Picture& one) { return one.seconds != 0; });
    return QStringLiteral("Halvine was not closed properly. The list of %1 picture%2 was kept%3")
               .arg(QString::number(work.pictures.size()), work.pictures.size() == 1 ? QString() : QStringLiteral("s"),
                    changes.isEmpty() ? QStringLiteral(".") : QStringLiteral(", among them:")) +
           changes +
           QStringLiteral("\r\n\r\nDo you wish to restore it?\r\n"
                          "'No' discards it, 'Cancel' asks again at the next start.");
}

QStringList Restore_Kept_Work(Halvine_Form& form, const Kept_Work& work)
{
    std::vector<File_Entry> entries;
    std::vector<bool> same;
    QStringList changed;
    for (const Kept_Picture& kept : work.pictures) {
        const auto now = Identity_Of(File_System_Bytes(kept.file));
        same.push_back(now && Is_Same_Contents(kept, *now));
        if (now && !same.back() && (kept.rotate != 0 || kept.flip != 0)) changed << kept.file;
        entries.push_back(Entry_Of(kept, same.back()));
    }
    int index = form.State().pictures.Count() + 1;
    form.Pick_Files(entries, true, false);
    // Files that could not be read left gaps; the others came in order.
    for (std::size_t i = 0; i < work.pictures.size() && form.State().pictures.Is_Index(index); ++i) {
        Picture_Item& item = form.State().pictures.Item(index);
        if (item.Full_Name() != work.pictures[i].file) continue;
        Give_Back(form, item, work.pictures[i], same[i]);
        ++index;
    }
    form.State().view->Draw_All_Thumbnails();
    form.State().view->Update_Status();
    return changed;
}

void Offer_Kept_Work(Halvine_Form& form, Work_Journal& journal, const QString& folder)
{
    for (const std::string& path : Journals_Left_Behind(File_System_Bytes(folder))) {
        auto left = Journal_File::Take_Over(path); // held while the question stands
        if (!left) continue;
        const auto text = left->Read(Current_Limits().document_bytes);
        if (!text || (!text->empty() && !QByteArray::fromStdString(*text).startsWith(Journal_Head())))
            continue; // of another version, or no journal: left alone
        const Kept_Work work = Read_Journal_Text(QByteArray::fromStdString(*text));
        if (May_Go(form, journal, work)) left->Remove();
    }
}
