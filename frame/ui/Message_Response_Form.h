#pragma once

#include "frame/ui/Framed_Form.h"

class QHBoxLayout;
class QPushButton;

/// A question with buttons of its own, such as Yes, Yes To All, No, Cancel. Closing the window is Cancel.
class Message_Response_Form final : public Framed_Form {
    Q_OBJECT

public:
    struct Button {
        QString caption;
        Response_Code code;
    };

    /// platform    keeps the window's place; null: the window is centred over its owner
    /// standard    what Enter answers
    Message_Response_Form(const Platform* platform, const QString& Dialog_Caption, const QString& Dialog_Prompt,
                          const std::vector<Button>& buttons, Response_Code standard, QWidget* parent);
    Response_Code Response(); ///< shows the window until it is answered

private:
    QPushButton* Add_Buttons(const std::vector<Button>& buttons, Response_Code standard, QHBoxLayout& row);
    Response_Code code_ = Response_Code::Cancel;
};
