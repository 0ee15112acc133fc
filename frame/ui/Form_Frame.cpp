#include "frame/ui/Form_Frame.h"

#include "frame/ui/Twips.h"

#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>

namespace {

QPoint Screen_Origin()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen != nullptr ? screen->availableGeometry().topLeft() : QPoint();
}

QWidgetList& Forms_In_Order_Of_Opening()
{
    static QWidgetList forms;
    return forms;
}

} // namespace

Form_Frame::Form_Frame(QWidget& form, const Platform* platform, QString Value_Name, bool Design_From_Form)
    : QObject(&form),
      form_(form),
      platform_(platform),
      value_name_(platform != nullptr ? std::move(Value_Name) : QString()),
      design_from_form_(Design_From_Form),
      design_(Twips_From_Pixels(form.size()))
{
    form_.installEventFilter(this);
}

Form_Frame::~Form_Frame()
{
    Forms_In_Order_Of_Opening().removeAll(&form_);
}

QWidgetList Form_Frame::Open_Forms()
{
    return Forms_In_Order_Of_Opening();
}

void Form_Frame::Set_Design_Size(QSize design)
{
    designed_ = true;
    design_ = design;
    form_.setMinimumSize(Pixels_From_Twips(design));
}

void Form_Frame::Set_Design_Form_Width(int New_Design_Form_Width)
{
    Set_Design_Size({New_Design_Form_Width, design_.height()});
}

void Form_Frame::Set_Design_Form_Height(int New_Design_Form_Height)
{
    Set_Design_Size({design_.width(), New_Design_Form_Height});
}

void Form_Frame::Set_Form_Design_Size(const Program_State& state)
{
    // A screen smaller than the design still shows the whole window.
    const QSize screen = platform_ != nullptr ? platform_->shell.Screen_Size_Twips() : QSize();
    const QSize design =
        Form_Design_Size(design_from_form_, Twips_From_Pixels(form_.size()), {state.Design_Width, state.Design_Height});
    Set_Design_Size(screen.isEmpty() ? design : design.boundedTo(screen));
    Set_Design_Twips_Per_Pixel(state.Design_Twips_Per_Pixel);
}

void Form_Frame::Return_To_Design_Size()
{
    if (!form_.isMinimized() && !form_.isMaximized()) form_.resize(Pixels_From_Twips(design_));
}

void Form_Frame::Enlarge_To_Design_Size()
{
    const QSize design = Pixels_From_Twips(design_);
    if (form_.width() < design.width() || form_.height() < design.height()) form_.resize(design);
}

bool Form_Frame::Set_Always_On_Top(bool on)
{
    if (form_.windowHandle() == nullptr) form_.winId();
    QWindow* window = form_.windowHandle();
    if (window == nullptr) return false;
    // On the native window, because a change of the widget's flags would hide it.
    window->setFlag(Qt::WindowStaysOnTopHint, on);
    return true;
}

void Form_Frame::Restore()
{
    if (restored_ || value_name_.isEmpty()) return;
    restored_ = true;
    emit Restored(Restore_Form_Placement(*platform_, *this, value_name_, design_.width(), design_.height()));
}

void Form_Frame::Save()
{
    if (!value_name_.isEmpty()) Save_Form_Placement(platform_->settings, *this, value_name_, splitters_);
}

Form_Place Form_Frame::Place() const
{
    // The place to come back to, not that of a maximized or minimized window.
    const bool normal = !form_.isMaximized() && !form_.isMinimized() && !form_.isFullScreen();
    const QRect box = normal || form_.normalGeometry().isEmpty() ? form_.geometry() : form_.normalGeometry();
    const QPoint corner = (box.topLeft() - Screen_Origin()) * Twips_Per_Pixel;
    const QSize size = Twips_From_Pixels(box.size());
    return {corner.x(), corner.y(), size.width(), size.height()};
}

void Form_Frame::Move_To(const Form_Place& place)
{
    const QPoint corner(Pixels_From_Twips(place.left), Pixels_From_Twips(place.top));
    form_.setGeometry({corner + Screen_Origin(), Pixels_From_Twips(QSize(place.width, place.height))});
}

void Form_Frame::Shown()
{
    QWidgetList& forms = Forms_In_Order_Of_Opening();
    forms.removeAll(&form_);
    forms.append(&form_);
    if (!designed_) Set_Form_Design_Size(Program_State());
    Restore();
}

void Form_Frame::Hidden()
{
    Forms_In_Order_Of_Opening().removeAll(&form_);
    if (saves_itself_ && restored_) Save();
}

bool Form_Frame::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &form_ && !event->spontaneous()) { // not when the desktop minimizes the window
        if (event->type() == QEvent::Show) Shown();
        if (event->type() == QEvent::Hide) Hidden();
    }
    return QObject::eventFilter(watched, event);
}
