#pragma once

#include "catalogue/Picture_Saver.h"

/// What the Save Options dialog gives back. The numbers are those of its option buttons.
struct Save_Options {
    enum class Scripts : int { Ignore = 0, Save_With = 1, Run = 2 } Script_Option = Scripts::Ignore;
    bool Save_Rotations_Flips = false;
    enum class Target : int { Original = 0, Auto_Copy = 1, Prompted_Copy = 2 } Save_Option = Target::Original;
    int Picture_Type = 0;                 ///< 0 the original's, 1 JPEG, 2 TIFF
    int JPEG_Quality = Quality_Of_Parent; ///< 0 to 100, -2 the parent's
};

/// A blank quality text means the parent's; one that is not all digits, or above 100, counts as blank.
int Save_Options_Quality(const QString& text);

/// The command "Save Selected As..." behind its dialog; returns the number of files saved. A picture whose save fails is
/// skipped without a message. The user's Stop ends the loop.
int Save_Selected_As(Catalogue_State& state, Picture_Saver& saver, Pick_Loop& pick, Picture_Pictures& pictures,
                     const Save_Options& options);
