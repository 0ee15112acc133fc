#include "bkimgutl/codecs/Tiff_Row.h"

#include "bkimgutl/core/Background_Color.h"
#include "bkimgutl/core/Color.h"

#include <cstring>

namespace {

/// Samples of any width up to 16 bits, packed from the highest bit of each byte on.
void Unpack_Bits(const std::uint8_t* from, int bits, std::size_t count, std::uint16_t* to)
{
    std::uint32_t store = 0;
    int held = 0;
    const std::uint32_t mask = (std::uint32_t(1) << bits) - 1;
    for (std::size_t i = 0; i < count; ++i) {
        for (; held < bits; held += 8) store = store << 8 | *from++;
        held -= bits;
        to[i] = std::uint16_t(store >> held & mask);
    }
}

void Unpack_Samples(const std::uint8_t* from, int bits, std::size_t count, std::uint16_t* to)
{
    if (bits == 8) {
        for (std::size_t i = 0; i < count; ++i) to[i] = from[i];
    } else if (bits == 16) {
        std::memcpy(to, from, count * 2);
    } else if (bits == 32) {
        for (std::size_t i = 0; i < count; ++i) {
            std::uint32_t number;
            std::memcpy(&number, from + i * 4, 4);
            to[i] = std::uint16_t(number >> 16);
        }
    } else {
        Unpack_Bits(from, bits, count, to);
    }
}

/// product / 255, rounded to nearest.
constexpr int Over_255(int product)
{
    return (product + 127) / 255;
}

} // namespace

Tiff_Row_Converter::Tiff_Row_Converter(const Tiff_Kind& kind) : kind_(kind), channels_(kind.Channels())
{
    const int most = kind.bits <= 8 ? (1 << kind.bits) - 1 : 255;
    for (int i = 0; i <= most; ++i) small_to_byte_[std::size_t(i)] = std::uint8_t((i * 255 + most / 2) / most);
}

std::uint8_t Tiff_Row_Converter::To_Byte(std::uint16_t number) const
{
    if (kind_.bits <= 8) return small_to_byte_[number & 255];
    if (kind_.bits >= 16) return std::uint8_t((number + 128) / 257);
    const std::uint32_t most = (std::uint32_t(1) << kind_.bits) - 1;
    return std::uint8_t((number * std::uint32_t(255) + most / 2) / most);
}

void Tiff_Row_Converter::Unpack(std::span<const std::uint8_t* const> planes, int count)
{
    const std::size_t pixels = std::size_t(count);
    numbers_.resize(pixels * std::size_t(kind_.samples));
    if (!kind_.separate) {
        sample_offset_ = 1;
        pixel_step_ = kind_.samples;
        return Unpack_Samples(planes[0], kind_.bits, numbers_.size(), numbers_.data());
    }
    sample_offset_ = count;
    pixel_step_ = 1;
    for (std::size_t s = 0; s < planes.size(); ++s)
        Unpack_Samples(planes[s], kind_.bits, pixels, numbers_.data() + s * pixels);
}

void Tiff_Row_Converter::Convert(std::span<const std::uint8_t* const> planes, int count, std::uint8_t* out)
{
    const bool plain = kind_.bits == 8 && !kind_.separate && kind_.samples == kind_.Color_Samples();
    if (plain && kind_.colors == Tiff_Colors::RGB) {
        const std::uint8_t* from = planes[0];
        for (int i = 0; i < count; ++i, from += 3, out += 3) {
            out[0] = from[2];
            out[1] = from[1];
            out[2] = from[0];
        }
        return;
    }
    if (plain && kind_.colors == Tiff_Colors::Grey && !kind_.white_is_zero) {
        std::memcpy(out, planes[0], std::size_t(count));
        return;
    }
    Unpack(planes, count);
    switch (kind_.colors) {
    case Tiff_Colors::Grey: Grey_Row(count, out); break;
    case Tiff_Colors::Palette: Palette_Row(count, out); break;
    case Tiff_Colors::RGB: RGB_Row(count, out); break;
    case Tiff_Colors::CMYK: CMYK_Row(count, out); break;
    }
    if (kind_.alpha >= 0) Lay_Over_Background(count, out);
}

void Tiff_Row_Converter::Grey_Row(int count, std::uint8_t* out) const
{
    const std::uint16_t* from = Sample(0);
    const std::uint8_t turn = kind_.white_is_zero ? 255 : 0;
    for (int i = 0; i < count; ++i, from += pixel_step_) out[i] = To_Byte(*from) ^ turn;
}

void Tiff_Row_Converter::Palette_Row(int count, std::uint8_t* out) const
{
    const std::uint16_t* from = Sample(0);
    for (int i = 0; i < count; ++i, from += pixel_step_, out += channels_)
        std::memcpy(out, kind_.palette.data() + std::size_t(*from) * 3, std::size_t(channels_));
}

void Tiff_Row_Converter::RGB_Row(int count, std::uint8_t* out) const
{
    for (int c = 0; c < 3; ++c) {
        const std::uint16_t* from = Sample(2 - c);
        for (int i = 0; i < count; ++i, from += pixel_step_) out[i * 3 + c] = To_Byte(*from);
    }
}

void Tiff_Row_Converter::CMYK_Row(int count, std::uint8_t* out) const
{
    const std::uint16_t* black = Sample(3);
    for (int c = 0; c < 3; ++c) {
        const std::uint16_t* ink = Sample(2 - c);
        for (int i = 0; i < count; ++i)
            out[i * 3 + c] =
                std::uint8_t(Over_255((255 - To_Byte(ink[i * pixel_step_])) * (255 - To_Byte(black[i * pixel_step_]))));
    }
}

void Tiff_Row_Converter::Lay_Over_Background(int count, std::uint8_t* out) const
{
    const Background_Color background = Current_Background_Color();
    const int grey = RGB_To_Luminance(background.red, background.green, background.blue);
    const int colors[3] = {channels_ == 1 ? grey : background.blue, background.green, background.red};
    const std::uint16_t* from = Sample(kind_.alpha);
    for (int i = 0; i < count; ++i, from += pixel_step_) {
        const int alpha = To_Byte(*from);
        for (int c = 0; c < channels_; ++c, ++out) {
            const int color = kind_.associated ? std::min<int>(*out, alpha) * 255 : *out * alpha;
            *out = std::uint8_t(Over_255(color + colors[c] * (255 - alpha)));
        }
    }
}
