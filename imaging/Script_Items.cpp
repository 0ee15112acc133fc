#include "imaging/Script_Items.h"

#include "frame/files/Limits.h"
#include "imaging/Script_Utilities.h"

#include <algorithm>

const Script_Item& Script_Item_Array::Item(int index) const
{
    static const Script_Item empty;
    return index >= 1 && index <= count_ ? slots_[std::size_t(index - 1)] : empty;
}

void Script_Item_Array::Set_Item(int index, Script_Item item)
{
    if (index >= 1 && index <= count_) slots_[std::size_t(index - 1)] = std::move(item);
}

void Script_Item_Array::Append(Script_Item item)
{
    const int old_count = count_++;
    if (count_ > Upper_Bound()) slots_.resize(std::size_t(old_count + 10));
    slots_[std::size_t(old_count)] = std::move(item);
}

bool Script_Item_Array::Clear_Types(std::span<const int> types)
{
    if (types.size() == 1 && types[0] == 0) return false;
    for (int i = 0; i < count_; ++i) {
        Script_Item& item = slots_[std::size_t(i)];
        if (std::find(types.begin(), types.end(), item.Script_Item_Type) != types.end()) item = {};
    }
    return true;
}

void Script_Item_Array::Compact()
{
    const auto used = slots_.begin() + count_;
    const auto kept =
        std::stable_partition(slots_.begin(), used, [](const Script_Item& item) { return item.Script_Item_Type != 0; });
    count_ = int(kept - slots_.begin());
    std::fill(kept, used, Script_Item());
}

void Script_Item_Array::Remove_Types(std::span<const int> types)
{
    if (Clear_Types(types)) Compact();
}

bool Script_Item_Array::operator==(const Script_Item_Array& other) const
{
    return count_ == other.count_ && std::equal(slots_.begin(), slots_.begin() + count_, other.slots_.begin());
}

namespace {

/// Where a Text item that begins at `position` ends: at the ";" behind its body, which may hold ";" itself. The body is
/// read from the script's first character, so only a Text item in the first place is split as intended; where the script
/// begins with another item, the previous end is kept. Stored scripts depend on it.
int End_Of_Text_Item(const QString& script, int position, int previous_end)
{
    QString body;
    if (!Parse_Text_Item(script, body)) return previous_end;
    const auto found = script.indexOf(body, position - 1);
    if (found < 0) return 0;
    return int(script.indexOf(u';', found + body.size())) + 1;
}

} // namespace

Script_Status Parse_Script_Items(const QString& script, Script_Item_Array& items)
{
    items.Clear();
    int end = 0;
    // A one-character rest is never looked at.
    for (int position = 1; position < script.size(); position = end + 1) {
        const int type = Script_Item_Type_From_String(script.mid(position - 1, 16));
        const bool is_text = type == int(Script_Item_Kind::Text);
        end = is_text ? End_Of_Text_Item(script, position, end) : int(script.indexOf(u';', position - 1)) + 1;
        if (end == 0) end = int(script.size()) + 1;
        if (end < position) return Script_Status::Invalid_Argument;
        const QString item = script.mid(position - 1, end - position);
        const int item_type = Script_Item_Type_From_String(item);
        if (item_type == 0) continue;
        if (items.Count() >= Current_Limits().script_items) return Script_Status::Too_Many_Items;
        items.Append({item_type, item});
    }
    return Script_Status::Complete;
}

namespace {

QString Without_Outer_Blanks(const QString& text)
{
    qsizetype first = 0, behind = text.size();
    while (first < behind && text[first] == u' ') ++first;
    while (behind > first && text[behind - 1] == u' ') --behind;
    return text.mid(first, behind - first);
}

} // namespace

QString Join_Script_Items(const Script_Item_Array& items)
{
    QString script;
    for (int index = 1; index <= items.Count(); ++index) {
        if (!script.isEmpty()) script += u';';
        script += Without_Outer_Blanks(items.Item(index).Script_Item_String);
    }
    return script;
}

QString Script_Status_Text(Script_Status status)
{
    switch (status) {
    case Script_Status::Complete: break;
    case Script_Status::Invalid_Argument:
        return QStringLiteral("the script cannot be split: a Text item stands behind another item");
    case Script_Status::Too_Many_Items:
        return QStringLiteral("the script has more than %1 items").arg(Current_Limits().script_items);
    }
    return {};
}

const std::vector<Script_Set>& Prepared_Script_Sets()
{
    static const std::vector<Script_Set> sets = [] {
        constexpr std::pair<const char*, const char*> texts[] = {
            {"Contrast Optimize", "ConOpt(0.005,0.005,LUM)"},
            {"People", "ConOpt(0.005,0.005,LUM);Unsharp(0.75,0.25,1.5,2,5,K)"},
            {"Buildings/Machines", "ConOpt(0.005,0.005,LUM);Unsharp(0.25,0.75,1.5,5,2,K)"},
        };
        std::vector<Script_Set> built;
        for (const auto& [name, script] : texts) {
            built.push_back({QString::fromLatin1(name), {}});
            Parse_Script_Items(QString::fromLatin1(script), built.back().Script_Items);
        }
        return built;
    }();
    return sets;
}
