#pragma once

#include "frame/ports/Platform.h"

#include <span>
#include <vector>

/// Where a window stands; twips, 1440 to the inch, from the top left corner of the screen.
struct Form_Place {
    int left = 0, top = 0, width = 0, height = 0;
    bool operator==(const Form_Place&) const = default;
};

/// A window that remembers its place.
class Placed_Form {
public:
    virtual ~Placed_Form() = default;
    virtual Form_Place Place() const = 0;
    virtual void Move_To(const Form_Place& place) = 0;
};

/// A place with the positions of the window's splitters, as the text
///     WOR:<left>:<top>,WSZ:<width>:<height>,SPR:<position>
/// Splitter positions are fractions, 0 to 1, with three decimals.
struct Placement_Record {
    Form_Place place;
    std::vector<float> splitters;
    bool operator==(const Placement_Record&) const = default;
};

/// Reads the records of a placement in any order; others are passed over. A number outside 0..2147483647 is not taken:
/// its field gets the number that was read before it in the record, or 0.
Placement_Record Read_Placement_Record(const QString& text);
QString Placement_Record_Text(const Form_Place& place, std::span<const float> splitters);

/// The place for a record's numbers: at least the minimum, smaller than the screen by 2 twips or more, and centred along
/// an axis where the window would touch the screen's edge or stand outside.
Form_Place Restored_Place(const Form_Place& recorded, QSize minimum, QSize screen);
Form_Place Centred_Place(QSize size, QSize screen);

/// The size that a window is designed for: its own where it says so, else the global one, with its own for a 0.
QSize Form_Design_Size(bool Design_From_Form, QSize form, QSize global);

/// Stores the place of a window in a value of the settings ("Halvine-Adjust" and the like).
void Save_Form_Placement(Settings_Map& settings, const Placed_Form& form, const QString& Value_Name,
                         std::span<const float> Splitter_Positions = {});

/// Moves the window to its stored place, or centres it at its present size when there is none. Returns the stored
/// splitter positions.
std::vector<float> Restore_Form_Placement(const Platform& platform, Placed_Form& form, const QString& Value_Name,
                                          int Minimum_Width, int Minimum_Height);
