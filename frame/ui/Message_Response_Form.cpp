#include "frame/ui/Message_Response_Form.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStyle>

namespace {

constexpr int Longest_Line_Pixels = 560;

} // namespace

Message_Response_Form::Message_Response_Form(const Platform* platform, const QString& Dialog_Caption,
                                             const QString& Dialog_Prompt, const std::vector<Button>& buttons,
                                             Response_Code standard, QWidget* parent)
    : Framed_Form(platform, QStringLiteral("Halvine-Message"), parent)
{
    setWindowTitle(Dialog_Caption.isEmpty() ? QStringLiteral("Halvine") : Dialog_Caption);
    auto* icon = new QLabel;
    const int size = style()->pixelMetric(QStyle::PM_MessageBoxIconSize, nullptr, this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxQuestion, nullptr, this).pixmap(size));
    auto* prompt = new QLabel(Dialog_Prompt);
    prompt->setTextFormat(Qt::PlainText);
    prompt->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // Wrapped only where it must be: a label that wraps asks for little width and would fold a short question.
    prompt->setWordWrap(prompt->sizeHint().width() > Longest_Line_Pixels);
    if (prompt->wordWrap()) prompt->setMinimumWidth(Longest_Line_Pixels);
    auto* top = new QHBoxLayout;
    top->addWidget(icon, 0, Qt::AlignTop);
    top->addWidget(prompt, 1);
    auto* row = new QHBoxLayout;
    row->addStretch();
    QPushButton* standard_button = Add_Buttons(buttons, standard, *row);
    auto* column = new QVBoxLayout(this);
    column->addLayout(top, 1);
    column->addLayout(row);
    if (standard_button != nullptr) standard_button->setFocus(); // only now is it a child of this window
    adjustSize();
}

QPushButton* Message_Response_Form::Add_Buttons(const std::vector<Button>& buttons, Response_Code standard,
                                                QHBoxLayout& row)
{
    QPushButton* standard_button = nullptr;
    for (const Button& button : buttons) {
        auto* push = new QPushButton(button.caption);
        push->setAutoDefault(true);
        push->setDefault(button.code == standard);
        connect(push, &QPushButton::clicked, this, [this, code = button.code] {
            code_ = code;
            accept();
        });
        row.addWidget(push);
        if (button.code == standard) standard_button = push;
    }
    return standard_button;
}

Response_Code Message_Response_Form::Response()
{
    code_ = Response_Code::Cancel;
    exec();
    return code_;
}
