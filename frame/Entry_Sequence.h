#pragma once

#include "frame/Program_State.h"
#include "frame/ports/Platform.h"

/// What the start sets in the pixel library.
class Kernel_Setup {
public:
    virtual ~Kernel_Setup() = default;
    virtual void Set_CMYK_Parameters(const CMYK_Setting& setting) = 0;
    virtual void Set_Background_Color(const Background_Color& color) = 0;
    virtual int Live_Bitmaps() const = 0; ///< created and not yet released
};

/// The printer and its settings, which the program holds from its start to its end.
class Printer_Binding {
public:
    virtual ~Printer_Binding() = default;
    virtual void Clear() = 0; ///< no printer, no settings
    virtual Page_Orientation Default_Orientation() const = 0;
    virtual bool Open_Printer(const QString& name) = 0; ///< false when there is no such printer
    virtual void Open_Default_Printer() = 0;            ///< without a dialog; without any printer nothing is bound
    virtual QString Device_Name() const = 0;            ///< empty when none is bound
};

/// The main window as the start sees it. Each routine of the start calls these in its own order.
class Starting_Window {
public:
    virtual ~Starting_Window() = default;
    virtual void Load() = 0;
    virtual void Open_Slide_Show(const QString& path) = 0; ///< picks its pictures; a failure leaves the window empty
    virtual void Show() = 0;                               ///< not modally
    virtual void Enlarge_To_Design_Size() = 0;             ///< when it is smaller; left and top stay
    virtual void Start_Drawing() = 0;                      ///< the filmstrip draws from now on; help knows the window
    virtual bool Has_Pictures() const = 0;
    virtual void Start_Slide_Show() = 0;
    virtual void Set_Alias_String(const QString& alias) = 0;
    virtual void Set_Pattern_String(const QString& pattern) = 0;
};

struct Entry_Ports {
    Platform& platform;
    Kernel_Setup& kernel;
    Printer_Binding& printer;
    QSize twips_per_pixel{15, 15}; ///< of the screen
};

/// Everything that happens before there is a window: defaults, kernel, stored settings, lists, printer. Sets the whole
/// state. Returns the alias string for the folder tree.
QString Prepare_Program(Program_State& state, const Entry_Ports& ports);

/// Shows the main window. What remains of the arguments behind leading blanks is the path of a slide show.
void Display_Main_Window(Starting_Window& window, const QString& Command_Line_Arguments);

/// The whole start: Prepare_Program, then the window, which is made only now, then its alias and file pattern. The
/// program lives on the window's events from here on.
void Run_Entry(Program_State& state, const Entry_Ports& ports, const std::function<Starting_Window&()>& make_window,
               const QString& Command_Line_Arguments);
