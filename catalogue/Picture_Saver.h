#pragma once

#include "catalogue/Pick_Loop.h"

#include <QtCore/QSet>
#include <span>

class Kept_Original;

/// How Save_Picture saves. Hosts pass these numbers; every other one saves to the picture's own path as if it were a new
/// name.
enum class Save_Method : int {
    Snapshot_Then_Overwrite = 2,
    Overwrite_After_Question = 3,
    Automatic_Copy = 4,
    Copy_By_Dialog = 5,
};

/// What the user wants when a picture is to be saved over its own file.
enum class In_Place_Answer { Overwrite, Save_Copy, Nothing };

/// Turns what lies in a record into a file. While a save onto the original runs, the original stands under its own name
/// or, where the file system has no links, under its "~" name, whole.
class Picture_Saver {
public:
    Picture_Saver(Catalogue_State& state, Pick_Loop& pick, Picture_Pictures& pictures)
        : state_(state), pick_(pick), pictures_(pictures)
    {}

    bool Save_Adjusted_Picture(int key, Bitmap_Handle bitmap, const QString& as_file_name, const QString& as_qualifier,
                               std::span<const int> clear_types, bool error_message);
    bool Save_Picture(int method, int key, Bitmap_Handle bitmap, const QString& suffix,
                      std::span<const int> clear_types);

    /// The file again with the same pixels and the record's script and description; its times stay. The pending rotation
    /// stays pending.
    bool Save_Texts(int key);

    /// The pending rotation and flips are written into the pixels; script and description stay, its coordinates follow.
    bool Save_Rotation_And_Flips(int key);

    /// Questions before a picture is saved over its own file: changed meanwhile, several names, more in the file than is
    /// kept, read with errors. `pixels_change` is false for a save of texts alone. Where the file holds more than is kept,
    /// the answer No asks for a copy: the caller then lets the user name one. `bitmap` is what will be saved in the
    /// picture's own type: nothing is asked while it is known to lose nothing, as by a turn; 0 when that cannot be said.
    In_Place_Answer Ask_In_Place(Picture_Item& item, bool pixels_change, Bitmap_Handle bitmap = 0);

    /// The same for callers that make no copy.
    bool Confirm_In_Place(Picture_Item& item, bool pixels_change)
    {
        return Ask_In_Place(item, pixels_change) == In_Place_Answer::Overwrite;
    }

    /// False, with a message, when the record holds only a part of the file's script: storing it would lose the rest. A
    /// script that was changed since is what the user wants.
    bool Holds_Whole_Script(const Picture_Item& item);

private:
    bool Confirm_Identity(const Picture_Item& item);
    struct Job;
    bool Run(Job& job);
    bool Write(Job& job, Kept_Original* kept);
    void Report_Failure(const Job& job, const QString& tail);
    void After_Success(const Job& job);
    void Take_New_Texts(const Job& job);
    Job In_Place_Job(Picture_Item& item, Bitmap_Handle bitmap) const;
    bool Save_After_Snapshot(const Picture_Item& item, Bitmap_Handle bitmap, std::span<const int> clear_types);
    bool Save_By_Dialog(const Picture_Item& item, Bitmap_Handle bitmap, const QString& suffix,
                        std::span<const int> clear_types);

    Catalogue_State& state_;
    Pick_Loop& pick_;
    Picture_Pictures& pictures_;
    QSet<quint64> several_names_allowed_; // inodes whose question was answered with Yes
};
