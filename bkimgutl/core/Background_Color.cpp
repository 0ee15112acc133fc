#include "bkimgutl/core/Background_Color.h"

#include <atomic>

namespace {

// In one number: pictures are read on other threads while the user chooses another colour.
std::atomic<std::uint32_t> packed_color = 0;

} // namespace

Background_Color Current_Background_Color()
{
    const std::uint32_t packed = packed_color;
    return {.red = std::uint8_t(packed >> 16), .green = std::uint8_t(packed >> 8), .blue = std::uint8_t(packed)};
}

void Set_Background_Color(const Background_Color& color)
{
    packed_color = std::uint32_t(color.red) << 16 | std::uint32_t(color.green) << 8 | color.blue;
}
