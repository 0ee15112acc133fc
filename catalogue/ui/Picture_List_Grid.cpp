#include "catalogue/ui/Picture_List_Grid.h"

#include "frame/text/Text_Utilities.h"

namespace {

struct List_Column {
    const char* title;
    int width; // pixels
    Grid_Text_Align align = Grid_Text_Align::Left;
};

constexpr List_Column Columns[] = {
    {QT_TRANSLATE_NOOP("Picture_List_Grid", "Path"), 160},
    {QT_TRANSLATE_NOOP("Picture_List_Grid", "Name"), 140},
    {QT_TRANSLATE_NOOP("Picture_List_Grid", "Type"), 60},
    {QT_TRANSLATE_NOOP("Picture_List_Grid", "Last Modified"), 170},
    {QT_TRANSLATE_NOOP("Picture_List_Grid", "Size"), 70, Grid_Text_Align::Right},
    {QT_TRANSLATE_NOOP("Picture_List_Grid", "Horz"), 55, Grid_Text_Align::Right},
    {QT_TRANSLATE_NOOP("Picture_List_Grid", "Vert"), 55, Grid_Text_Align::Right},
    {QT_TRANSLATE_NOOP("Picture_List_Grid", "Bits"), 40, Grid_Text_Align::Right},
    {QT_TRANSLATE_NOOP("Picture_List_Grid", "Speed, f/Stop, Flash"), 140},
    {QT_TRANSLATE_NOOP("Picture_List_Grid", "Description"), 220},
};

QVariant Value_Of(const Picture_Item& item, int column)
{
    switch (column) {
    case 1: return item.Path;
    case 2: return item.File_Name;
    case 3: return Extension_Part(item.File_Name).toUpper();
    case 4: return item.File_Date;
    case 5: return item.File_Size_KB;
    case 6: return item.Horz_Pixels;
    case 7: return item.Vert_Pixels;
    case 8: return item.Pixel_Depth;
    case 9: return item.Camera_Summary;
    default: return item.Description;
    }
}

void Set_Up_Column(Grid_Column_Record& column, int index)
{
    column.header_text = QCoreApplication::translate("Picture_List_Grid", Columns[index].title);
    column.width = Columns[index].width;
    column.text_align = int(Columns[index].align);
    column.header_text_align = Columns[index].align;
    // Dates stay numbers of days: turning a hundred thousand of them into times of the calendar takes a sort too long.
    if (index == 3) column.data_type = int(Grid_Data_Type::Date);
    if (index == 3) column.format[int(Grid_Data_Type::Date)] = QStringLiteral("General Date");
    if (index == 4) column.format[0] = QStringLiteral("#,##0\"KB\"");
}

} // namespace

Picture_List_Grid::Picture_List_Grid(const Catalogue_State& state, QWidget* parent) : bkcGrid(parent), state_(state)
{
    setTextElideMode(Qt::ElideMiddle); // names and paths differ at their ends
    Grid_Model& content = Content();
    content.Set_Columns(int(std::size(Columns)));
    content.Set_SelectionMode(2);
    for (const auto property : {Grid_Property::AllowColumnSort, Grid_Property::AllowColumnSizing,
                                Grid_Property::AllowCopy, Grid_Property::ScrollTrack, Grid_Property::ToolTipEnabled})
        content.Set(property, true);
    for (int i = 0; i < int(std::size(Columns)); ++i)
        content.Change_Column(i + 1, [i](Grid_Column_Record& column) { Set_Up_Column(column, i); });
}

void Picture_List_Grid::Fill()
{
    Grid_Model& content = Content();
    content.Set_AutoPaint(false);
    keys_.clear();
    std::vector<int> selected;
    for (int row = 1; row <= state_.pictures.Count(); ++row) {
        keys_.push_back(state_.pictures.Item(row).Picture_Key);
        if (state_.selection.Test_Key(keys_.back())) selected.push_back(row);
    }
    content.Set_Sourced_Rows(state_.pictures.Count(), [this](int column, int stored_row) {
        const Picture_Item* item = state_.pictures.Find(keys_[std::size_t(stored_row) - 1]);
        return item != nullptr ? Value_Of(*item, column) : QVariant();
    });
    content.Select_Rows(selected); // at once: each change of the selection is told
    content.Set_AutoPaint(true);
    Update();
    content.Set_Active(1, std::max(1, state_.Current_Picture_Index()));
}

int Picture_List_Grid::Key_At(int Grid_Row) const
{
    const int stored = Content().Stored_Row(Grid_Row);
    return stored > 0 ? keys_[std::size_t(stored) - 1] : 0;
}

void Picture_List_Grid::Take_Selection(Halvine_Form& form) const
{
    form.Set_Picture_Selected(0, false);
    for (const int row : Content().SelectedRowsReturn())
        form.Set_Picture_Selected(state_.pictures.Index_From_Key(Key_At(row)), true);
}
