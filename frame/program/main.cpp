// halvine: the desktop program. Everything is made here, once, and handed to those who need it; the order of the start is
// that of Run_Entry.

#include "catalogue/Halvine_Form.h"
#include "catalogue/Kept_Work_Offer.h"
#include "catalogue/ui/Halvine_Window.h"
#include "catalogue/ui/Qt_Window_System.h"
#include "frame/State_Folder.h"
#include "frame/program/Program_Arguments.h"
#include "frame/program/Program_Kernel.h"
#include "frame/program/Qt_Printer_Binding.h"
#include "frame/program/Rename_Wiring.h"
#include "frame/program/Slide_Wiring.h"
#include "frame/text/Path_Utilities.h"
#include "frame/ui/Icon_Set.h"
#include "frame/ui/Qt_Platform.h"
#include "frame/ui/Twips.h"

#include <QtGui/QPalette>
#include <QtWidgets/QApplication>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <langinfo.h>

namespace {

/// File names are bytes in UTF-8 whatever the terminal says.
void Use_Utf8()
{
    const char* const locale = std::setlocale(LC_CTYPE, "");
    if (locale == nullptr || std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) setenv("LC_ALL", "C.UTF-8", 1);
}

/// Without a display Qt would end the program as if it had crashed. A platform that was named is believed.
bool Has_Display(int argc, char** argv)
{
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        if (!qEnvironmentVariableIsEmpty(name)) return true;
    for (int i = 1; i < argc; ++i)
        if (std::strncmp(argv[i], "-platform", 9) == 0 || std::strncmp(argv[i], "--platform", 10) == 0) return true;
    return false;
}

void Describe(QApplication& application)
{
    application.setApplicationName(QStringLiteral("Halvine"));
    application.setApplicationVersion(QStringLiteral(HALVINE_VERSION));
    application.setDesktopFileName(QStringLiteral("halvine"));
    application.setWindowIcon(Program_Icon());
}

/// A folder from the environment goes before the remembered one.
void Take_Start_Folder(Program_State& state)
{
    const QByteArray folder = qgetenv("HALVINE_START_FOLDER");
    if (!folder.isEmpty()) state.Default_Path = Path_From_Bytes(folder);
}

/// HALVINE_PALETTE=dark, for desktops that do not tell Qt that they are dark.
void Take_Palette()
{
    if (qgetenv("HALVINE_PALETTE") != "dark") return;
    QApplication::setStyle(QStringLiteral("fusion"));
    const QColor window(0x2b, 0x2b, 0x2b);
    const QColor text(0xee, 0xee, 0xee);
    QPalette palette(text, window.lighter(140), window.lighter(200), window.darker(160), window.lighter(120), text,
                     Qt::white, window.darker(130), window);
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0x7e, 0xc8));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x6d, 0xb3, 0xff));
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, window.lighter(140));
    palette.setColor(QPalette::ToolTipText, text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x80, 0x80, 0x80));
    QApplication::setPalette(palette);
}

int Run(const QString& command_line)
{
    Qt_Platform desktop;
    const Qt_Window_System window_system;
    Program_Kernel kernel;
    Qt_Printer_Binding printer;
    const Entry_Ports ports{desktop.platform, kernel, printer, {Twips_Per_Pixel, Twips_Per_Pixel}};
    Program_State state;
    Halvine_Form catalogue(desktop.platform);
    std::unique_ptr<Halvine_Window> window;
    std::unique_ptr<Slide_Wiring> slides; // goes before the window
    std::unique_ptr<Rename_Wiring> rename;
    const auto make_window = [&]() -> Starting_Window& {
        Take_Start_Folder(state);
        window = Make_Halvine_Window({.form = catalogue,
                                      .state = state,
                                      .ports = ports,
                                      .icon = Icon,
                                      .short_version = QStringLiteral(HALVINE_SHORT_VERSION),
                                      .long_version = QStringLiteral(HALVINE_VERSION)});
        slides = std::make_unique<Slide_Wiring>(catalogue, *window, state, desktop.platform, Icon);
        rename = std::make_unique<Rename_Wiring>(catalogue, *window, state, Standard_Journal_Folder());
        rename->Bring_Slide_Times(slides->Commands());
        rename->Put_Interrupted_Right();
        return *window;
    };
    Run_Entry(state, ports, make_window, command_line);
    Work_Journal journal(catalogue.State(), State_Folder());
    Offer_Kept_Work(catalogue, journal, State_Folder());
    journal.Start();
    catalogue.Set_Work_Keeper(&journal);
    const int status = QApplication::exec();
    catalogue.Set_Work_Keeper(nullptr);
    journal.Remove();
    return status;
}

} // namespace

int main(int argc, char** argv)
{
    Use_Utf8();
    if (const auto status = Answer_Without_Window(argc, argv)) return *status;
    if (!Has_Display(argc, argv)) {
        std::fputs("halvine: there is no display to open a window on; hv works without one\n", stderr);
        return 1;
    }
    QApplication application(argc, argv);
    const auto arguments = Read_Arguments(argc, argv);
    if (!arguments) return Wrong_Usage;
    Describe(application);
    Take_Palette();
    return Run(arguments->show);
}
