#include "frame/program/Qt_Printer_Binding.h"

#include <QtPrintSupport/QPrinterInfo>
#include <gtest/gtest.h>

namespace {

TEST(Printer_Binding, Believes_A_Name_From_The_Settings_Until_It_Is_Needed)
{
    Qt_Printer_Binding binding;
    EXPECT_TRUE(binding.Open_Printer("Laser in the attic"));
    EXPECT_EQ("Laser in the attic", binding.Device_Name().toStdString());
}

TEST(Printer_Binding, An_Empty_Name_Leads_To_The_Default_Printer)
{
    Qt_Printer_Binding binding;
    EXPECT_FALSE(binding.Open_Printer({}));
    binding.Open_Default_Printer();
    EXPECT_EQ("", binding.Device_Name().toStdString()) << "nobody was asked yet";
}

TEST(Printer_Binding, A_Printer_That_Is_Gone_Is_Replaced_When_It_Is_Needed)
{
    Qt_Printer_Binding binding;
    binding.Open_Printer("Laser in the attic");
    QPrinter& printer = binding.Printer();
    const QPrinterInfo standard = QPrinterInfo::defaultPrinter();
    EXPECT_EQ(standard.printerName(), binding.Device_Name());
    if (standard.isNull()) {
        EXPECT_EQ(QPrinter::PdfFormat, printer.outputFormat()) << "without any printer it writes PDF files";
    }
    EXPECT_EQ(&printer, &binding.Printer()) << "with the settings that it was given";
}

TEST(Printer_Binding, Clear_Forgets_Printer_And_Settings)
{
    Qt_Printer_Binding binding;
    binding.Open_Printer("Laser in the attic");
    binding.Printer().setCopyCount(3);
    binding.Clear();
    EXPECT_EQ("", binding.Device_Name().toStdString());
    EXPECT_EQ(1, binding.Printer().copyCount());
    EXPECT_EQ(Page_Orientation::Portrait, binding.Default_Orientation());
}

} // namespace
