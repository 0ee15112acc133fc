#include "bkimgutl/tone/Table_Map.h"

#include "bkimgutl/contract/Types.h"
#include "bkimgutl/core/Row_Loop.h"
#include "bkimgutl/tone/Clip_Table.h"
#include "bkimgutl/tone/Histogram.h"
#include "bkimgutl/tone/Map_Row.h"

#include <algorithm>
#include <array>

namespace {

Byte_Map Limited_Map(const std::int32_t* table)
{
    Byte_Map map;
    for (int i = 0; i < 256; ++i) map.level[i] = std::uint8_t(table ? std::clamp(table[i], 0, 255) : i);
    return map;
}

template <class Row_Map>
Result<Bitmap> With_Mapped_Rows(const Bitmap_View& source, const Row_Map& map_row)
{
    auto result = Bitmap::Create(source.width, source.height, source.bytes_per_pixel);
    if (!result) return result;
    const Mutable_Bitmap_View target = result->Change();
    For_Rows(source.height, source.Row_Bytes() * 2, [&](int first, int end) {
        for (int y = first; y < end; ++y) map_row(source.Row(y), target.Row(y));
    });
    return result;
}

Result<Bitmap> Bytes_Mapped(const Bitmap_View& source, const Byte_Map& map)
{
    return With_Mapped_Rows(
        source, [&](const std::uint8_t* in, std::uint8_t* out) { Map_Bytes(in, out, source.Row_Bytes(), map); });
}

Result<void> Check_Tables(const Table_Map_Settings& settings)
{
    if (settings.component_mask < 1 || settings.component_mask > 15)
        return Failure("component mask " + std::to_string(settings.component_mask) + " is outside 1 to 15");
    const std::int32_t* tables[] = {settings.red, settings.green, settings.blue, settings.luminance};
    for (int i = 0; i < 4; ++i)
        if ((settings.component_mask & (1 << i)) && !tables[i]) return Failure("a table of the map is missing");
    return {};
}

Channel_Maps Maps_Of(const Table_Map_Settings& settings)
{
    const auto chosen = [&](int bit, const std::int32_t* table) {
        return Limited_Map((settings.component_mask & bit) ? table : nullptr);
    };
    Channel_Maps maps;
    maps.channel[0] = chosen(4, settings.blue);
    maps.channel[1] = chosen(2, settings.green);
    maps.channel[2] = chosen(1, settings.red);
    maps.luminance = chosen(8, settings.luminance);
    maps.has_luminance = (settings.component_mask & 8) != 0;
    return maps;
}

Byte_Map One_After_Other(const Byte_Map& first, const Byte_Map& second)
{
    Byte_Map map;
    for (int i = 0; i < 256; ++i) map.level[i] = second.level[first.level[i]];
    return map;
}

Hsv_Maps Hsv_Maps_Of(const std::int32_t* saturation_table, const std::int32_t* value_table)
{
    Hsv_Maps maps{Limited_Map(saturation_table), Limited_Map(value_table), {}, {}};
    for (int i = 0; i < 256; ++i) {
        const int reciprocal = i == 0 ? 0 : std::min(65535, 65536 / i);
        maps.reciprocal_low.level[i] = std::uint8_t(reciprocal & 255);
        maps.reciprocal_high.level[i] = std::uint8_t(reciprocal >> 8);
    }
    return maps;
}

} // namespace

Result<Bitmap> Table_Mapped(const Bitmap_View& source, const Table_Map_Settings& settings)
{
    if (auto checked = Check_Tables(settings); !checked) return tl::make_unexpected(checked.error());
    const Channel_Maps maps = Maps_Of(settings);
    if (source.Is_Grey()) return Bytes_Mapped(source, One_After_Other(maps.channel[2], maps.luminance));
    return With_Mapped_Rows(source, [&](const std::uint8_t* in, std::uint8_t* out) {
        Map_Color_Row(in, out, std::size_t(source.width), maps);
    });
}

Result<Bitmap> Hsv_Table_Mapped(const Bitmap_View& source, const std::int32_t* saturation_table,
                                const std::int32_t* value_table)
{
    if (!value_table || !saturation_table) return Failure("a table of the map is missing");
    const Hsv_Maps maps = Hsv_Maps_Of(saturation_table, value_table);
    if (source.Is_Grey()) return Bytes_Mapped(source, maps.value);
    return With_Mapped_Rows(source, [&](const std::uint8_t* in, std::uint8_t* out) {
        Map_Hsv_Row(in, out, std::size_t(source.width), maps);
    });
}

Result<Bitmap> Contrast_Optimized(const Bitmap_View& source, float shadow_clip, float highlight_clip)
{
    const auto luminance = Component_Histogram(source, nullptr, Component_Luminance);
    if (!luminance) return tl::make_unexpected(luminance.error());
    std::array<std::int32_t, 256> counts;
    std::transform(luminance->begin(), luminance->end(), counts.begin(),
                   [](std::uint64_t n) { return std::int32_t(n); });
    const auto table = Clip_Table(counts, std::int64_t(source.width) * source.height, shadow_clip, highlight_clip);
    if (!table) return tl::make_unexpected(table.error());
    return Table_Mapped(source, {.component_mask = 8, .luminance = table->data()});
}
