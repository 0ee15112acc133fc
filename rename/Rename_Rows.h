#pragma once

#include "catalogue/Picture_Item.h"
#include "rename/Rename_Job.h"
#include "rename/Rename_Plan.h"

/// Between files and records, jobs, whose names are texts, and plans, whose names are bytes.

/// The facts of a file on the disk. `path` is absolute.
Rename_Row Row_Of_File(const QString& path);

Rename_Row Row_Of_Picture(const Picture_Item& item);

/// What a caption formula sees of a record.
Caption_Facts Caption_Facts_Of(const Picture_Item& item);

/// The moves that the final names ask for, one for each row.
std::vector<Rename_Move> Moves_Of(const std::vector<Rename_Row>& rows);
