#include "rename/ui/Value_Form.h"

Value_Form::Value_Form(Halvine_Form& catalogue, Look look, const std::vector<int>& indices, const QStringList& values,
                       QWidget* parent)
    : Rename_Describe_Form(catalogue, With_Pictures::Yes, parent)
{
    setWindowTitle(look.caption);
    Status().setText(look.status);
    Set_Columns({{tr("Name"), 2, false}, {look.value_column, 4, true}});
    Set_Row_Count(int(indices.size()));
    Set_Pictures(indices);
    Grid_Model& content = Grid().Content();
    for (int row = 1; row <= content.Rows(); ++row) {
        content.Set_CellValue(1, row, catalogue.State().pictures.Item(indices[std::size_t(row) - 1]).File_Name);
        content.Set_CellValue(2, row, values[row - 1]);
    }
    Grid().Update();
    Grid().setAccessibleName(look.value_column);
    connect(&Grid(), &bkcGrid::BeforeCellChange, this,
            [this, refusal = look.refusal](int, int, const QString& text, bool& cancel) {
                const QString reason = refusal(text);
                cancel = !reason.isEmpty();
                if (cancel) Ports().dialogs.Refuse(reason);
            });
    connect(&Add_Execute_Button(look.button), &QPushButton::clicked, this, [this] {
        if (Finish_Edit()) accept();
    });
    Add_Cancel();
    content.Set_Active(2, 1);
    Grid().setFocus();
}

QStringList Value_Form::Values()
{
    QStringList values;
    for (int row = 1; row <= Grid().Content().Rows(); ++row) values << Grid().Content().CellValue(2, row).toString();
    return values;
}
