#pragma once

#include "catalogue/Catalogue_State.h"

/// The texts of the main window.

QString Picture_Status_Text(int count, int selected);            ///< "3 pictures, 1 selected"
QString File_Status_Text(int count, int selected, bool folders); ///< "3 files, 1 selected", "1 folder"

/// "(2*) sea.jpg (14-Mar-26 03:09 PM, 812KB)": the place in the selection, "*" for a pending rotation.
QString Picture_Text(const Catalogue_State& state, int index); ///< empty when there is no such picture

/// "Halvine v0.1 (0.1.0) - show - sea.jpg"; empty parts are left out.
QString Window_Caption(const QString& short_version, const QString& long_version, const QString& slide_show_file,
                       const QString& picture_name);

/// For screen readers: name, date, size, camera line, selection.
QString Spoken_Picture_Text(const Catalogue_State& state, int index);
