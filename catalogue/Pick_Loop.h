#pragma once

#include "catalogue/Catalogue_State.h"
#include "catalogue/File_Entry.h"
#include "catalogue/Picture_Pictures.h"

#include <QtCore/QStringList>
#include <optional>
#include <span>
#include <vector>

/// Moves files into the catalogue, and pictures out of it. The library reads some files ahead on other cores; records
/// appear here, in the order of the list, and only when they are complete. Reading yields to events at each full row of
/// the filmstrip, and after 50 milliseconds at the latest, also while a single file takes its time.
class Pick_Loop {
public:
    Pick_Loop(Catalogue_State& state, Picture_Pictures& pictures) : state_(state), pictures_(pictures) {}

    /// A call that comes in while another one reads does nothing.
    void Pick_Files(std::span<const File_Entry> File_Entries, bool Append, bool Refresh_Selection);
    void Add_Picture_By_File_Name(const QString& File_Name);

    /// False, after a message, while a window works on one of the pictures.
    bool May_Replace_All() const;

    /// The command: refuses while pictures that would be discarded are in use, asks about unsaved changes, then picks. True
    /// when it picked.
    bool Pick_Selected(std::span<const File_Entry> File_Entries, bool Append, bool Refresh_Selection);

    bool Pick_In_Progress() const { return in_progress_; }
    void Request_Stop() { stop_requested_ = in_progress_; }

    /// Selected pictures that are not locked, after the questions about unsaved changes.
    void Discard_Selected();
    void Discard_All();

    /// The records end without any question.
    void Remove_Pictures(std::span<const int> indices);

private:
    struct Run;
    void Begin(Run& run);
    void Read_Entries(Run& run);
    void Finish(Run& run);
    void Select_Added(const Run& run);
    bool Await(Load_Ahead& ahead, Run& run);
    void Show_Progress(const Run& run);
    void Yield_After(Run& run, bool read);
    bool Is_Late(const Run& run) const;
    void Yield(Run& run);
    void Discard(bool all);
    void Free_Removed_Records();
    std::optional<Picture_Item> Record_Of(const File_Entry& entry, Picture_Contents contents) const;

    Catalogue_State& state_;
    Picture_Pictures& pictures_;
    std::unique_ptr<Repeating_Timer> freeing_; // on as long as there are removed records to free
    bool in_progress_ = false;
    bool stop_requested_ = false;
};
