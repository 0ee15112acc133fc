#include "bkimgutl/contract/Histogram.h"

#include "bkimgutl/contract/Guard.h"
#include "bkimgutl/core/Handle_Table.h"
#include "bkimgutl/core/Last_Error.h"
#include "bkimgutl/tone/Histogram.h"
#include "bkimgutl/tone/Sample.h"

#include <algorithm>
#include <limits>

namespace {

// Counts of the contract are 32-bit; more than two thousand million samples show as the most there is.
std::int32_t Count_32(std::uint64_t count)
{
    return std::int32_t(std::min<std::uint64_t>(count, std::numeric_limits<std::int32_t>::max()));
}

Flag Fill_Histogram(Bitmap_Handle bitmap, const std::uint8_t* mask, std::int32_t component_mask, std::int32_t* table,
                    std::int32_t* sample_count)
{
    if (table == nullptr || sample_count == nullptr) return Fail_Flag({"no place for the histogram"});
    const auto source = Find_Bitmap(bitmap);
    if (!source) return Fail_Flag(source.error());
    const auto fill = [&]() -> Flag {
        const auto counts = Component_Histogram((*source)->View(), mask, component_mask);
        if (!counts) return Fail_Flag(counts.error());
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < 256; ++i) {
            table[i] = Count_32((*counts)[i]);
            sum += (*counts)[i];
        }
        *sample_count = Count_32(sum);
        return Flag_True;
    };
    return Guarded(fill, [] { return Error{"not enough memory for the histogram"}; });
}

} // namespace

Flag Compute_Bitmap_Color_Component_Histogram_CPP(Bitmap_Handle bitmap, std::int32_t component_mask,
                                                  std::int32_t* table, std::int32_t* sample_count)
{
    return Fill_Histogram(bitmap, nullptr, component_mask, table, sample_count);
}

Flag Compute_Masked_Area_Color_Component_Histogram_CPP(Bitmap_Handle bitmap, const std::uint8_t* mask,
                                                       std::int32_t component_mask, std::int32_t* table,
                                                       std::int32_t* sample_count)
{
    if (mask == nullptr) return Fail_Flag({"there is no mask"});
    return Fill_Histogram(bitmap, mask, component_mask, table, sample_count);
}

Flag Compute_Area_Average_RGB_HSV_CPP(Bitmap_Handle bitmap, std::int32_t x, std::int32_t y, std::int32_t area_size,
                                      std::int32_t* red, std::int32_t* green, std::int32_t* blue, std::int32_t* hue,
                                      std::int32_t* saturation, std::int32_t* value)
{
    const auto source = Find_Bitmap(bitmap);
    if (!source) return Fail_Flag(source.error());
    const auto sample = Area_Average((*source)->View(), x, y, area_size);
    if (!sample) return Fail_Flag(sample.error());
    const auto store = [](std::int32_t* place, int number) {
        if (place != nullptr) *place = number;
    };
    store(red, sample->red);
    store(green, sample->green);
    store(blue, sample->blue);
    store(hue, sample->hue);
    store(saturation, sample->saturation);
    store(value, sample->value);
    return Flag_True;
}

Flag Compute_Masked_Area_RGB_HSV_Range_CPP(Bitmap_Handle bitmap, const std::uint8_t* mask, Component_Range ranges[6])
{
    if (mask == nullptr || ranges == nullptr) return Fail_Flag({"there is no mask"});
    const auto source = Find_Bitmap(bitmap);
    if (!source) return Fail_Flag(source.error());
    const auto found = Color_Ranges((*source)->View(), mask);
    if (!found) return Fail_Flag(found.error());
    for (std::size_t i = 0; i < 6; ++i) ranges[i] = {(*found)[i].minimum, (*found)[i].average, (*found)[i].maximum};
    return Flag_True;
}
