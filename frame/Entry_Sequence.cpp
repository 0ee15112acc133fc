#include "frame/Entry_Sequence.h"

#include "frame/Settings_Store.h"
#include "frame/text/Text_Utilities.h"

namespace {

constexpr int Design_Width_Pixels = 800;
constexpr int Design_Height_Pixels = 600;

void Bind_Printer(const Program_State& state, Printer_Binding& printer)
{
    if (!state.Default_Printer_Name.isEmpty() && printer.Open_Printer(state.Default_Printer_Name)) return;
    printer.Open_Default_Printer();
}

} // namespace

QString Prepare_Program(Program_State& state, const Entry_Ports& ports)
{
    state = Program_State();
    state.Design_Width = Design_Width_Pixels * ports.twips_per_pixel.width();
    state.Design_Height = Design_Height_Pixels * ports.twips_per_pixel.height();
    ports.printer.Clear();
    ports.kernel.Set_CMYK_Parameters(state.cmyk);
    ports.kernel.Set_Background_Color(state.background);
    Reset_Formula_Lists(state);
    state.Default_Page_Orientation = ports.printer.Default_Orientation();
    Read_Settings_String(state, Read_Stored_Value(ports.platform.settings, Settings_Value));
    Complete_Empty_Lists(state);
    Bind_Printer(state, ports.printer);
    return Read_Stored_Value(ports.platform.settings, Alias_Value);
}

void Display_Main_Window(Starting_Window& window, const QString& Command_Line_Arguments)
{
    window.Load();
    int position = 1;
    Skip_Blanks(Command_Line_Arguments, position);
    const QString path = Command_Line_Arguments.mid(position - 1);
    if (!path.isEmpty()) window.Open_Slide_Show(path);
    window.Show();
    window.Enlarge_To_Design_Size();
    window.Start_Drawing();
    if (window.Has_Pictures()) window.Start_Slide_Show();
}

void Run_Entry(Program_State& state, const Entry_Ports& ports, const std::function<Starting_Window&()>& make_window,
               const QString& Command_Line_Arguments)
{
    const QString alias = Prepare_Program(state, ports);
    Starting_Window& window = make_window();
    Display_Main_Window(window, Command_Line_Arguments);
    window.Set_Alias_String(alias);
    window.Set_Pattern_String(state.Default_Extensions);
}
