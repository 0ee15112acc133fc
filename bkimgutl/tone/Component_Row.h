#pragma once

#include <cstdint>

/// Luminance of `width` pixels of B,G,R, exactly as RGB_To_Luminance has it.
void Luminance_Row(const std::uint8_t* pixels, int width, std::uint8_t* luminance);

/// All blue bytes, then all green, then all red.
void Split_Row(const std::uint8_t* pixels, int width, std::uint8_t* channels);
