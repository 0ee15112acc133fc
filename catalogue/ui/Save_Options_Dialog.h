#pragma once

#include "catalogue/Save_Selected_As.h"
#include "frame/ui/Framed_Form.h"

#include <QtWidgets/QButtonGroup>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLineEdit>

/// Asks how the selected pictures are saved, beginning with the answers of the last time. accepted() is "Save".
class Save_Options_Dialog : public Framed_Form {
    Q_OBJECT

public:
    explicit Save_Options_Dialog(const Save_Options& last = {}, QWidget* parent = nullptr);
    Save_Options Options() const;

private:
    QWidget* Group(const QString& title, QButtonGroup& buttons, const QStringList& captions, int chosen);
    QButtonGroup scripts_, targets_, types_;
    QCheckBox* rotations_;
    QLineEdit* quality_;
};
