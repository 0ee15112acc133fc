#include "bkimgutl/codecs/Tiff_Loader.h"

#include "bkimgutl/codecs/Tiff_Handle.h"
#include "bkimgutl/codecs/Tiff_Kind.h"
#include "bkimgutl/codecs/Tiff_Row.h"
#include "bkimgutl/codecs/Upright_Sink.h"
#include "bkimgutl/core/Cancellation.h"
#include "frame/files/Limits.h"

#include <algorithm>
#include <tiffio.h>

// Three ways through the TIFF library, each keeping no more than it must:
//
//   strips  scanline by scanline, so that a picture in a single strip needs no second copy; planes that stand apart are
//           read through a handle each, side by side
//   tiles   tile by tile
//   library bands of the library's own RGBA conversion, for the rare kinds of colour

namespace {

constexpr std::uint64_t Most_Buffer_Bytes = std::uint64_t(1) << 30;

/// What happened to the pieces (strips, tiles, bands) so far.
struct Outcome {
    int good = 0;
    int bad = 0;
    bool Hopeless() const { return good == 0 && bad >= 100; }
};

class Page_Reader {
public:
    Page_Reader(std::vector<Tiff_Handle>& handles, const Tiff_Kind& kind, Upright_Sink& sink)
        : handles_(handles), kind_(kind), sink_(sink), converter_(kind)
    {}

    Result<void> Read()
    {
        if (kind_.by_library) return Read_Bands();
        return kind_.tiled ? Read_Tiles() : Read_Strips();
    }

    const Outcome& Pieces() const { return outcome_; }

private:
    TIFF* Handle(std::size_t plane = 0) const { return handles_[plane].Get(); }

    Result<void> Make_Buffers(std::uint64_t bytes)
    {
        // The library may write whole pixels at the end of a row.
        if (bytes == 0 || bytes > Most_Buffer_Bytes) return Failure("the strips or tiles are too large");
        const std::size_t planes = kind_.separate ? std::size_t(kind_.samples) : 1;
        buffers_.assign(planes, std::vector<std::uint8_t>(bytes + 64));
        return {};
    }

    std::vector<const std::uint8_t*> Starts(std::size_t offset) const
    {
        std::vector<const std::uint8_t*> starts;
        for (const auto& buffer : buffers_) starts.push_back(buffer.data() + offset);
        return starts;
    }

    void Count(bool good) { ++(good ? outcome_.good : outcome_.bad); }

    void Put_Black(int x, int y, int count)
    {
        std::fill_n(pixels_.begin(), std::size_t(count) * std::size_t(sink_.Channels()), std::uint8_t(0));
        sink_.Put(x, y, count, pixels_.data());
    }

    Result<void> Read_Strips();
    bool Read_Strip_Row(int y);
    Result<void> Read_Tiles();
    bool Read_Tile(int x, int y);
    void Put_Tile(int x, int y, bool good);
    Result<void> Read_Bands();
    void Put_Band(const std::vector<std::uint32_t>& raster, int y, int rows, bool good);

