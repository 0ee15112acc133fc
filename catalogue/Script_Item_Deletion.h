#pragma once

#include "catalogue/Catalogue_State.h"

#include <set>

/// Steps through pictures and deletes marked items of their scripts. Positions count from 1.
class Script_Item_Deletion {
public:
    /// Pictures that end meanwhile are passed over.
    Script_Item_Deletion(Catalogue_State& state, std::span<const int> keys);

    int Count() const { return int(keys_.size()); }
    int Position() const { return position_; } ///< 0 when there is no picture
    QString Caption() const;                   ///< "Halvine - Script Items For sea.jpg (1 of 3)"

    struct Row {
        QString type; ///< "Crop"
        QString script;
        bool marked = false;
    };
    std::vector<Row> Rows() const;
    void Mark(int row, bool marked); ///< 1-based
    bool Has_Marks() const { return !marked_.empty(); }

    /// Deletes the marked items of this picture from its record; the script counts as modified then.
    void Commit();

    /// To the picture before or behind; asks about marks that were not committed. False when there is none, or on No.
    bool Step(int by);

    /// Leaving; asks as Step does.
    bool May_Leave() const;

private:
    Picture_Item* Item() const;
    Catalogue_State& state_;
    std::vector<int> keys_;
    int position_ = 0;
    std::set<int> marked_;
};

QString Script_Item_Type_Text(int type); ///< "Contrast Optimize"; empty for an unknown type
