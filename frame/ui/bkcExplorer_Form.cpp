#include "frame/ui/bkcExplorer_Form.h"

#include "frame/Folder_Name.h"
#include "frame/text/Path_Utilities.h"
#include "frame/ui/Icon_Set.h"

#include <QtWidgets/QtWidgets>

namespace {

/// The folder itself, or the nearest one above it that is there; home where nothing is left.
QString Nearest_Folder(const QString& path)
{
    QString folder = Without_Trailing_Separator(Existing_Path(path));
    while (!folder.isEmpty() && folder != u"/" && !Is_Folder(folder))
        folder = Without_Trailing_Separator(Folder_Part(folder));
    return Is_Folder(folder) ? folder : QDir::homePath();
}

} // namespace

bkcExplorer_Form::bkcExplorer_Form(const Platform* platform, User_Dialogs& dialogs, QWidget* parent)
    : Framed_Form(platform, QStringLiteral("Halvine-bkcExplorer"), parent),
      dialogs_(dialogs),
      explorer_(new bkcExplorer),
      folder_(new QLineEdit),
      name_label_(new QLabel),
      name_(new QLineEdit),
      pattern_label_(new QLabel(tr("File t&ypes:"))),
      pattern_(new QComboBox)
{
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(Make_Top());
    layout->addWidget(explorer_, 1);
    layout->addLayout(Make_Bottom());
    Connect_Explorer();
    resize(760, 460);
}

QLayout* bkcExplorer_Form::Make_Top()
{
    const auto button = [](const QString& icon, const QString& tip) {
        auto* made = new QToolButton;
        made->setIcon(Icon(icon));
        made->setIconSize({20, 20});
        made->setAutoRaise(true);
        made->setFocusPolicy(Qt::TabFocus);
        made->setToolTip(tip);
        made->setAccessibleName(tip);
        return made;
    };
    auto* label = new QLabel(tr("&Look in:"));
    label->setBuddy(folder_);
    back_ = button(QStringLiteral("IDI_EXPLORER_BACK"), tr("Back to the folder before"));
    up_ = button(QStringLiteral("IDI_EXPLORER_UP"), tr("Up to the folder above"));
    auto* new_folder = button(QStringLiteral("IDI_HALVINE_NEW_FOLDER"), tr("Create new folder..."));
    connect(back_, &QToolButton::clicked, this, [this] { Go_To(explorer_->PreviousPath()); });
    connect(up_, &QToolButton::clicked, this, &bkcExplorer_Form::Go_Up);
    connect(new_folder, &QToolButton::clicked, this, [this] { New_Folder(explorer_->Path()); });
    auto* row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(folder_, 1);
    for (auto* each : {back_, up_, new_folder}) row->addWidget(each);
    return row;
}

