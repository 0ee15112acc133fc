#include "bkimgutl/codecs/Jpeg_Encode.h"

#include "bkimgutl/codecs/Jpeg_Session.h"

#include <algorithm>

namespace {

using Colors = Jpeg_Coding::Colors;

/// The codec averages whole pixels, so each channel's sampling must divide the largest one; and a unit has at most ten
/// blocks.
bool Can_Encode_Sampling(const std::vector<Jpeg_Coding::Component>& components)
{
    int widest = 1;
    int highest = 1;
    int blocks = 0;
    for (const auto& component : components) {
        widest = std::max(widest, component.horizontal_sampling);
        highest = std::max(highest, component.vertical_sampling);
        blocks += component.horizontal_sampling * component.vertical_sampling;
    }
    return blocks <= C_MAX_BLOCKS_IN_MCU && std::all_of(components.begin(), components.end(), [&](const auto& one) {
               return widest % one.horizontal_sampling == 0 && highest % one.vertical_sampling == 0;
           });
}

/// The encoder divides by eight times the step in 16 bits. No picture uses a step of 0 or steps beyond this one, which
/// leave nothing of any frequency; a damaged or hostile parent may.
constexpr int Largest_Step = 8191;

void Put_Table(jpeg_compress_struct& object, int slot, const Jpeg_Coding::Component& from)
{
    JQUANT_TBL*& table = object.quant_tbl_ptrs[slot];
    if (table == nullptr) table = jpeg_alloc_quant_table(&Common(object));
    std::transform(from.quantisation.begin(), from.quantisation.end(), table->quantval,
                   [](int step) { return UINT16(std::clamp(step, 1, Largest_Step)); });
    table->sent_table = FALSE;
}

void Set_Sampling(jpeg_compress_struct& object, int horizontal, int vertical)
{
    object.comp_info[0].h_samp_factor = horizontal;
    object.comp_info[0].v_samp_factor = vertical;
    for (int i = 1; i < object.num_components; ++i)
        object.comp_info[i].h_samp_factor = object.comp_info[i].v_samp_factor = 1;
}

/// The parent's tables, channel by channel; a grey picture takes the first, and colours that the parent does not have
/// keep the usual tables of its estimated quality. Channels with equal tables share one, as they mostly do in the parent.
void Code_Like(jpeg_compress_struct& object, const Jpeg_Coding& like)
{
    const bool same_channels = like.colors == Colors::YCbCr || like.colors == Colors::YCCK ||
                               (like.colors == Colors::RGB && object.jpeg_color_space == JCS_RGB);
    const int channels = same_channels ? std::min(object.num_components, int(like.components.size())) : 1;
    for (int i = 0; i < channels; ++i) {
        const auto& component = like.components[std::size_t(i)];
        int slot = 0;
        while (like.components[std::size_t(slot)].quantisation != component.quantisation) ++slot;
        if (slot == i) Put_Table(object, slot, component);
        object.comp_info[i].quant_tbl_no = slot;
    }
    if (object.num_components == 1 || !same_channels || !Can_Encode_Sampling(like.components)) return;
    for (int i = 0; i < channels; ++i) {
        object.comp_info[i].h_samp_factor = like.components[std::size_t(i)].horizontal_sampling;
        object.comp_info[i].v_samp_factor = like.components[std::size_t(i)].vertical_sampling;
    }
}

void Configure(jpeg_compress_struct& object, const Bitmap_View& pixels, const Encode_Settings& settings, int quality)
{
    object.image_width = JDIMENSION(pixels.width);
    object.image_height = JDIMENSION(pixels.height);
    object.input_components = pixels.bytes_per_pixel;
    object.in_color_space = pixels.Is_Grey() ? JCS_GRAYSCALE : JCS_EXT_BGR;
    jpeg_set_defaults(&object);
    const bool as_rgb = Colors_To_Store(pixels, settings) == Colors::RGB;
    jpeg_set_colorspace(&object, pixels.Is_Grey() ? JCS_GRAYSCALE : as_rgb ? JCS_RGB : JCS_YCbCr);
    object.write_JFIF_header = FALSE; // stands in the file already, where it belongs
    jpeg_set_quality(&object, quality, TRUE);
    const bool full_color = pixels.Is_Grey() || as_rgb || quality >= Full_Color_Quality;
    Set_Sampling(object, full_color ? 1 : 2, full_color ? 1 : 2);
    if (settings.like == nullptr) return;
    Code_Like(object, *settings.like);
    if (settings.like->progressive) jpeg_simple_progression(&object);
}

} // namespace

Colors Colors_To_Store(const Bitmap_View& pixels, const Encode_Settings& settings)
{
    if (pixels.Is_Grey()) return Colors::Grey;
    const bool like_rgb = settings.like != nullptr && settings.like->colors == Colors::RGB;
    return like_rgb ? Colors::RGB : Colors::YCbCr;
}

Result<void> Encode_Jpeg(Replacement_File& target, const Bitmap_View& pixels, const Encode_Settings& settings)
{
    if (pixels.width > JPEG_MAX_DIMENSION || pixels.height > JPEG_MAX_DIMENSION)
        return Failure("a JPEG file holds at most " + std::to_string(JPEG_MAX_DIMENSION) + " pixels a side");
    Jpeg_Encoder encoder(target);
    const int quality = settings.like != nullptr ? Estimated_Quality(*settings.like) : settings.quality;
    jpeg_compress_struct& object = encoder.Object();
    const bool good = Guarded(encoder.Errors(), [&] {
        Configure(object, pixels, settings, quality);
        jpeg_start_compress(&object, TRUE);
        while (object.next_scanline < object.image_height) {
            JSAMPROW row =
                const_cast<JSAMPROW>(pixels.Row(int(object.next_scanline))); // read only, in spite of the type
            jpeg_write_scanlines(&object, &row, 1);
        }
        jpeg_finish_compress(&object);
    });
    if (!good) return tl::make_unexpected(encoder.Reason());
    return {};
}
