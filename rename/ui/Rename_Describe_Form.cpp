#include "rename/ui/Rename_Describe_Form.h"

#include <QtGui/QShortcut>

namespace {

constexpr int Design_Width = 820;
constexpr int Design_Height = 520;
constexpr int Pane_Width = 250;

// Red, 0x00BBGGRR.
constexpr Stored_Color Fault_On_Light = 0x2020C0;
constexpr Stored_Color Fault_On_Dark = 0x8080FF;
constexpr int Dark_Lightness = 128; // of windows, out of 255

} // namespace

Rename_Describe_Form::Rename_Describe_Form(Halvine_Form& catalogue, With_Pictures with_pictures, QWidget* parent)
    : Framed_Form(&catalogue.State().platform, QStringLiteral("Halvine-Rename-Describe"), parent),
      catalogue_(catalogue),
      grid_(new bkcGrid),
      above_(new QVBoxLayout),
      status_(new QLabel),
      Formula_Error_Label_(new QLabel),
      Formula_Error_Text_(new QLineEdit),
      buttons_(new QHBoxLayout)
{
    grid_->setObjectName(QStringLiteral("Rename_bkcGrid"));
    status_->setObjectName(QStringLiteral("Status_Label"));
    status_->setWordWrap(true); // what it says never makes the window wider
    Formula_Error_Frame_ = Make_Fault_Frame();
    QWidget* middle = grid_;
    if (with_pictures == With_Pictures::Yes) {
        pane_ = new Picture_Pane(catalogue);
        auto* splitter = new QSplitter;
        splitter->addWidget(grid_);
        splitter->addWidget(pane_);
        splitter->setStretchFactor(0, 3);
        splitter->setStretchFactor(1, 1);
        splitter->setChildrenCollapsible(false);
        splitter->setAccessibleName(tr("Rows and picture"));
        splitter->handle(1)->setAccessibleName(tr("Splitter between rows and picture"));
        splitter->setSizes({Design_Width - Pane_Width, Pane_Width});
        middle = splitter;
        connect(grid_, &bkcGrid::ActiveChange, this, [this](int, int row) {
            const int stored = grid_->Content().Stored_Row(row);
            pane_->Show_Picture(stored >= 1 && stored <= int(keys_.size()) ? keys_[std::size_t(stored) - 1] : 0);
        });
    }
    buttons_->addWidget(status_, 1);
    auto* column = new QVBoxLayout(this);
    column->addLayout(above_);
    column->addWidget(middle, 1);
    column->addWidget(Formula_Error_Frame_);
    column->addLayout(buttons_);
    resize(Design_Width, Design_Height);
}

QFrame* Rename_Describe_Form::Make_Fault_Frame()
{
    auto* frame = new QFrame;
    frame->setObjectName(QStringLiteral("Formula_Error_Frame"));
    frame->setFrameShape(QFrame::StyledPanel);
    Formula_Error_Label_->setObjectName(QStringLiteral("Formula_Error_Label"));
    Formula_Error_Label_->setWordWrap(true);
    Formula_Error_Label_->setTextFormat(Qt::PlainText);
    Formula_Error_Text_->setObjectName(QStringLiteral("Formula_Error_Text"));
    Formula_Error_Text_->setReadOnly(true);
    Formula_Error_Text_->setAccessibleName(tr("Formula with its fault selected"));
    auto* column = new QVBoxLayout(frame);
    column->addWidget(Formula_Error_Label_);
    column->addWidget(Formula_Error_Text_);
    frame->hide();
    return frame;
}

void Rename_Describe_Form::Set_Columns(std::initializer_list<Column> columns)
{
    Grid_Model& content = grid_->Content();
    content.Set_AutoPaint(false);
    content.Set_Columns(int(columns.size()));
    content.Set_SelectionMode(1);
    content.Set(Grid_Property::AllowUpdate, 1);
    content.Set(Grid_Property::AllowColumnSizing, 1);
    const auto editable =
        std::count_if(columns.begin(), columns.end(), [](const Column& made) { return made.editable; });
    content.Set(Grid_Property::TabBehavior, editable > 1 ? 1 : 0);
    if (editable == 1) grid_->findChild<QLineEdit*>(QStringLiteral("bkcCell_Text"))->installEventFilter(this);
    int number = 0;
    for (const Column& made : columns)
        content.Change_Column(++number, [&](Grid_Column_Record& column) {
            column.header_text = made.title;
            column.width_proportional = made.share;
            if (made.share == 0) column.width = 0;
            column.allow_update = made.editable;
            column.data_type = int(Grid_Data_Type::String);
        });
}

bool Rename_Describe_Form::eventFilter(QObject* watched, QEvent* event)
{
    const auto* key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event) : nullptr;
    if (key == nullptr || !grid_->EditCellActive() || (key->key() != Qt::Key_Return && key->key() != Qt::Key_Enter))
        return Framed_Form::eventFilter(watched, event);
    if (!Finish_Edit()) return true;
    Grid_Model& content = grid_->Content();
    content.Set_Active(content.ActiveColumn(), std::min(content.ActiveRow() + 1, content.Rows()));
    grid_->CellForceVisible(content.ActiveColumn(), content.ActiveRow());
    return true;
}

void Rename_Describe_Form::Set_Row_Count(int count)
{
    grid_->Content().Set_Rows(0);
    grid_->Content().Set_Rows(count);
}

void Rename_Describe_Form::Set_Pictures(const std::vector<int>& indices)
{
    keys_.clear();
    for (const int index : indices) keys_.push_back(catalogue_.State().pictures.Item(index).Picture_Key);
    if (pane_ != nullptr && !keys_.empty()) pane_->Show_Picture(keys_.front());
}

QPushButton& Rename_Describe_Form::Add_Button(const QString& caption, const char* object_name)
{
    auto* button = new QPushButton(caption);
    button->setObjectName(QString::fromLatin1(object_name));
    button->setAutoDefault(false);
    buttons_->addWidget(button);
    return *button;
}

QPushButton& Rename_Describe_Form::Add_Execute_Button(const QString& caption)
{
    QPushButton& button = Add_Button(caption, "Execute_Command");
    button.setToolTip(tr("Ctrl+Enter"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(Qt::CTRL | key, this), &QShortcut::activated, &button, &QPushButton::click);
    return button;
}

void Rename_Describe_Form::Add_Cancel()
{
    connect(&Add_Button(tr("Cancel"), "Cancel_Command"), &QPushButton::clicked, this, &QDialog::reject);
}

void Rename_Describe_Form::Show_Fault(const std::optional<Formula_Fault>& fault, const Chosen_Formula& formula)
{
    Formula_Error_Frame_->setVisible(fault.has_value());
    if (!fault) return;
    Formula_Error_Label_->setText(Formula_Fault_Line(*fault, formula.name));
    QPalette palette = Formula_Error_Label_->palette();
    const bool is_dark = palette.color(QPalette::Window).lightness() < Dark_Lightness;
    palette.setColor(QPalette::WindowText, Color_Of(is_dark ? Fault_On_Dark : Fault_On_Light, palette));
    Formula_Error_Label_->setPalette(palette);
    Formula_Error_Text_->setText(formula.text);
    const int start = std::clamp(fault->position - 1, 0, int(formula.text.size()));
    Formula_Error_Text_->setSelection(start, int(formula.text.size()) - start);
}
