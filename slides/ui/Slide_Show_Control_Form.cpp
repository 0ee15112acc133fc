#include "slides/ui/Slide_Show_Control_Form.h"

#include "frame/Settings_Store.h"
#include "slides/ui/Slide_Keys.h"

#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QVBoxLayout>

namespace {

enum Button { Play_Button = 1, Pause_Button, Stop_Button, Previous_Button, Next_Button, Select_Button };

const QString Place_Value = QStringLiteral("Halvine-Slide-Control");
constexpr int Space_Below = 40; // pixels

struct Control_Button {
    int id;
    const char* icon;
    const char* tooltip;
    Slide_Control_Code code;
};

constexpr Control_Button Buttons[] = {
    {Play_Button, "IDI_SLIDE_CONTROL_PLAY", QT_TRANSLATE_NOOP("Slide_Show_Control_Form", "Play"),
     Slide_Control_Code::Play},
    {Stop_Button, "IDI_SLIDE_CONTROL_STOP", QT_TRANSLATE_NOOP("Slide_Show_Control_Form", "Stop"),
     Slide_Control_Code::Stop},
    {Previous_Button, "IDI_SLIDE_CONTROL_PREVIOUS", QT_TRANSLATE_NOOP("Slide_Show_Control_Form", "Previous slide"),
     Slide_Control_Code::Previous},
    {Next_Button, "IDI_SLIDE_CONTROL_NEXT", QT_TRANSLATE_NOOP("Slide_Show_Control_Form", "Next Slide"),
     Slide_Control_Code::Next},
    {Select_Button, "IDI_SLIDE_CONTROL_SELECT", QT_TRANSLATE_NOOP("Slide_Show_Control_Form", "Select slide"),
     Slide_Control_Code::Select},
    {Pause_Button, "IDI_SLIDE_CONTROL_PAUSE", QT_TRANSLATE_NOOP("Slide_Show_Control_Form", "Pause"),
     Slide_Control_Code::Pause},
};

const Control_Button* Find_Button(int id)
{
    for (const Control_Button& button : Buttons)
        if (button.id == id) return &button;
    return nullptr;
}

} // namespace

Slide_Show_Control_Form::Slide_Show_Control_Form(Picture_Catalogue& catalogue, const Platform& platform,
                                                 const std::function<QIcon(const QString& id)>& icon, QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint),
      catalogue_(catalogue),
      panel_(new bkcButtonPanel),
      label_(new QLabel)
{
    setObjectName(QStringLiteral("Slide_Show_Control_Form"));
    setWindowTitle(tr("Slide Show"));
    setAttribute(Qt::WA_QuitOnClose, false);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setFocusPolicy(Qt::StrongFocus);
    if (icon) {
        select_icon_ = icon(QStringLiteral("IDI_SLIDE_CONTROL_SELECT"));
        selected_icon_ = icon(QStringLiteral("IDI_SLIDE_CONTROL_SELECTED"));
    }
    Make_Panel(icon);
    label_->setObjectName(QStringLiteral("Slide_Label"));
    label_->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 6);
    layout->setSpacing(4);
    layout->addWidget(panel_);
    layout->addWidget(label_);
    slide_index_ = slide_count_ = 9999; // as wide as the label of a long show
    Show_State();
    setFixedSize(sizeHint());
    frame_ = new Form_Frame(*this, &platform, Place_Value);
    if (platform.settings.Read_Value(Settings_Key, Place_Value).isEmpty())
        connect(frame_, &Form_Frame::Restored, this, &Slide_Show_Control_Form::Move_To_Edge);
}

/// Without a remembered place: at the lower edge of the screen, where it covers least of the picture.
void Slide_Show_Control_Form::Move_To_Edge()
{
    const QRect area = screen()->availableGeometry();
    QRect place(QPoint(), frameSize());
    place.moveCenter(area.center());
    place.moveBottom(area.bottom() - Space_Below);
    move(place.topLeft());
}

void Slide_Show_Control_Form::Make_Panel(const std::function<QIcon(const QString& id)>& icon)
{
    panel_->setObjectName(QStringLiteral("Slide_Control_bkcButtonPanel"));
    panel_->setAccessibleName(tr("Slide show"));
    panel_->setFrameShape(QFrame::NoFrame);
    panel_->Set_AutoPaint(false);
    panel_->Change_Properties([](Button_Panel_Properties& properties) {
        properties.ButtonWidth = properties.ButtonHeight = 40;
        properties.ButtonPictureWidth = properties.ButtonPictureHeight = 24;
        properties.HorizontalSpacing = properties.VerticalSpacing = 0;
    });
    for (const Control_Button& button : Buttons)
        panel_->Add_Button(button.id, tr(button.tooltip), icon ? icon(QLatin1String(button.icon)) : QIcon());
    panel_->Set_Visible(Pause_Button, false);
    panel_->Set_AutoPaint(true);
    panel_->Autosize();
    panel_->setFixedSize(panel_->size());
    panel_->setFocusPolicy(Qt::NoFocus); // the arrows step through the slides
    connect(panel_, &bkcButtonPanel::Click, this, [this](int, int, bool, int id) {
        if (const Control_Button* button = Find_Button(id)) Control(button->code);
    });
}

/// The only routine that writes into the controls.
void Slide_Show_Control_Form::Show_State()
{
    if (offers_pause_ != playing_) panel_->Exchange(Play_Button, Pause_Button);
    offers_pause_ = playing_;
    const bool selected = catalogue_.Slide_Show_Test_Slide_Selected(slide_index_);
    panel_->Picture(Select_Button, selected ? selected_icon_ : select_icon_);
    QString text = tr("Slide %1 of %2").arg(slide_index_).arg(slide_count_);
    if (!playing_) text += tr(" (Paused)");
    label_->setText(text);
}

void Slide_Show_Control_Form::Form_Display(int Slide_Index, int Slide_Count, bool Start_In_Play_Mode)
{
    slide_index_ = Slide_Index;
    slide_count_ = Slide_Count;
    playing_ = Start_In_Play_Mode;
    Show_State();
    show();
    frame_->Set_Always_On_Top(true);
    raise();
    activateWindow(); // for its keys
    setFocus();
}

void Slide_Show_Control_Form::Set_Slide_Index(int Slide_Index)
{
    slide_index_ = Slide_Index;
    Show_State();
}

void Slide_Show_Control_Form::Set_Slide_Count(int Slide_Count)
{
    slide_count_ = Slide_Count;
    Show_State();
}

void Slide_Show_Control_Form::Set_Playing(bool playing)
{
    playing_ = playing;
    Show_State();
}

void Slide_Show_Control_Form::Form_Erase()
{
    if (isActiveWindow() && parentWidget() != nullptr) parentWidget()->activateWindow(); // gives the keyboard back
    hide();
}

void Slide_Show_Control_Form::keyPressEvent(QKeyEvent* event)
{
    if (const auto code = Slide_Key_Code(*event))
        Control(*code);
    else
        QWidget::keyPressEvent(event);
}

/// The cross in the corner stops the show, which takes the window away.
void Slide_Show_Control_Form::closeEvent(QCloseEvent* event)
{
    Control(Slide_Control_Code::Stop);
    event->accept();
}
