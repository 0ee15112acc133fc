#include "frame/program/Qt_Printer_Binding.h"

#include <QtPrintSupport/QPrinterInfo>

void Qt_Printer_Binding::Clear()
{
    printer_.reset();
    name_.clear();
}

bool Qt_Printer_Binding::Open_Printer(const QString& name)
{
    name_ = name;
    return !name.isEmpty();
}

void Qt_Printer_Binding::Open_Default_Printer()
{
    name_ = Read_Default_Printer().name;
}

QPrinter& Qt_Printer_Binding::Printer()
{
    if (printer_ == nullptr) {
        QPrinterInfo info = QPrinterInfo::printerInfo(name_);
        if (info.isNull()) info = QPrinterInfo::defaultPrinter();
        printer_ = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
        if (info.isNull()) printer_->setOutputFormat(QPrinter::PdfFormat);
        name_ = info.printerName();
    }
    return *printer_;
}
