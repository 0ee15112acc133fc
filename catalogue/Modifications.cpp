#include "catalogue/Modifications.h"

#include <algorithm>
#include <numeric>

namespace {

bool Confirm_Abandon(const Catalogue_State& state, std::span<const int> indices, bool Picture_Item::*modified,
                     const QString& question)
{
    const auto count =
        std::count_if(indices.begin(), indices.end(), [&](int index) { return state.pictures.Item(index).*modified; });
    return count == 0 || state.platform.dialogs.Confirm(QString::number(count) + question);
}

} // namespace

std::vector<int> All_Or_Selected(const Catalogue_State& state, bool all)
{
    if (!all) return state.selection.Selected_Indices();
    std::vector<int> indices(std::size_t(state.pictures.Count()));
    std::iota(indices.begin(), indices.end(), 1);
    return indices;
}

bool Confirm_Abandon_Scripts(const Catalogue_State& state, bool all)
{
    return Confirm_Abandon_Scripts(state, All_Or_Selected(state, all));
}

bool Confirm_Abandon_Descriptions(const Catalogue_State& state, bool all)
{
    return Confirm_Abandon_Descriptions(state, All_Or_Selected(state, all));
}

bool Confirm_Abandon_Scripts(const Catalogue_State& state, std::span<const int> indices)
{
    return Confirm_Abandon(
        state, indices, &Picture_Item::Script_Modified,
        QStringLiteral(" scripts modified, do you wish to abandon modifications?\r\nTo save, click 'No' or 'Cancel' "
                       "then use Script menu to save modified scripts."));
}

bool Confirm_Abandon_Descriptions(const Catalogue_State& state, std::span<const int> indices)
{
    return Confirm_Abandon(
        state, indices, &Picture_Item::Description_Modified,
        QStringLiteral(" descriptions modified, do you wish to abandon modifications?\r\nTo save, click 'No' or "
                       "'Cancel' then use File menu, Save Selected As to save modified descriptions."));
}

void Discard_Scripts(Catalogue_State& state, bool all)
{
    for (const int index : All_Or_Selected(state, all)) {
        Picture_Item& item = state.pictures.Item(index);
        item.Script_Modified = !item.Script_Items.Is_Empty();
        item.Script_Items.Clear();
    }
}
