#pragma once

#include "rename/Rename_Job.h"

/// What the user sees of a job before it is carried out.
struct Rename_Preview {
    enum class Mark { None, Twice, Unusable };
    std::vector<Mark> marks; ///< one a row
    int new_names = 0, twice = 0, unusable = 0;

    /// "12 files, 10 new names, 2 names stand twice"
    QString Status() const;
    /// What the user can do about it when no name is new; empty when one is.
    QString Hint(const Rename_Inputs& inputs) const;
    bool Has_New_Names() const { return new_names > 0; }
};

Rename_Preview Preview_Of(const std::vector<Rename_Row>& rows);

/// What all roots begin with: what the user most likely wants to change from. Without the digits at its end, unless
/// there is nothing else, as in names that cameras make of the date.
QString Common_Beginning(const std::vector<Rename_Row>& rows);
