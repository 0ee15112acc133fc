#include "frame/program/Qt_Printer_Binding.h"
#include "tests/support/Test_Folder.h"

#include <QtCore/QDir>
#include <QtPrintSupport/QPrinterInfo>
#include <gtest/gtest.h>

namespace {

/// A home without any printer of the user's.
class Printer_Binding_Test : public testing::Test {
protected:
    Printer_Binding_Test() { qputenv("HOME", folder.Path().c_str()); }
    ~Printer_Binding_Test() override { qputenv("HOME", home); }
    const QByteArray home = qgetenv("HOME");
    const Test_Folder folder;
    Qt_Printer_Binding binding;
};

TEST_F(Printer_Binding_Test, Believes_A_Name_From_The_Settings_Until_It_Is_Needed)
{
    EXPECT_TRUE(binding.Open_Printer("Laser in the attic"));
    EXPECT_EQ("Laser in the attic", binding.Device_Name().toStdString());
}

TEST_F(Printer_Binding_Test, An_Empty_Name_Leads_To_The_Default_Printer)
{
    EXPECT_FALSE(binding.Open_Printer({}));
    binding.Open_Default_Printer();
    EXPECT_EQ(Read_Default_Printer().name, binding.Device_Name()) << "the service was not asked yet";
    EXPECT_EQ(Read_Default_Printer().orientation, binding.Default_Orientation());
}

TEST_F(Printer_Binding_Test, The_Default_Printer_And_Its_Pages_Are_Those_Of_The_Users_File)
{
    QDir().mkpath(QString::fromStdString(folder.File(".cups")));
    Put_File(folder.File(".cups/lpoptions"), "Default Office orientation-requested=4\n");
    binding.Open_Default_Printer();
    EXPECT_EQ("Office", binding.Device_Name().toStdString());
    EXPECT_EQ(Page_Orientation::Landscape, binding.Default_Orientation());
}

TEST_F(Printer_Binding_Test, A_Printer_That_Is_Gone_Is_Replaced_When_It_Is_Needed)
{
    binding.Open_Printer("Laser in the attic");
    QPrinter& printer = binding.Printer();
    const QPrinterInfo standard = QPrinterInfo::defaultPrinter();
    EXPECT_EQ(standard.printerName(), binding.Device_Name());
    if (standard.isNull()) {
        EXPECT_EQ(QPrinter::PdfFormat, printer.outputFormat()) << "without any printer it writes PDF files";
    }
    EXPECT_EQ(&printer, &binding.Printer()) << "with the settings that it was given";
}

TEST_F(Printer_Binding_Test, Clear_Forgets_Printer_And_Settings)
{
    binding.Open_Printer("Laser in the attic");
    binding.Printer().setCopyCount(3);
    binding.Clear();
    EXPECT_EQ("", binding.Device_Name().toStdString());
    EXPECT_EQ(1, binding.Printer().copyCount());
}

} // namespace