    std::vector<Tiff_Handle>& handles_;
    const Tiff_Kind& kind_;
    Upright_Sink& sink_;
    Tiff_Row_Converter converter_;
    std::vector<std::vector<std::uint8_t>> buffers_;
    std::vector<std::uint8_t> pixels_;
    int tile_width_ = 0;
    int tile_height_ = 0;
    Outcome outcome_;
};

bool Page_Reader::Read_Strip_Row(int y)
{
    for (std::size_t plane = 0; plane < buffers_.size(); ++plane)
        if (TIFFReadScanline(Handle(plane), buffers_[plane].data(), std::uint32_t(y), std::uint16_t(plane)) != 1)
            return false;
    return true;
}

Result<void> Page_Reader::Read_Strips()
{
    if (auto made = Make_Buffers(TIFFScanlineSize64(Handle())); !made) return made;
    std::uint32_t rows_per_strip = 0;
    TIFFGetFieldDefaulted(Handle(), TIFFTAG_ROWSPERSTRIP, &rows_per_strip);
    const std::int64_t rows = std::clamp<std::int64_t>(rows_per_strip, 1, kind_.height);
    pixels_.resize(std::size_t(kind_.width) * std::size_t(sink_.Channels()));
    const auto starts = Starts(0);
    for (std::int64_t top = 0; top < kind_.height; top += rows) {
        const int end = int(std::min<std::int64_t>(top + rows, kind_.height));
        bool good = true;
        for (int y = int(top); y < end; ++y) {
            if (Is_Cancelled()) return Failure(Cancelled_Reason);
            // Behind the first row that fails nothing in the strip can be trusted.
            good = good && Read_Strip_Row(y);
            if (good) {
                converter_.Convert(starts, kind_.width, pixels_.data());
                sink_.Put(0, y, kind_.width, pixels_.data());
                ++outcome_.good;
            } else {
                Put_Black(0, y, kind_.width);
            }
            sink_.Close_Rows(y + 1);
        }
        if (!good) ++outcome_.bad;
        if (outcome_.Hopeless()) break;
    }
    return {};
}

bool Page_Reader::Read_Tile(int x, int y)
{
    for (std::size_t plane = 0; plane < buffers_.size(); ++plane) {
        const auto tile = TIFFComputeTile(Handle(plane), std::uint32_t(x), std::uint32_t(y), 0, std::uint16_t(plane));
        const tmsize_t size = tmsize_t(buffers_[plane].size() - 64);
        if (TIFFReadEncodedTile(Handle(plane), tile, buffers_[plane].data(), size) != size) return false;
    }
    return true;
}

void Page_Reader::Put_Tile(int x, int y, bool good)
{
    const std::size_t row_bytes = std::size_t(TIFFTileRowSize64(Handle()));
    const int width = std::min(tile_width_, kind_.width - x);
    const int rows = std::min(tile_height_, kind_.height - y);
    for (int row = 0; row < rows; ++row) {
        if (!good) {
            Put_Black(x, y + row, width);
            continue;
        }
        converter_.Convert(Starts(std::size_t(row) * row_bytes), width, pixels_.data());
        sink_.Put(x, y + row, width, pixels_.data());
    }
}

Result<void> Page_Reader::Read_Tiles()
{
    std::uint32_t width = 0, height = 0;
    TIFFGetField(Handle(), TIFFTAG_TILEWIDTH, &width);
    TIFFGetField(Handle(), TIFFTAG_TILELENGTH, &height);
    constexpr std::uint32_t most_side = 1 << 30;
    if (width == 0 || height == 0 || width > most_side || height > most_side)
        return Failure("the tiles have no usable size");
    tile_width_ = int(width);
    tile_height_ = int(height);
    if (auto made = Make_Buffers(TIFFTileSize64(Handle())); !made) return made;
    pixels_.resize(std::size_t(std::min(tile_width_, kind_.width)) * std::size_t(sink_.Channels()));
    for (std::int64_t y = 0; y < kind_.height; y += tile_height_) {
        for (std::int64_t x = 0; x < kind_.width; x += tile_width_) {
            if (Is_Cancelled()) return Failure(Cancelled_Reason);
            const bool good = Read_Tile(int(x), int(y));
            Count(good);
            Put_Tile(int(x), int(y), good);
        }
        sink_.Close_Rows(int(std::min<std::int64_t>(y + tile_height_, kind_.height)));
        if (outcome_.Hopeless()) break;
    }
    return {};
}

void Page_Reader::Put_Band(const std::vector<std::uint32_t>& raster, int y, int rows, bool good)
{
    for (int row = 0; row < rows; ++row) {
        const std::uint32_t* from = raster.data() + std::size_t(row) * std::size_t(kind_.width);
        std::uint8_t* out = pixels_.data();
        for (int x = 0; x < kind_.width; ++x, ++from) {
            *out++ = std::uint8_t(good ? TIFFGetB(*from) : 0);
            *out++ = std::uint8_t(good ? TIFFGetG(*from) : 0);
            *out++ = std::uint8_t(good ? TIFFGetR(*from) : 0);
        }
        sink_.Put(0, y + row, kind_.width, pixels_.data());
    }
    sink_.Close_Rows(y + rows);
}

Result<void> Page_Reader::Read_Bands()
{
    std::uint32_t band_rows = 0;
    if (TIFFGetField(Handle(), kind_.tiled ? TIFFTAG_TILELENGTH : TIFFTAG_ROWSPERSTRIP, &band_rows) != 1)
        band_rows = std::uint32_t(kind_.height);
    const int rows = int(std::clamp<std::int64_t>(band_rows, 1, kind_.height));
    const std::uint64_t size = std::uint64_t(rows) * std::uint64_t(kind_.width);
    if (size > Most_Buffer_Bytes / 4) return Failure("the strips or tiles are too large");
    TIFFRGBAImage image;
    char reason[1024] = "";
    if (TIFFRGBAImageBegin(&image, Handle(), /*stop on error*/ 1, reason) == 0)
        return Failure("pictures of this kind are not supported: " + std::string(reason));
    image.req_orientation = image.orientation; // the sink turns
    std::vector<std::uint32_t> raster(size);
    pixels_.resize(std::size_t(kind_.width) * 3);
    for (std::int64_t y = 0; y < kind_.height && !outcome_.Hopeless() && !Is_Cancelled(); y += rows) {
        const int count = int(std::min<std::int64_t>(rows, kind_.height - y));
        image.row_offset = int(y);
        const bool good =
            TIFFRGBAImageGet(&image, raster.data(), std::uint32_t(kind_.width), std::uint32_t(count)) == 1;
        Count(good);
        Put_Band(raster, int(y), count, good);
    }
    TIFFRGBAImageEnd(&image);
    if (Is_Cancelled()) return Failure(Cancelled_Reason);
    return {};
}

Result<std::vector<Tiff_Handle>> Open_Planes(const Regular_File& file, Tiff_Handle first, int planes)
{
    std::vector<Tiff_Handle> handles;
    handles.push_back(std::move(first));
    while (int(handles.size()) < planes) {
        auto handle = Tiff_Handle::Open_To_Read(file);
        if (!handle) return tl::make_unexpected(handle.error());
        handles.push_back(std::move(*handle));
    }
    return handles;
}

tl::unexpected<Error> Nothing_Decoded(const std::vector<Tiff_Handle>& handles)
{
    for (const Tiff_Handle& handle : handles)
        if (!handle.Error_Text().empty()) return Failure("the picture cannot be decoded: " + handle.Error_Text());
    return Failure("the picture cannot be decoded");
}

} // namespace

