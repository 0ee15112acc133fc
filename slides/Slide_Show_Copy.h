#pragma once

#include "frame/files/Result.h"
#include "slides/Slide_Show_File.h"

#include <QtCore/QStringList>

/// Makes a show that stands by itself: copies the pictures into the target's folder as "ss001-NAME", "ss002-NAME", and
/// writes the keyword form, with the rotations but without the times of single pictures. A picture that cannot be copied
/// is left out and its number stays used; a copy never takes the place of a picture of the show. Returns the names that
/// were left out; fails when the show itself cannot be written.
Result<QStringList> Copy_Slide_Show(std::span<const Slide> slides, float seconds, const QString& target);
