#pragma once

#include "catalogue/Catalogue_Commands.h"
#include "rename/Rename_Dialogs.h"
#include "rename/Rename_Journal_Folder.h"

#include <set>

/// The commands of the Rename menu, with the catalogue following what they do. Everything must outlive the object.
class Rename_Commands {
public:
    struct Parts {
        Halvine_Form& form;
        Rename_Describe_Dialogs& dialogs;
        Rename_Files& files;
        Rename_Journal_Folder& journal;
        std::function<void()> show_file_changes; ///< the folder pane reads its files again
    };
    explicit Rename_Commands(Parts parts) : parts_(std::move(parts)) {}

    void Bring_To(Catalogue_Commands& commands);

    void Rename_Selected();
    void Copy_Rename_Selected(); ///< into the folder of the folder pane
    void Take_Back();
    void Describe_Selected();

    /// At the start of the program: what a crash left half renamed. Tells what was done.
    void Put_Interrupted_Right();

private:
    struct Batch;
    enum class Consent { Given, Refused };
    std::optional<Batch> Ask_Names(const QString& caption, Select_Access access);
    Consent Ask_About_Taken(Batch& batch, const std::vector<Rename_Fault>& faults, const QString& overwrite_caption,
                            const std::string& target_folder);
    bool Make_Room(const Batch& batch);
    void Tell_Faults(const std::vector<Rename_Fault>& faults);
    void Tell_Failure(const Error& error);
    void Run_Renames(const Batch& batch, const Rename_Plan& plan);
    void Run_Copies(const Batch& batch, const std::string& folder);
    void Files_Renamed(const std::vector<Rename_Move>& moves);
    Catalogue_State& State() const { return parts_.form.State(); }
    User_Dialogs& Dialogs() const { return State().platform.dialogs; }

    Parts parts_;
};