QLayout* bkcExplorer_Form::Make_Bottom()
{
    name_label_->setBuddy(name_);
    pattern_label_->setBuddy(pattern_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    ok_ = buttons->button(QDialogButtonBox::Ok);
    connect(buttons, &QDialogButtonBox::accepted, this, &bkcExplorer_Form::Take_Name);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(name_, &QLineEdit::textChanged, this,
            [this](const QString& text) { ok_->setEnabled(!text.trimmed().isEmpty()); });
    connect(pattern_, &QComboBox::currentIndexChanged, this, [this](int row) {
        if (row >= 0) explorer_->Set_ExplorerPattern(pattern_->itemData(row).toString());
    });
    auto* grid = new QGridLayout;
    grid->addWidget(name_label_, 0, 0);
    grid->addWidget(name_, 0, 1);
    grid->addWidget(pattern_label_, 1, 0);
    grid->addWidget(pattern_, 1, 1);
    grid->addWidget(buttons, 2, 0, 1, 2);
    return grid;
}

void bkcExplorer_Form::Connect_Explorer()
{
    explorer_->Split().Set_Orientation(Split_Orientation::Horizontal);
    explorer_->Split().Set_SplitRatio(0.35);
    explorer_->ExplorerGrid().Content().Set_SelectionMode(1);
    explorer_->ExplorerGrid().Drag_Data = nullptr;
    explorer_->ExplorerTree().Set_BrowseOnly(true);
    explorer_->ExplorerTree().Set_Icons(Folder_Icon(), Icon(QStringLiteral("IDI_HOME")));
    connect(explorer_, &bkcExplorer::ChangePath, this, &bkcExplorer_Form::Show_Folder);
    connect(explorer_, &bkcExplorer::SelChange, this, &bkcExplorer_Form::Take_Row);
    connect(explorer_, &bkcExplorer::Create, this, [this](QString parent) { New_Folder(parent); });
    connect(explorer_, &bkcExplorer::GridDblClick, this, [this] {
        if (!Picks_Folder()) Take_Name();
    });
    connect(&Frame(), &Form_Frame::Restored, this, [this](const std::vector<float>& positions) {
        if (!positions.empty()) explorer_->Split().Set_SplitRatio(double(positions.front()));
    });
    connect(&explorer_->Split(), &bkcSplit::SplitRatioChanged, this,
            [this](double ratio) { Frame().Set_Splitter_Positions({float(ratio)}); });
    folder_->installEventFilter(this);
}

bool bkcExplorer_Form::Explorer(int Explorer_Function, const QString& Explorer_Caption, QString& Explorer_Path,
                                const QString& Explorer_Pattern, QString& Explorer_FileName)
{
    const bool known = Explorer_Function == 1 || Explorer_Function == 2;
    function_ = known ? ::Explorer_Function(Explorer_Function) : ::Explorer_Function::Open_File;
    Prepare(Explorer_Caption, Explorer_Path, Explorer_Pattern, Explorer_FileName);
    if (exec() != QDialog::Accepted) return false;
    Explorer_Path = Picks_Folder() ? taken_ : Folder_Part(taken_);
    Explorer_FileName = Picks_Folder() ? QString() : Name_Part(taken_);
    return true;
}

void bkcExplorer_Form::Prepare(const QString& caption, const QString& folder, const QString& pattern,
                               const QString& name)
{
    setWindowTitle(caption.isEmpty() ? QStringLiteral("Halvine") : caption);
    name_label_->setText(Picks_Folder() ? tr("&Folder:") : tr("File &name:"));
    pattern_label_->setVisible(!Picks_Folder());
    pattern_->setVisible(!Picks_Folder());
    explorer_->Set_ExplorerGridMode(Picks_Folder() ? Explorer_Grid_Mode::Folders : Explorer_Grid_Mode::Files);
    explorer_->Set_EmptyMessage(Picks_Folder() ? QString() : tr("No such files in this folder"));
    pattern_->clear();
    Show_Pattern(pattern.isEmpty() ? QStringLiteral("*.*") : pattern);
    explorer_->Set_Path(Nearest_Folder(folder));
    Show_Folder();
    if (!Picks_Folder()) name_->setText(name);
    const int base = int(Base_Name_Part(name).size());
    name_->setSelection(0, Picks_Folder() || base == 0 ? int(name_->text().size()) : base); // the extension stays
    ok_->setEnabled(!name_->text().trimmed().isEmpty());
    name_->setFocus();
}

void bkcExplorer_Form::Show_Pattern(const QString& pattern)
{
    if (pattern_->findData(pattern) < 0) pattern_->addItem(pattern, pattern);
    if (pattern_->findData(QStringLiteral("*.*")) < 0) pattern_->addItem(tr("All files (*.*)"), QStringLiteral("*.*"));
    pattern_->setCurrentIndex(pattern_->findData(pattern));
}

void bkcExplorer_Form::Show_Folder()
{
    const QString path = explorer_->Path();
    folder_->setText(path);
    back_->setEnabled(!explorer_->PreviousPath().isEmpty());
    up_->setEnabled(path != u"/");
    if (Picks_Folder()) name_->setText(path);
    if (function_ == Explorer_Function::Open_File) name_->clear(); // it was that of a file in another folder
}

void bkcExplorer_Form::Go_To(const QString& folder)
{
    const auto answer = Answer_Of_Explorer(Explorer_Function::Pick_Folder, explorer_->Path(), {}, folder);
    if (answer.kind == Explorer_Answer::Kind::Taken && explorer_->Set_Path(answer.text)) return Show_Folder();
    dialogs_.Refuse(answer.text);
}

void bkcExplorer_Form::Go_Up()
{
    Go_To(QStringLiteral(".."));
}

void bkcExplorer_Form::Take_Row()
{
    const QStringList selected = explorer_->Selected_Files();
    if (Picks_Folder())
        name_->setText(selected.isEmpty() ? explorer_->Path() : selected.front());
    else if (!selected.isEmpty())
        name_->setText(Name_Part(selected.front()));
}

void bkcExplorer_Form::Take_Name()
{
    using Meant = Explorer_Answer::Kind;
    const auto answer = Answer_Of_Explorer(function_, explorer_->Path(), explorer_->ExplorerPattern(), name_->text());
    switch (answer.kind) {
    case Meant::Taken: taken_ = answer.text; return accept();
    case Meant::Folder: Go_To(answer.text); break;
    case Meant::Pattern: Show_Pattern(answer.text); break;
    case Meant::Refused: dialogs_.Refuse(answer.text); break;
    }
    name_->setFocus();
    name_->selectAll();
}

void bkcExplorer_Form::New_Folder(const QString& parent)
{
    const auto made = Make_New_Folder(dialogs_, parent);
    if (!made) return;
    explorer_->RefreshTree(parent);
    Go_To(*made);
}

// Enter in the field of the folder goes there and closes nothing.
bool bkcExplorer_Form::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == folder_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) return Go_To(folder_->text()), true;
    }
    return Framed_Form::eventFilter(watched, event);
}

void bkcExplorer_Form::Explorer_Tree_Refresh(const QString& Refresh_FolderName, bool)
{
    explorer_->RefreshTree(Without_Trailing_Separator(Refresh_FolderName));
}
