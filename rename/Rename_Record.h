#pragma once

#include "rename/Rename_Plan.h"

#include <QtCore/QByteArray>
#include <QtCore/QList>

/// What is remembered of a rename: enough to take it back, and to put it right when it was interrupted.
struct Rename_Record {
    std::vector<Rename_Move> moves; ///< those that changed a name
    std::vector<Rename_Step> steps; ///< in order
    bool operator==(const Rename_Record&) const = default;
};

// The text of a record has a line for each move and each step, and a first and a last one. Each line ends with a check
// word over the line and its number, so that a line that was changed, lost or brought to another place is found out:
//
//     names 7c3f22d1
//     move FOLDER OLD_NAME NEW_NAME CHECK
//     step FROM TO DEVICE INODE CHECK
//     end CHECK
//
// Bytes that are no letters, digits or "-._~" are written as "%41".

QByteArray Text_Of_Record(const Rename_Record& record);

/// What a text tells of a record.
struct Record_Reading {
    Rename_Record record; ///< of the lines that are as they were written
    std::string fault{};  ///< what is wrong with the first line that is not: "line 4 was changed"; empty: all is there
    bool Is_Whole() const { return fault.empty(); }
};
Record_Reading Record_From_Text(const QByteArray& text);

/// The lines with their check words, and a line end behind each.
QByteArray Checked_Lines(const QList<QByteArray>& lines);
