#include "catalogue/File_Following.h"

#include "bkimgutl/contract/Load_Ahead.h"
#include "catalogue/Picture_Locks.h"
#include "frame/text/Path_Utilities.h"

#include <algorithm>

std::vector<int> Indices_Of_File(const Catalogue_State& state, const QString& file_name)
{
    std::vector<int> indices = state.pictures.Indices_From_Name(file_name);
    std::erase_if(indices, [&](int index) { return state.pictures.Item(index).Full_Name() != file_name; });
    return indices;
}

std::vector<int> Indices_Below(const Catalogue_State& state, const QString& folder)
{
    const QString below = With_Trailing_Separator(folder);
    std::vector<int> indices;
    for (int index = 1; index <= state.pictures.Count(); ++index)
        if (state.pictures.Item(index).Path.startsWith(below)) indices.push_back(index);
    return indices;
}

bool Any_Is_Locked(const Catalogue_State& state, std::span<const int> indices)
{
    return std::any_of(indices.begin(), indices.end(),
                       [&](int index) { return Is_Locked(state.pictures.Item(index).Lock_Flags); });
}

void File_Following::Remove(const std::vector<int>& indices)
{
    if (indices.empty()) return;
    const int shown = state_.Current_Picture_Index();
    pick_.Remove_Pictures(indices);
    // What moved up into the place of the current picture is shown next.
    if (shown > 0 && state_.current_picture_key == 0)
        pictures_.Set_Current_Picture(std::min(shown, state_.pictures.Count()));
    Names_Changed();
}

void File_Following::Names_Changed()
{
    if (state_.slide_show->Is_File_Open()) state_.slide_show->Set_File_Modified();
}

void File_Following::Rename(const std::vector<int>& indices, const QString& folder, const QString& name)
{
    for (const int index : indices) {
        state_.pictures.Set_Name(index, folder, name);
        Picture_Pictures::Read_File_Facts(state_.pictures.Item(index)); // a copy is another file on the disk
    }
    if (!indices.empty()) Names_Changed();
}

void File_Following::File_Moved(const QString& from, const QString& to)
{
    Remove(Indices_Of_File(state_, to));
    Rename(Indices_Of_File(state_, from), Folder_Part(to), Name_Part(to));
}

void File_Following::Files_Renamed(std::span<const std::pair<QString, QString>> from_to)
{
    std::vector<std::vector<int>> indices;
    for (const auto& names : from_to) indices.push_back(Indices_Of_File(state_, names.first));
    for (std::size_t i = 0; i < from_to.size(); ++i)
        Rename(indices[i], Folder_Part(from_to[i].second), Name_Part(from_to[i].second));
}

void File_Following::Folder_Moved(const QString& from, const QString& to)
{
    const QString below = With_Trailing_Separator(from);
    for (const int index : Indices_Below(state_, from)) {
        const Picture_Item& item = state_.pictures.Item(index);
        Rename({index}, With_Trailing_Separator(to) + item.Path.mid(below.size()), item.File_Name);
    }
}

void File_Following::File_Replaced(const QString& file_name)
{
    for (const int index : Indices_Of_File(state_, file_name)) pictures_.Read_New_File(index);
}

void File_Following::Show_All()
{
    state_.view->Draw_All_Thumbnails();
    state_.view->Update_Status();
}
