#pragma once

#include "catalogue/Catalogue_State.h"
#include "imaging/Script_Utilities.h"

#include <span>

/// The script items of the records: writing, and looking up with the prepared script behind a picture that has none.
/// Results as in Picture_Catalogue.h.
class Picture_Scripts {
public:
    explicit Picture_Scripts(Catalogue_State& state) : state_(state) {}

    /// False when the key is unknown or the text cannot be split; the record then stays as it was.
    bool Set_All(int key, const QString& script);
    QString Recall_All(int key) const;

    int Set_Item(int key, const QString& text, std::span<const int> clear_types, int index);

    /// Writes an item and clears nothing.
    int Set_Item(int key, const QString& text, int index);

    int Recall_Item(int key, int type, QString& text) const;

    /// Looks the item up and has `read` take its text apart: the index, or -1 when there is none of the picture's own or
    /// the text does not parse.
    template <class Read>
    int Recall_Typed(int key, Script_Item_Kind kind, Read read) const
    {
        QString text;
        const int index = Recall_Item(key, int(kind), text);
        return !text.isEmpty() && read(text) ? index : -1;
    }

private:
    void Show(const Picture_Item& item);
    Catalogue_State& state_;
};
