#include "bkimgutl/core/Pixel_Origin.h"

// A symmetry is R^q M^m: mirror, then q quarter turns. Since a mirror turns the sense of rotation around, M R^q is
// R^-q M; that is all it takes to compose two.
Pixel_Symmetry Then(Pixel_Symmetry first, Pixel_Symmetry second)
{
    const int turned = second.mirrored ? -first.quarter_turns : first.quarter_turns;
    return {(second.quarter_turns + turned) & 3, first.mirrored != second.mirrored};
}

Pixel_Symmetry Symmetry_Of_Orientation(int orientation)
{
    constexpr Pixel_Symmetry upright_by[8] = {
        {0, false}, {0, true}, {2, false}, {2, true}, {1, true}, {3, false}, {3, true}, {1, false},
    };
    if (orientation < 1 || orientation > 8) return {};
    return upright_by[orientation - 1];
}

int Orientation_Of_Symmetry(Pixel_Symmetry symmetry)
{
    int orientation = 1;
    while (orientation < 8 && Symmetry_Of_Orientation(orientation) != symmetry) ++orientation;
    return orientation;
}
