#include "catalogue/Selection_For_Function.h"

#include <numeric>

namespace {

constexpr int Least_Color_Depth = 9; // bits; 8 and below is grey or palette

std::vector<int> Candidates(const Catalogue_State& state, const Selection_Request& request)
{
    if (state.selection.Count() >= request.minimum || request.mode != Selection_Mode::All_If_None)
        return state.selection.Selected_Indices();
    std::vector<int> all(std::size_t(state.pictures.Count()));
    std::iota(all.begin(), all.end(), 1);
    return all;
}

} // namespace

std::vector<int> Pictures_For_Function(const Catalogue_State& state, const Selection_Request& request)
{
    User_Dialogs& dialogs = state.platform.dialogs;
    if (state.pictures.Count() < 1) {
        dialogs.Refuse(QStringLiteral("No pictures available."));
        return {};
    }
    std::vector<int> kept;
    int locked = 0;
    for (const int index : Candidates(state, request)) {
        const Picture_Item& item = state.pictures.Item(index);
        if (!Is_Free_For(item.Lock_Flags, request.access))
            ++locked;
        else if (request.grey_allowed || item.Pixel_Depth >= Least_Color_Depth)
            kept.push_back(index);
    }
    if (locked > 0)
        dialogs.Refuse(QStringLiteral("%1 picture%2 locked by another function.")
                           .arg(QString::number(locked), locked > 1 ? QStringLiteral("s") : QString()));
    else if (kept.empty() && request.mode == Selection_Mode::Selected_With_Message)
        dialogs.Refuse(QStringLiteral("No pictures selected for function."));
    return kept;
}
