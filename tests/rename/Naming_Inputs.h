#pragma once

#include "rename/Rename_Job.h"

/// Rows and inputs of jobs for tests, as short as a user would tell them.

inline QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

inline std::vector<Rename_Row> Rows_Of(const QStringList& names)
{
    std::vector<Rename_Row> rows;
    for (const QString& name : names)
        rows.push_back({.folder = Q("/home/anna/Pictures/"),
                        .file_name = name,
                        .file_date = 46095.5, // 14 March 2026, noon
                        .horz_pixels = 400,
                        .vert_pixels = 300});
    return rows;
}

inline QStringList New_Names(const Rename_Job& job)
{
    QStringList names;
    for (const Rename_Row& row : job.Rows()) names << row.new_name;
    return names;
}

inline Rename_Inputs From_To(const char* from, const char* to)
{
    return {.change_from = Q(from), .change_to = Q(to)};
}

inline Rename_Inputs Pattern(const char* from, const char* to)
{
    return {.change_from = Q(from), .change_to = Q(to), .pattern_mode = true};
}

inline Rename_Inputs Reserialized(Rename_Inputs inputs, const char* interval)
{
    inputs.reserialize = true;
    inputs.reserialize_interval = Q(interval);
    return inputs;
}

inline Rename_Inputs Of_Type(Rename_Inputs inputs, const char* type)
{
    inputs.file_type = Q(type);
    return inputs;
}

inline Rename_Inputs With_Formula(Rename_Inputs inputs, const char* text)
{
    inputs.formula = Chosen_Formula{.name = Q("f"), .text = Q(text)};
    return inputs;
}
