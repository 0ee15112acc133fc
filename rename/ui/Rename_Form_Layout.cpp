// The controls of the rename form and their connections.

#include "rename/ui/New_Name_Delegate.h"
#include "rename/ui/Rename_Describe_Windows.h"
#include "rename/ui/Rename_Form.h"

#include <QtWidgets/QGridLayout>

namespace {

constexpr int Longest_Text = 1000;
constexpr int Number_Width = 90; // pixels

template <class Widget>
Widget* Named(Widget* widget, const char* name)
{
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QLabel* Label_For(const QString& text, QWidget* buddy)
{
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

} // namespace

void Rename_Form::Make_Inputs()
{
    Rename_Change_From_Text_ = Named(new QLineEdit, "Rename_Change_From_Text");
    Rename_Change_To_Text_ = Named(new QLineEdit, "Rename_Change_To_Text");
    Rename_Pattern_Combo_ = Named(new QComboBox, "Rename_Pattern_Combo");
    Rename_Formula_Combo_ = Named(new QComboBox, "Rename_Formula_Combo");
    File_Type_Text_ = Named(new QLineEdit, "File_Type_Text");
    Start_Numbering_Text_ = Named(new QLineEdit, "Start_Numbering_Text");
    Reserialize_Check_ = Named(new QCheckBox(tr("Re&number all, by")), "Reserialize_Check");
    Reserialize_Interval_Text_ = Named(new QLineEdit(QStringLiteral("1")), "Reserialize_Interval_Text");
    Define_Pattern_Command_ = Named(new QPushButton(tr("Define...")), "Define_Pattern_Command");
    Define_Formula_Command_ = Named(new QPushButton(tr("Define...")), "Define_Formula_Command");
    Define_Pattern_Command_->setAccessibleName(tr("Define rename patterns"));
    Define_Formula_Command_->setAccessibleName(tr("Define rename formulas"));
    Reserialize_Interval_Text_->setAccessibleName(tr("Interval"));
    for (QPushButton* button : {Define_Pattern_Command_, Define_Formula_Command_}) button->setAutoDefault(false);
    for (QLineEdit* text : {Rename_Change_From_Text_, Rename_Change_To_Text_}) text->setMaxLength(Longest_Text);
    for (QLineEdit* text : {File_Type_Text_, Start_Numbering_Text_, Reserialize_Interval_Text_})
        text->setMaximumWidth(Number_Width);
    Rename_Change_From_Text_->setPlaceholderText(tr("what the names begin with"));
    Rename_Change_To_Text_->setPlaceholderText(tr("what takes its place"));
    File_Type_Text_->setPlaceholderText(tr("as it is"));

    auto* table = new QGridLayout;
    table->addWidget(Label_For(tr("Change &From"), Rename_Change_From_Text_), 0, 0);
    table->addWidget(Rename_Change_From_Text_, 0, 1);
    table->addWidget(Label_For(tr("&Pattern"), Rename_Pattern_Combo_), 0, 2);
    table->addWidget(Rename_Pattern_Combo_, 0, 3);
    table->addWidget(Define_Pattern_Command_, 0, 4);
    table->addWidget(Label_For(tr("Change &To"), Rename_Change_To_Text_), 1, 0);
    table->addWidget(Rename_Change_To_Text_, 1, 1);
    table->addWidget(Label_For(tr("Form&ula"), Rename_Formula_Combo_), 1, 2);
    table->addWidget(Rename_Formula_Combo_, 1, 3);
    table->addWidget(Define_Formula_Command_, 1, 4);
    table->setColumnStretch(1, 1);
    table->setColumnStretch(3, 1);
    auto* numbers = new QHBoxLayout;
    numbers->addWidget(Label_For(tr("&Start Numbering"), Start_Numbering_Text_));
    numbers->addWidget(Start_Numbering_Text_);
    numbers->addSpacing(12);
    numbers->addWidget(Reserialize_Check_);
    numbers->addWidget(Reserialize_Interval_Text_);
    numbers->addStretch();
    numbers->addWidget(Label_For(tr("File T&ype"), File_Type_Text_));
    numbers->addWidget(File_Type_Text_);
    Above().addLayout(table);
    Above().addLayout(numbers);
    // What the window was opened for, "Rename Selected" or "Copy/Rename Selected to Folder": nobody who wants copies is to
    // wonder whether the originals change their names.
    Execute_Command_ = &Add_Execute_Button(u'&' + windowTitle().section(QStringLiteral(" - "), -1));
    Add_Cancel();
}

void Rename_Form::Make_Grid()
{
    Set_Columns({{tr("Current Name"), 4, false},
                 {tr("New Name"), 5, false},
                 {tr("OR User Name/Type"), 4, true},
                 {QString(), 0, false}}); // the rows' picture indices
    Set_Row_Count(int(job_.Rows().size()));
    Grid().setAccessibleName(tr("Names"));
    Grid().setItemDelegateForColumn(1, new New_Name_Delegate(Grid().Content(), this));
    for (int row = 1; row <= Grid().Content().Rows(); ++row)
        Grid().Content().Set_CellValue(1, row, job_.Rows()[std::size_t(row) - 1].file_name);
    Grid().Content().Set_Active(3, 1);
}

void Rename_Form::Connect_Inputs()
{
    for (QLineEdit* text : {Rename_Change_From_Text_, Rename_Change_To_Text_, File_Type_Text_, Start_Numbering_Text_,
                            Reserialize_Interval_Text_})
        connect(text, &QLineEdit::textChanged, this, &Rename_Form::Take_Inputs);
    connect(Reserialize_Check_, &QCheckBox::toggled, this, &Rename_Form::Take_Inputs);
    connect(Rename_Formula_Combo_, &QComboBox::currentIndexChanged, this, &Rename_Form::Take_Inputs);
    connect(Rename_Pattern_Combo_, &QComboBox::currentIndexChanged, this, &Rename_Form::Take_Pattern);
    connect(Define_Pattern_Command_, &QPushButton::clicked, this, [this] {
        windows_.Rename_Pattern_Dialog();
        Fill_Lists();
        Take_Pattern();
    });
    connect(Define_Formula_Command_, &QPushButton::clicked, this, [this] {
        windows_.Rename_Formula_Dialog();
        Fill_Lists();
        Take_Inputs();
    });
    connect(&Grid(), &bkcGrid::CellChange, this, [this](int column, int row) {
        Grid_Model& content = Grid().Content();
        job_.Set_User_Name(std::size_t(row) - 1, content.CellValue(column, row).toString());
        content.Set_CellValue(column, row, job_.Rows()[std::size_t(row) - 1].user_name);
        Show_Model();
    });
    connect(Execute_Command_, &QPushButton::clicked, this, &Rename_Form::Execute);
}
