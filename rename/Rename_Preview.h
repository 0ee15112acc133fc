#pragma once

#include "rename/Rename_Job.h"

/// What the user sees of a job before it is carried out.
struct Rename_Preview {
    enum class Mark { None, Twice, Unusable };
    std::vector<Mark> marks; ///< one a row
    int new_names = 0, twice = 0, unusable = 0;

    /// "12 files, 10 new names, 2 names stand twice"
    QString Status() const;
    bool Has_New_Names() const { return new_names > 0; }
};

Rename_Preview Preview_Of(const std::vector<Rename_Row>& rows);

/// What all roots begin with, without digits at its end: what the user most likely wants to change from.
QString Common_Beginning(const std::vector<Rename_Row>& rows);
