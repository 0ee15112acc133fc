// The parts of the main window and where they stand.

#include "catalogue/ui/Halvine_Window.h"
#include "catalogue/Recover_Folder.h"

#include "catalogue/ui/Elided_Label.h"
#include "frame/ui/Icon_Set.h"

Halvine_Window::Halvine_Window(Halvine_Window_Parts parts)
    : parts_(std::move(parts)), frame_(*this, &parts_.ports.platform, Main_Window_Placement, /*Design_From_Form=*/false)
{
    setObjectName(QStringLiteral("Halvine_Form"));
    frame_.Set_Saves_Itself(false); // the close of the program decides
    connect(&frame_, &Form_Frame::Restored, this, &Halvine_Window::Set_Splitter_Positions);
    auto* central = new QWidget;
    auto* layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    Make_Panel();
    layout->addWidget(panel_);
    file_split_ = new bkcSplit;
    file_split_->setObjectName(QStringLiteral("File_bkcSplit"));
    QWidget* files = Make_File_Frame();
    QWidget* pictures = Make_Pictures();
    file_split_->Initialize(nullptr, files, pictures);
    file_split_->Set_MinSplitRatio(0.15);
    file_split_->Set_MaxSplitRatio(0.6);
    file_split_->Set_SplitRatio(0.3);
    layout->addWidget(file_split_, 1);
    layout->addWidget(Make_Status_Frame());
    setCentralWidget(central);
    Make_Menus();
    Connect_Parts();
    parts_.form.Set_View(this);
    commands_.Save_Configuration_On_Exit = true;
    actions_later_.setSingleShot(true);
    connect(&actions_later_, &QTimer::timeout, this, &Halvine_Window::Show_Actions);
}

Halvine_Window::~Halvine_Window()
{
    hide(); // what ends an edit does so while there is still a window
    parts_.form.Set_View(nullptr);
}

std::unique_ptr<Halvine_Window> Make_Halvine_Window(Halvine_Window_Parts parts)
{
    return std::make_unique<Halvine_Window>(std::move(parts));
}

