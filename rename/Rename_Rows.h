#pragma once

#include "rename/Rename_Job.h"
#include "rename/Rename_Plan.h"

/// Between a job, whose names are texts, and a plan, whose names are bytes.

/// The facts of a file on the disk. `path` is absolute.
Rename_Row Row_Of_File(const QString& path);

/// The moves that the final names ask for, one for each row.
std::vector<Rename_Move> Moves_Of(const std::vector<Rename_Row>& rows);
