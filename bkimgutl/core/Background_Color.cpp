#include "bkimgutl/core/Background_Color.h"

namespace {

Background_Color& The_Color()
{
    static Background_Color color;
    return color;
}

} // namespace

const Background_Color& Current_Background_Color()
{
    return The_Color();
}

void Set_Background_Color(const Background_Color& color)
{
    The_Color() = color;
}