void Halvine_Window::Make_Panel()
{
    panel_ = new bkcButtonPanel;
    panel_->setObjectName(QStringLiteral("Halvine_bkcButtonPanel"));
    panel_->setAccessibleName(tr("Commands"));
    panel_->Set_AutoPaint(false);
    panel_->Change_Properties([](Button_Panel_Properties& properties) {
        properties.ButtonWidth = properties.ButtonHeight = 40;
        properties.ButtonPictureWidth = properties.ButtonPictureHeight = 24;
        properties.HorizontalSpacing = properties.VerticalSpacing = 0;
        properties.HorizontalSpacerWidth = 5;
    });
    int group = 1;
    for (const Panel_Entry& entry : Panel_Table()) {
        if (entry.group != group) panel_->Add_Spacer();
        group = entry.group;
        panel_->Add_Button(entry.id, QCoreApplication::translate("Command_Table", entry.tooltip),
                           Icon_Of(QLatin1String(entry.icon)));
        if (entry.hidden) panel_->Set_Visible(entry.id, false);
    }
    panel_->Set_AutoPaint(true);
    panel_->setFrameShape(QFrame::NoFrame);
    panel_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QWidget* Halvine_Window::Make_File_Frame()
{
    file_frame_ = new QWidget;
    file_frame_->setObjectName(QStringLiteral("File_Frame"));
    explorer_ = new bkcExplorer;
    explorer_->setObjectName(QStringLiteral("f_bkcExplorer"));
    explorer_->ExplorerTree().Set_Icons(Folder_Icon(), Icon(QStringLiteral("IDI_HOME")));
    explorer_->Set_Before_Listing(
        [this](const QString& folder) { Recover_Folder(parts_.form.State().platform, folder); });
    pattern_text_ = new QLineEdit;
    pattern_text_->setObjectName(QStringLiteral("Picture_Path_Pattern_Text"));
    pattern_text_->setToolTip(tr("File patterns, separated by semicolons"));
    auto* label = new QLabel(tr("File t&ypes:"));
    label->setBuddy(pattern_text_);
    auto* pattern = new QHBoxLayout;
    pattern->setContentsMargins(6, 2, 2, 2);
    pattern->addWidget(label);
    pattern->addWidget(pattern_text_, 1);
    auto* layout = new QVBoxLayout(file_frame_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(explorer_, 1);
    layout->addLayout(pattern);
    return file_frame_;
}

QWidget* Halvine_Window::Make_Pictures()
{
    strip_ = new Filmstrip_Widget(parts_.form);
    magnify_ = new Magnify_Widget(Icon_Of(QStringLiteral("IDI_ZOOM_IN")), Icon_Of(QStringLiteral("IDI_ZOOM_OUT")));
    picture_split_ = new bkcSplit;
    picture_split_->setObjectName(QStringLiteral("Picture_bkcSplit"));
    picture_split_->Initialize(nullptr, strip_, magnify_);
    picture_split_->Set_SplitRatio(0.57); // three columns in a window of the usual size
    magnify_->hide();                     // until there is a current picture
    list_ = new Picture_List_Grid(parts_.form.State());
    list_->setObjectName(QStringLiteral("Picture_List_bkcGrid"));
    list_->setAccessibleName(tr("Thumbnail list"));
    pages_ = new QStackedWidget;
    pages_->setObjectName(QStringLiteral("Picture_Frame"));
    pages_->addWidget(picture_split_);
    pages_->addWidget(list_);
    return pages_;
}

QWidget* Halvine_Window::Make_Status_Frame()
{
    status_frame_ = new QWidget;
    status_frame_->setObjectName(QStringLiteral("Status_Frame"));
    auto* layout = new QHBoxLayout(status_frame_);
    layout->setContentsMargins(6, 2, 6, 2);
    layout->setSpacing(12);
    const auto add_label = [&](QLabel*& label, const char* name, QLabel* made, int stretch) {
        label = made;
        label->setObjectName(QLatin1String(name));
        label->setTextFormat(Qt::PlainText);
        layout->addWidget(label, stretch);
    };
    add_label(file_status_, "File_Status_Label", new QLabel, 0);
    add_label(picture_status_, "Picture_Status_Label", new QLabel, 0);
    add_label(current_label_, "Current_Picture_Label", new Elided_Label, 1); // a name may be long
    progress_frame_ = new QWidget;
    progress_frame_->setObjectName(QStringLiteral("Pick_Progress_Frame"));
    auto* progress = new QHBoxLayout(progress_frame_);
    progress->setContentsMargins(0, 0, 0, 0);
    progress_bar_ = new QProgressBar;
    progress_bar_->setTextVisible(false);
    progress_bar_->setFixedSize(160, 14);
    progress_bar_->setAccessibleName(tr("Pick progress"));
    progress_bar_->setToolTip(tr("How much of the pick is done; the first button stops it"));
    progress_label_ = new QLabel;
    progress->addWidget(progress_bar_);
    progress->addWidget(progress_label_);
    progress_frame_->hide();
    layout->addWidget(progress_frame_);
    add_label(design_size_, "Design_Size_Label", new QLabel, 0);
    design_size_->setToolTip(tr("Size of the window; double-click for the standard size"));
    design_size_->installEventFilter(this);
    auto* help = new QPushButton(tr("Help"));
    help->setObjectName(QStringLiteral("Help_Command"));
    auto* help_key = new QAction(help->text(), this); // of the window: the button is hidden in the large view
    help_key->setShortcut(QKeySequence::HelpContents);
    addAction(help_key);
    connect(help_key, &QAction::triggered, this, &Halvine_Window::Help);
    help->setToolTip(tr("Help (F1)"));
    connect(help, &QPushButton::clicked, this, &Halvine_Window::Help);
    layout->addWidget(help);
    return status_frame_;
}

void Halvine_Window::Connect_Parts()
{
    connect(panel_, &bkcButtonPanel::Click, this, [this](int button, int shift, bool, int id) {
        commands_.Press_Panel(id, button, shift);
        Schedule_Actions();
    });
    connect(strip_, &Filmstrip_Widget::Current_Wanted, this,
            [this](int index) { parts_.form.Pictures().Set_Current_Picture(index); });
    connect(strip_, &Filmstrip_Widget::Popup_Wanted, this, [this](const QPoint& point) {
        Show_Actions();
        popup_->popup(point);
    });
    connect(strip_, &Filmstrip_Widget::Blow_Up_Wanted, this, [this] { Show_Full_Window(true); });
    connect(strip_, &Filmstrip_Widget::Files_Dropped, this, [this](const QStringList& paths) {
        commands_.Pick_Dropped(paths);
        Schedule_Actions();
    });
    connect(magnify_, &Magnify_Widget::Full_Window_Wanted, this, [this](bool on) {
        if (on)
            Show_Full_Window(true);
        else
            Leave_Full_Window_View();
    });
    connect(explorer_, &bkcExplorer::SelChange, this, &Halvine_Window::Show_Status);
    connect(explorer_, &bkcExplorer::ChangePath, this, &Halvine_Window::Show_Status);
    connect(explorer_, &bkcExplorer::Listed, this, &Halvine_Window::Show_Status);
    Connect_Folder_Pane();
    connect(pattern_text_, &QLineEdit::editingFinished, this, [this] { Set_Pattern_String(pattern_text_->text()); });
    connect(list_, &bkcGrid::SelChange, this, [this] {
        if (!Shows_Picture_List()) return;
        list_->Take_Selection(parts_.form);
        Update_Status();
    });
    connect(list_, &bkcGrid::DblClick, this, [this](int, int row) {
        const int index = parts_.form.State().pictures.Index_From_Key(list_->Key_At(row));
        if (index < 1) return; // it went meanwhile
        Leave_Picture_List();
        parts_.form.Pictures().Set_Current_Picture(index);
        strip_->Scroll_To_Index(index);
    });
}
