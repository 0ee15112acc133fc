#include "frame/ui/Progress_Form.h"

#include "frame/ui/Form_Frame.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QFontMetrics>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QVBoxLayout>

namespace {

constexpr int Moment_Milliseconds = 400;
constexpr int Width_Pixels = 440;
constexpr int Text_Lines = 2;

QString Fitting(const QLabel& label, const QString& text)
{
    QStringList lines = text.split(u'\n');
    for (QString& line : lines) line = label.fontMetrics().elidedText(line.trimmed(), Qt::ElideMiddle, Width_Pixels);
    return lines.join(u'\n');
}

} // namespace

Progress_Form::Progress_Form(const Platform* platform, const QString& caption, const QString& text, QWidget* parent)
    : dialog_(new QDialog(parent))
{
    dialog_->setWindowTitle(caption.isEmpty() ? QStringLiteral("Halvine") : caption);
    dialog_->setModal(false);
    label_ = new QLabel;
    label_->setTextFormat(Qt::PlainText);
    label_->setFixedSize(Width_Pixels, Text_Lines * label_->fontMetrics().lineSpacing());
    label_->setText(Fitting(*label_, text));
    bar_ = new QProgressBar;
    bar_->setRange(0, 0);
    bar_->setAccessibleName(dialog_->windowTitle());
    auto* buttons = new QDialogButtonBox;
    auto* stop =
        buttons->addButton(QCoreApplication::translate("Progress_Form", "&Stop"), QDialogButtonBox::RejectRole);
    QObject::connect(stop, &QPushButton::clicked, dialog_, &QDialog::reject);
    QObject::connect(dialog_, &QDialog::rejected, dialog_, [this] { stopped_ = true; });
    auto* column = new QVBoxLayout(dialog_);
    column->addWidget(label_);
    column->addWidget(bar_);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
    new Form_Frame(*dialog_, platform, QStringLiteral("Halvine-Message")); // a child of the window
    since_start_.start();
}

Progress_Form::~Progress_Form()
{
    delete dialog_;
}

void Progress_Form::Show_When_Due()
{
    if (shown_ || stopped_ || since_start_.elapsed() < Moment_Milliseconds) return;
    shown_ = true;
    dialog_->show();
}

void Progress_Form::Show(const QString& text, int done, int total)
{
    if (dialog_ == nullptr) return;
    label_->setText(Fitting(*label_, text));
    bar_->setRange(0, std::max(total, 0));
    bar_->setValue(done);
    Show_When_Due();
}

bool Progress_Form::Stop_Requested()
{
    if (dialog_ != nullptr) Show_When_Due();
    QCoreApplication::processEvents();
    return stopped_ || dialog_ == nullptr;
}
