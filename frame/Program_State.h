#pragma once

#include <QtCore/QString>
#include <vector>

/// A named text, such as a rename formula and its name.
struct Name_Value_Pair {
    QString Name;
    QString Value;
    bool operator==(const Name_Value_Pair&) const = default;
};

/// A list of pairs as the combo boxes show it: entry 0 is "(none)" with an empty value. It is not counted and never
/// stored; entries 1 to Count() are the user's.
class Name_Value_List {
public:
    Name_Value_List() { Reset(); }
    void Reset();
    void Append(const Name_Value_Pair& pair) { entries_.push_back(pair); }
    int Count() const { return int(entries_.size()) - 1; }
    /// 0 to Count(); anything else gives entry 0.
    const Name_Value_Pair& operator[](int index) const;
    bool operator==(const Name_Value_List&) const = default;

private:
    std::vector<Name_Value_Pair> entries_;
};

struct Background_Color {
    int red = 255, green = 255, blue = 255; ///< 0 to 255
    bool operator==(const Background_Color&) const = default;
};

/// Three values that the kernel splits colours to printing inks by.
struct CMYK_Setting {
    float black_gamma = 0.5F;
    int black_start = 0;
    int ink_limit = 765;
};

enum class Page_Orientation { Portrait = 1, Landscape = 2 };

/// What the program remembers for a run, with its values before any setting is read. The program owns one; windows and
/// routines get a reference. Lengths are twips.
struct Program_State {
    QString Default_Path;         ///< where the folder tree starts
    QString Default_Printer_Name; ///< device name, empty for the system's own default
    QString Default_Extensions = QStringLiteral("*.jpg;*.jif;*.tif");
    float Slide_Display_Interval = 2.0F; ///< seconds, 0.001 to 30
    Background_Color background;         ///< of the areas of a bitmap that no picture covers
    CMYK_Setting cmyk;
    Name_Value_List Rename_Patterns;
    Name_Value_List Rename_Formulas;
    Name_Value_List File_Data_Formulas;
    int Design_Width = 800 * 15;
    int Design_Height = 600 * 15;
    int Design_Twips_Per_Pixel = 12; ///< handed to every form
    Page_Orientation Default_Page_Orientation = Page_Orientation::Portrait;
    QString Last_Configuration_File; ///< of this run
};

/// Empties the three lists, so that each holds entry 0 alone.
void Reset_Formula_Lists(Program_State& state);

/// Gives the lists of rename and of file data formulas their first entries where the user has none of his own.
void Complete_Empty_Lists(Program_State& state);