Result<Bitmap> Load_Tiff(const Regular_File& file, int divisor)
{
    const auto structure = Tiff_Structure::Open(file);
    if (!structure) return tl::make_unexpected(structure.error());
    const auto directory = structure->First_Directory();
    if (!directory) return tl::make_unexpected(directory.error());
    if (auto good = Check_Tiff_Limits(*structure, *directory); !good) return tl::make_unexpected(good.error());
    auto first = Tiff_Handle::Open_To_Read(file);
    if (!first) return tl::make_unexpected(first.error());
    const auto kind = Kind_Of(first->Get());
    if (!kind) return tl::make_unexpected(kind.error());
    auto handles = Open_Planes(file, std::move(*first), kind->separate && !kind->by_library ? kind->samples : 1);
    if (!handles) return tl::make_unexpected(handles.error());

    auto sink = Upright_Sink::Create(kind->width, kind->height, kind->Channels(), kind->orientation, divisor);
    if (!sink) return tl::make_unexpected(sink.error());
    Page_Reader reader(*handles, *kind, *sink);
    if (auto read = reader.Read(); !read) return tl::make_unexpected(read.error());
    if (reader.Pieces().good == 0) return Nothing_Decoded(*handles);
    Bitmap bitmap = std::move(*sink).Take();
    if (divisor != 1) return bitmap;

    Pixel_Origin origin{
        .path = {}, .identity = file.Identity(), .symmetry = Symmetry_Of_Orientation(kind->orientation)};
    origin.damaged = reader.Pieces().bad != 0 || std::any_of(handles->begin(), handles->end(), [](const auto& handle) {
                         return handle.Complaints() != 0;
                     });
    origin.reduced = kind->Holds_More() || Has_Further_Pages(*structure, *directory);
    bitmap.Set_Origin(std::make_shared<const Pixel_Origin>(std::move(origin)));
    return bitmap;
}
