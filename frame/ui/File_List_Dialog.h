#pragma once

#include "frame/ui/Utility_Grid_Form.h"

/// A list of files to read, with OK, and with Cancel where it is a question. Accepted on OK.
class File_List_Dialog final : public Utility_Grid_Form {
    Q_OBJECT

public:
    /// platform    keeps the window's place; may be null
    File_List_Dialog(const Platform* platform, const QString& Dialog_Caption, const QStringList& File_Name,
                     bool Cancel_Enabled, QWidget* parent);
};
