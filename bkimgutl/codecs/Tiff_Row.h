#pragma once

#include "bkimgutl/codecs/Tiff_Kind.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

/// Makes pixels of our kind from rows of samples as the TIFF library decodes them.
///
///   packed samples -> 16-bit numbers -> 8-bit samples -> grey or blue, green, red -> over the background where
///   transparent
class Tiff_Row_Converter {
public:
    explicit Tiff_Row_Converter(const Tiff_Kind& kind);

    /// planes  where the row starts: one for each sample when the planes are separate, else one
    /// out     takes count x Channels() bytes
    void Convert(std::span<const std::uint8_t* const> planes, int count, std::uint8_t* out);

private:
    void Unpack(std::span<const std::uint8_t* const> planes, int count);
    void Grey_Row(int count, std::uint8_t* out) const;
    void Palette_Row(int count, std::uint8_t* out) const;
    void RGB_Row(int count, std::uint8_t* out) const;
    void CMYK_Row(int count, std::uint8_t* out) const;
    void Lay_Over_Background(int count, std::uint8_t* out) const;
    const std::uint16_t* Sample(int number) const { return numbers_.data() + number * sample_offset_; }
    std::uint8_t To_Byte(std::uint16_t number) const;

    const Tiff_Kind& kind_;
    int channels_;
    std::vector<std::uint16_t> numbers_;
    int sample_offset_ = 1;                         ///< from a pixel's sample to its next one
    int pixel_step_ = 1;                            ///< from a pixel to the next one
    std::array<std::uint8_t, 256> small_to_byte_{}; ///< for up to 8 bits
};
