#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <vector>

/// The modes of the rename and describe window, for those who open it without knowing it. Pictures are named by their
/// 1-based indices; results come in the order of the indices. True on accept; after a cancel results are left alone.
class Rename_Describe_Dialogs {
public:
    virtual ~Rename_Describe_Dialogs() = default;

    /// Rename_To_File_Name receives one name for each index, without a path; a file that keeps its name gets that.
    virtual bool Rename_Dialog(const QString& Dialog_Caption, const std::vector<int>& Rename_Picture_Index,
                               QStringList& Rename_To_File_Name) = 0;

    // The lists of named patterns and formulas. What was edited is in the program's state afterwards.
    virtual void Rename_Pattern_Dialog() = 0;
    virtual void Rename_Formula_Dialog() = 0;
    virtual void File_Data_Formula_Dialog() = 0;

    virtual bool Describe_Dialog(const std::vector<int>& Describe_Picture_Index, QStringList& Picture_Description) = 0;

    /// Seconds; 0 is the default time, and Default_Slide_Time tells what that is.
    virtual bool Slide_Time_Dialog(const std::vector<int>& Slide_Time_Picture_Index,
                                   std::vector<float>& Picture_Slide_Time, float Default_Slide_Time) = 0;
};
