#pragma once

#include "controls/Folder_Listing.h"
#include "controls/Grid_Model.h"

/// What stands in a folder browser's grid: the files of a folder, its folders, or files that were found.
enum class Explorer_Grid_Mode : int { Files = 0, Folders = 1 };

class Explorer_Model {
public:
    explicit Explorer_Model(Grid_Model& grid) : grid_(grid) {}

    QString Path;         ///< native; may end with a separator or not
    QString PreviousPath; ///< the folder before the last change
    QString Pattern = QStringLiteral("*.*");
    QString PatternSeparator = QStringLiteral(";");
    Explorer_Grid_Mode Mode = Explorer_Grid_Mode::Files;
    bool Hidden = false;
    /// Called with a folder before its files are read, for a host that puts folders in order first.
    std::function<void(const QString& folder)> Before_Listing;

    void Initialize_Columns(); ///< for the mode; keeps widths and sort order when the mode is the same
    void Set_Path(const QString& New_Path);

    /// Reads the folder into the grid. The rows stand in the present sort order; what was selected stays selected by
    /// name. False when the folder could not be read: then the grid is empty and Error_Text tells why.
    bool Refresh();
    /// True when the rows on disk are no longer those of the grid.
    bool Is_Stale() const;
    void Show_Files(const QStringList& File_List); ///< whole paths, until the next Refresh or Set_Path
    bool Shows_File_List() const { return explicit_; }
    const QString& Error_Text() const { return error_text_; }

    QString Name_At(int Grid_Row) const; ///< as in the grid
    QString Path_At(int Grid_Row) const; ///< the whole path; empty without such a row
    QStringList Selected_Paths() const;  ///< in display order
    const std::vector<Folder_Entry>& Entries() const { return entries_; }

private:
    void Fill(std::vector<Folder_Entry> entries);
    Folder_Question Question() const;

    std::vector<QString> Selected_Names() const;
    void Add_Row_Values(int Grid_Row, const Folder_Entry& entry);

    Grid_Model& grid_;
    std::vector<Folder_Entry> entries_; // by stored row
    QString error_text_;
    bool explicit_ = false;
    int columns_for_ = -1;
};
