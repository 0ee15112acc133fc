#include "catalogue/ui/Save_Options_Dialog.h"

#include <QtWidgets/QtWidgets>

namespace {

constexpr int Least_Width_Pixels = 320; // for the caption

} // namespace

Save_Options_Dialog::Save_Options_Dialog(const Save_Options& last, QWidget* parent)
    : Framed_Form(nullptr, {}, parent), rotations_(new QCheckBox(tr("Save Rotations/&Flips"))), quality_(new QLineEdit)
{
    setWindowTitle(tr("Halvine Save Options"));
    setMinimumWidth(Least_Width_Pixels);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Group(tr("Scripts"), scripts_,
                            {tr("&Ignore Scripts"), tr("Save &With Scripts"), tr("&Run Scripts && Save")},
                            int(last.Script_Option)));
    rotations_->setChecked(last.Save_Rotations_Flips);
    layout->addWidget(rotations_);
    layout->addWidget(Group(tr("Target"), targets_,
                            {tr("Save To &Original"), tr("Save As &Auto Copy"), tr("Save As &Prompted Copy")},
                            int(last.Save_Option)));
    layout->addWidget(Group(tr("File Type"), types_,
                            {tr("Original File T&ype"), tr("&JPEG File Type"), tr("&TIFF File Type")},
                            last.Picture_Type));
    if (last.JPEG_Quality >= 0) quality_->setText(QString::number(last.JPEG_Quality));
    quality_->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("100|\\d{0,2}")), quality_));
    quality_->setToolTip(tr("JPEG quality, 0 (worst) to 100 (best), leave blank to use parent file quality"));
    quality_->setPlaceholderText(tr("as the parent file"));
    auto* form = new QFormLayout;
    form->addRow(tr("JPEG &quality:"), quality_);
    layout->addLayout(form);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    layout->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

QWidget* Save_Options_Dialog::Group(const QString& title, QButtonGroup& buttons, const QStringList& captions,
                                    int chosen)
{
    auto* box = new QGroupBox(title);
    auto* layout = new QVBoxLayout(box);
    for (int id = 0; id < captions.size(); ++id) {
        auto* button = new QRadioButton(captions[id]);
        button->setChecked(id == chosen);
        buttons.addButton(button, id);
        layout->addWidget(button);
    }
    return box;
}

Save_Options Save_Options_Dialog::Options() const
{
    return {.Script_Option = Save_Options::Scripts(scripts_.checkedId()),
            .Save_Rotations_Flips = rotations_->isChecked(),
            .Save_Option = Save_Options::Target(targets_.checkedId()),
            .Picture_Type = types_.checkedId(),
            .JPEG_Quality = Save_Options_Quality(quality_->text())};
}
