#pragma once

#include "frame/Default_Printer.h"
#include "frame/Entry_Sequence.h"

#include <QtPrintSupport/QPrinter>

/// The printer of the run. A printer service on a network may take seconds to answer, so it is asked when the printer is
/// first needed. Until then a name from the settings is believed, and the default printer is what the files of this machine
/// tell of it.
class Qt_Printer_Binding final : public Printer_Binding {
public:
    void Clear() override;
    Page_Orientation Default_Orientation() const override { return Read_Default_Printer().orientation; }
    bool Open_Printer(const QString& name) override;
    void Open_Default_Printer() override;
    QString Device_Name() const override { return name_; }

    /// The bound printer with its settings; the system's default when the bound one is gone, and one that writes PDF
    /// files when there is none at all.
    QPrinter& Printer();

private:
    QString name_;
    std::unique_ptr<QPrinter> printer_;
};
