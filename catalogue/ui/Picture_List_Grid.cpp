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
    case 4: return Date_Time_From_Date(item.File_Date);
    case 5: return item.File_Size_KB;
    case 6: return item.Horz_Pixels;
    case 7: return item.Vert_Pixels;
    case 8: return item.Pixel_Depth;
    case 9: return item.Camera_Summary;
    default: return item.Description;
    }
}

} // namespace

void Set_Up_Picture_List(bkcGrid& grid)
{
    grid.setTextElideMode(Qt::ElideMiddle); // names and paths differ at their ends
    Grid_Model& content = grid.Content();
    content.Set_Columns(int(std::size(Columns)));
    content.Set_SelectionMode(2);
    for (const auto property : {Grid_Property::AllowColumnSort, Grid_Property::AllowColumnSizing,
                                Grid_Property::AllowCopy, Grid_Property::ScrollTrack, Grid_Property::ToolTipEnabled})
        content.Set(property, true);
    for (int i = 0; i < int(std::size(Columns)); ++i)
        content.Change_Column(i + 1, [&](Grid_Column_Record& column) {
            column.header_text = QCoreApplication::translate("Picture_List_Grid", Columns[i].title);
            column.width = Columns[i].width;
            column.text_align = int(Columns[i].align);
            column.header_text_align = Columns[i].align;
            if (i == 3) column.format[int(Grid_Data_Type::Date)] = QStringLiteral("General Date");
            if (i == 4) column.format[0] = QStringLiteral("#,##0\"KB\"");
        });
}

void Fill_Picture_List(bkcGrid& grid, const Catalogue_State& state)
{
    Grid_Model& content = grid.Content();
    content.Set_AutoPaint(false);
    content.Clear_Sort_Keys();
    content.Set_Rows(0); // a new list stands in the order of the filmstrip
    content.Set_Rows(state.pictures.Count());
    std::vector<int> selected;
    for (int row = 1; row <= state.pictures.Count(); ++row) {
        const Picture_Item& item = state.pictures.Item(row);
        for (int column = 1; column <= int(std::size(Columns)); ++column)
            content.Set_CellValue(column, row, Value_Of(item, column));
        if (state.selection.Test_Index(row)) selected.push_back(row);
    }
    content.Select_Rows(selected); // at once: each change of the selection is told
    content.Set_AutoPaint(true);
    grid.Update();
    content.Set_Active(1, std::max(1, state.Current_Picture_Index()));
}

void Take_Selection(const bkcGrid& grid, Halvine_Form& form)
{
    form.Set_Picture_Selected(0, false);
    for (const int row : grid.Content().SelectedRowsReturn())
        form.Set_Picture_Selected(grid.Content().Stored_Row(row), true);
}
