#pragma once

#include <QtCore/QString>
#include <span>
#include <vector>

/// Kinds of script items. Files and hosts hold these numbers: never renumber.
enum class Script_Item_Kind : int {
    Cleared = 0, ///< a slot that the next compaction squeezes out
    Contrast_Optimize = 1,
    Saturation_Value = 2,
    Color_Balance = 3,
    Gamma = 4,
    Crop = 5,
    Scale = 6,
    Unsharp = 7,
    Blur = 8,
    Text = 9,
};

struct Script_Item {
    int Script_Item_Type = 0; ///< a Script_Item_Kind as a number
    QString Script_Item_String;
    bool operator==(const Script_Item&) const = default;
};

/// The items of one script: 1-based, with a count of its own. The array starts with bounds 1 to 10 and grows, when the
/// count passes the upper bound, to old count + 10. Slots behind the count are empty.
class Script_Item_Array {
public:
    Script_Item_Array() : slots_(First_Upper_Bound) {}

    int Count() const { return count_; }
    int Upper_Bound() const { return int(slots_.size()); }
    bool Is_Empty() const { return count_ == 0; }

    /// 1 to Count(). Any other index gives an empty item.
    const Script_Item& Item(int index) const;

    /// 1 to Count(); other indices are ignored.
    void Set_Item(int index, Script_Item item);

    void Append(Script_Item item);

    /// Back to bounds 1 to 10 and no items.
    void Clear() { *this = Script_Item_Array(); }

    /// Items of a listed type become type 0 with empty text. A list of exactly one 0 means "clear nothing"; true when the
    /// caller should compact.
    bool Clear_Types(std::span<const int> types);

    /// Moves items of a type other than 0 down, empties the rest and stores the new count.
    void Compact();

    /// Clear_Types and, unless the list says "clear nothing", Compact.
    void Remove_Types(std::span<const int> types);

    bool operator==(const Script_Item_Array& other) const;

private:
    static constexpr int First_Upper_Bound = 10;
    std::vector<Script_Item> slots_;
    int count_ = 0;
};

/// A named script.
struct Script_Set {
    QString name;
    Script_Item_Array Script_Items;
};

/// How a whole script was split.
enum class Script_Status {
    Complete,
    Invalid_Argument, ///< a Text item behind another item whose end cannot be told
    Too_Many_Items,   ///< more than the limit
};

/// Splits `script` into `items`, which always starts afresh. After a failure the items stored so far stay.
Script_Status Parse_Script_Items(const QString& script, Script_Item_Array& items);

/// The inverse: item texts, trimmed, with ";" between them.
QString Join_Script_Items(const Script_Item_Array& items);

/// For messages: why a script could not be split; empty for Complete.
QString Script_Status_Text(Script_Status status);

/// The scripts that come with the program: "Contrast Optimize", "People", "Buildings/Machines".
const std::vector<Script_Set>& Prepared_Script_Sets();
