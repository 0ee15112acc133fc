#pragma once

#include <QtGui/QColor>
#include <QtGui/QIcon>

/// The drawn icons of the program, by resource id ("IDI_HALVINE_PICK"). They are sharp at any size and scale, and take
/// the colours of the palette in force at the moment they are drawn. An unknown id gives a null icon.
QIcon Icon(const QString& id);

/// The icon of the program itself.
QIcon Program_Icon();

/// A folder, which is drawn open in the state On: that of an open row of a tree.
QIcon Folder_Icon();

/// All ids, sorted.
QStringList Icon_Ids();

/// The drawing of an icon with its tones replaced: strokes in `text`, accents lighter where the text is light on dark.
/// With `enabled` off everything is one faint tone. Empty for an unknown id.
QByteArray Icon_Drawing(const QString& id, const QColor& text, bool enabled);
