#pragma once

#include "bkimgutl/codecs/Tiff_Encode.h"
#include "bkimgutl/codecs/Tiff_Kind.h"
#include "bkimgutl/core/Pixel_Memory.h"
#include "bkimgutl/core/Pixel_Origin.h"
#include "frame/files/Regular_File.h"

/// The samples of a file's first page as they are stored, decoded but not converted, so that a right-angle turn can write
/// them again with all their bits.
class Tiff_Samples {
public:
    /// Fails when a strip or tile cannot be decoded, or when memory does not suffice for the whole page.
    static Result<Tiff_Samples> Read(const Regular_File& file);

    /// The rows of the turned picture, all samples of a pixel side by side. Valid while this lives.
    Tiff_Rows Turned(Pixel_Symmetry symmetry) const;

private:
    explicit Tiff_Samples(const Tiff_Kind& kind) : kind_(kind) {}
    Result<void> Read_Plane(struct tiff* handle, std::uint16_t plane);
    Result<void> Read_Tile_Row(struct tiff* handle, std::uint16_t plane, int top, std::vector<std::uint8_t>& tile);

    int Planes() const { return kind_.separate ? kind_.samples : 1; }
    int Unit_Samples() const { return kind_.separate ? 1 : kind_.samples; }
    int Unit_Bits() const { return Unit_Samples() * kind_.bits; }
    std::uint8_t* Row(int plane, int y) const
    {
        return memory_.Bytes() + (std::size_t(plane) * std::size_t(kind_.height) + std::size_t(y)) * row_bytes_;
    }

    Tiff_Kind kind_;
    std::size_t row_bytes_ = 0; ///< of a plane, as the TIFF library gives them
    Pixel_Memory memory_;
};

/// True when the samples of this kind can be moved about as they stand: each pixel has its own, and they are of the colours
/// that the file's tags tell.
bool Can_Move_Samples(const Tiff_Kind& kind);
