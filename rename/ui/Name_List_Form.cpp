#include "rename/ui/Name_List_Form.h"

namespace {

constexpr int None_Row = 1;
constexpr Stored_Color Grey_Text = System_Color(17);

} // namespace

Name_List_Form::Name_List_Form(Halvine_Form& catalogue, Look look, const Name_Value_List& list, QWidget* parent)
    : Rename_Describe_Form(catalogue, With_Pictures::No, parent), look_(std::move(look))
{
    setWindowTitle(look_.caption);
    Above().addWidget(new QLabel(look_.text));
    Set_Columns({{look_.name_column, 1, true}, {look_.value_column, 3, true}});
    Grid_Model& content = Grid().Content();
    content.Set(Grid_Property::AllowAddNew, 1);
    Set_Row_Count(list.Count() + 2);
    for (int row = 0; row <= list.Count(); ++row) {
        content.Set_CellValue(1, row + 1, list[row].Name);
        content.Set_CellValue(2, row + 1, list[row].Value);
    }
    content.Set_RowForeColor(None_Row, Grey_Text);
    Grid().Update();
    Grid().setAccessibleName(look_.text);
    connect(&Grid(), &bkcGrid::ActiveChange, this, [this](int, int row) {
        Allow_Edits_Of(row);
        Check_Row(row);
    });
    connect(&Grid(), &bkcGrid::CellChange, this, [this](int, int row) {
        Check_Row(row);
        if (row == Grid().Content().Rows()) Grid().Content().Set_Rows(row + 1); // the next new entry
        Grid().Update();
    });
    Status().setText(tr("An entry goes when both of its cells are cleared"));
    connect(&Add_Execute_Button(tr("Done")), &QPushButton::clicked, this, [this] {
        if (Finish_Edit()) accept();
    });
    content.Set_Active(1, content.Rows());
    Allow_Edits_Of(content.Rows());
    Grid().setFocus();
}

void Name_List_Form::Allow_Edits_Of(int row)
{
    for (const int number : {1, 2})
        Grid().Content().Change_Column(number,
                                       [row](Grid_Column_Record& column) { column.allow_update = row > None_Row; });
}

Name_Value_Pair Name_List_Form::Row(int row) const
{
    const Grid_Model& content = const_cast<Name_List_Form*>(this)->Grid().Content();
    return {content.CellValue(1, row).toString(), content.CellValue(2, row).toString()};
}

void Name_List_Form::Check_Row(int row)
{
    const Name_Value_Pair pair = Row(row);
    const bool is_checked = look_.check && row > None_Row && !pair.Value.isEmpty();
    Show_Fault(is_checked ? look_.check(pair) : std::nullopt, {.name = pair.Name, .text = pair.Value});
}

Name_Value_List Name_List_Form::List() const
{
    std::vector<Name_Value_Pair> rows;
    const int count = const_cast<Name_List_Form*>(this)->Grid().Content().Rows();
    for (int row = None_Row + 1; row <= count; ++row) rows.push_back(Row(row));
    return List_From_Rows(rows);
}
