#pragma once

#include "catalogue/Pick_Loop.h"

#include <QtCore/QStringList>

/// The commands on snapshots (see Snapshot_Names.h).
class Snapshot_Commands {
public:
    Snapshot_Commands(Catalogue_State& state, Pick_Loop& pick) : state_(state), pick_(pick) {}

    /// Each selected picture, turned, with its texts and the file times of what it holds. Returns how many were saved.
    int Save_Selected_As_Snapshots();

    /// Picks all snapshots of the selected pictures as an append, and the original of a selected snapshot.
    void Load_Snapshots_Of_Selected();

    /// The first selected picture, if it is a snapshot, becomes the original again; what stood there becomes a snapshot.
    bool Restore_From_Selected_Snapshot();

private:
    bool Save_As_Snapshot(int key);
    Catalogue_State& state_;
    Pick_Loop& pick_;
};

/// The snapshots of a file in its folder, in order of names; with the original when `file_name` is a snapshot itself.
QStringList Snapshots_Of_File(const QString& file_name);

/// Renames what stands under the original's name to a fresh snapshot name (empty when there is nothing), then copies the
/// snapshot there. False with a reason; then nothing was lost.
bool Restore_Snapshot_File(const QString& snapshot, const QDateTime& now, QString& kept_as, QString& reason);
