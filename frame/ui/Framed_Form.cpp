#include "frame/ui/Framed_Form.h"

Framed_Form::Framed_Form(const Platform* platform, const QString& Value_Name, QWidget* parent, Kind kind)
    : QDialog(parent), frame_(new Form_Frame(*this, platform, Value_Name))
{
    if (kind == Kind::Working_Window)
        setWindowFlags(Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint);
}

bool Framed_Form::Agree_To_Close()
{
    agreed_ = agreed_ || May_Close();
    return agreed_;
}

void Framed_Form::reject()
{
    if (!Agree_To_Close()) return;
    agreed_ = false; // the window may be opened again
    QDialog::reject();
}
