#include "bkimgutl/codecs/Jpeg_Load.h"

#include "bkimgutl/codecs/Codec.h"
#include "bkimgutl/codecs/Jpeg_Session.h"
#include "bkimgutl/codecs/Jpeg_Texts.h"
#include "bkimgutl/codecs/Upright_Sink.h"
#include "bkimgutl/core/Cancellation.h"

#include <algorithm>

namespace {

/// A block of 8 x 8 costs at least one bit in Huffman's coding, so a byte holds at most 512 pixels. A file that claims
/// more is refused before anything is allocated for it.
constexpr std::int64_t Most_Pixels_Per_Byte = 512;

Result<void> Check_Claim(const Regular_File& file, const Jpeg_Head& head)
{
    const std::int64_t pixels = std::int64_t(head.width) * head.height;
    if (!head.arithmetic && pixels / Most_Pixels_Per_Byte > file.Size())
        return Failure("claims " + std::to_string(head.width) + " x " + std::to_string(head.height) +
                       " pixels but is only " + std::to_string(file.Size()) + " bytes long");
    return {};
}

Result<void> Check_Kind(const Jpeg_Head& head)
{
    const int kind = head.process & 7; // the arithmetic ways stand 8 higher
    if (kind == 3) return Failure("is of the lossless kind of JPEG, which is not supported");
    if (kind > 3) return Failure("is of the hierarchical kind of JPEG, which is not supported");
    if (head.precision != 8)
        return Failure("has " + std::to_string(head.precision) + " bits per sample; JPEG files with 8 are supported");
    return {};
}

int Codec_Divisor(int divisor)
{
    for (const int fast : {8, 4, 2}) {
        if (divisor % fast == 0) return fast;
    }
    return 1;
}

Result<void> Choose_Colors(jpeg_decompress_struct& object)
{
    switch (object.jpeg_color_space) {
    case JCS_GRAYSCALE: object.out_color_space = JCS_GRAYSCALE; return {};
    case JCS_YCbCr:
    case JCS_RGB: object.out_color_space = JCS_EXT_BGR; return {};
    case JCS_CMYK:
    case JCS_YCCK: object.out_color_space = JCS_CMYK; return {};
    default: return Failure("has " + std::to_string(object.num_components) + " channels of unknown colours");
    }
}

void BGR_From_CMYK(const std::uint8_t* cmyk, std::uint8_t* bgr, int width, bool complements)
{
    const unsigned flip = complements ? 0 : 255; // afterwards 255 is no ink
    for (int x = 0; x < width; ++x, cmyk += 4, bgr += 3) {
        const unsigned black = cmyk[3] ^ flip;
        for (int channel = 0; channel < 3; ++channel)
            bgr[channel] = std::uint8_t(((cmyk[2 - channel] ^ flip) * black + 127) / 255);
    }
}

/// Decodes all rows and hands them on.
class Row_Stream {
public:
    Row_Stream(Jpeg_Decoder& decoder, Upright_Sink& target)
        : decoder_(decoder), object_(decoder.Object()), target_(target), cmyk_(object_.out_color_space == JCS_CMYK)
    {
        if (cmyk_) raw_.resize(std::size_t(object_.output_width) * 4);
    }

    Result<void> Run()
    {
        // One step for all rows: whatever it calls owns nothing that an error could leave behind.
        if (!Guarded(decoder_.Errors(), [this] {
                while (object_.output_scanline < object_.output_height) One_Row();
            }))
            return tl::make_unexpected(decoder_.Errors().As_Error());
        return {};
    }

private:
    void One_Row()
    {
        if (Is_Cancelled()) Give_Up(&Common(object_), Cancelled_Reason);
        std::uint8_t* row = target_.Next_Row();
        JSAMPROW raw = cmyk_ ? raw_.data() : row;
        jpeg_read_scanlines(&object_, &raw, 1);
        if (cmyk_) BGR_From_CMYK(raw, row, int(object_.output_width), object_.saw_Adobe_marker != 0);
        target_.Row_Is_Written();
    }

    Jpeg_Decoder& decoder_;
    jpeg_decompress_struct& object_;
    Upright_Sink& target_;
    bool cmyk_;
    std::vector<std::uint8_t> raw_;
};

Result<void> Start(Jpeg_Decoder& decoder, int codec_divisor)
{
    jpeg_decompress_struct& object = decoder.Object();
    if (auto chosen = Choose_Colors(object); !chosen) return chosen;
    object.scale_num = 1;
    object.scale_denom = unsigned(codec_divisor);
    if (!Guarded(decoder.Errors(), [&object] { jpeg_start_decompress(&object); }))
        return tl::make_unexpected(decoder.Errors().As_Error());
    return {};
}

/// A wrong bit often shows only in data that is left over behind the last row. A missing end mark alone harms nothing:
/// missing pixels of a sequential file have a warning of their own. In the other two ways of coding nothing else tells.
bool Is_Damaged(Jpeg_Decoder& decoder)
{
    jpeg_decompress_struct& object = decoder.Object();
    const bool needs_end = object.progressive_mode || object.arith_code;
    Jpeg_Errors& errors = decoder.Errors();
    if (!Guarded(errors, [&object] { jpeg_finish_decompress(&object); })) return true;
    return errors.damages > (needs_end ? 0 : errors.cut_offs);
}

int Divided(std::int64_t size, int divisor)
{
    return int((size + divisor - 1) / divisor);
}

} // namespace

Result<Bitmap> Load_Jpeg(const Regular_File& file, int scale_divisor)
{
    if (scale_divisor < 1) return Failure("the scale divisor is below 1");
    const auto head = Read_Jpeg_Head(file);
    if (!head) return tl::make_unexpected(head.error());
    if (auto good = Check_Kind(*head); !good) return tl::make_unexpected(good.error());
    if (auto good = Check_Claim(file, *head); !good) return tl::make_unexpected(good.error());
    const auto facts = Facts_Of_Jpeg(file, *head);
    if (!facts) return tl::make_unexpected(facts.error());
    const Pixel_Symmetry symmetry = Symmetry_Of_Orientation(facts->orientation);

    // The bitmap comes first: a picture beyond the limits fails before the codec allocates for it.
    const int codec_divisor = Codec_Divisor(scale_divisor);
    const int width = Divided(head->width, codec_divisor);
    const int height = Divided(head->height, codec_divisor);
    auto sink = Upright_Sink::Create(width, height, head->components == 1 ? 1 : 3, facts->orientation,
                                     scale_divisor / codec_divisor);
    if (!sink) return tl::make_unexpected(sink.error());
    Jpeg_Decoder decoder(file);
    if (auto read = decoder.Read_Header(); !read) return tl::make_unexpected(read.error());
    if (auto started = Start(decoder, codec_divisor); !started) return tl::make_unexpected(started.error());

    const jpeg_decompress_struct& object = decoder.Object();
    const bool as_announced = int(object.image_width) == head->width && int(object.image_height) == head->height &&
                              object.num_components == head->components && int(object.output_width) == width &&
                              int(object.output_height) == height;
    if (!as_announced) return Failure("has two headers that contradict each other");
    if (auto run = Row_Stream(decoder, *sink).Run(); !run) return tl::make_unexpected(run.error());
    Bitmap bitmap = std::move(*sink).Take();
    if (scale_divisor == 1)
        bitmap.Set_Origin(std::make_shared<const Pixel_Origin>(Pixel_Origin{
            .path = {}, .identity = file.Identity(), .symmetry = symmetry, .damaged = Is_Damaged(decoder)}));
    return bitmap;
}

int Jpeg_Coding::Unit_Width() const
{
    int most = 1;
    for (const Component& component : components) most = std::max(most, component.horizontal_sampling);
    return components.size() == 1 ? DCTSIZE : most * DCTSIZE; // a single channel is coded block by block
}

int Jpeg_Coding::Unit_Height() const
{
    int most = 1;
    for (const Component& component : components) most = std::max(most, component.vertical_sampling);
    return components.size() == 1 ? DCTSIZE : most * DCTSIZE;
}

Result<Jpeg_Coding> Coding_Of(const Regular_File& file)
{
    Jpeg_Decoder decoder(file);
    if (auto read = decoder.Read_Header(); !read) return tl::make_unexpected(read.error());
    const jpeg_decompress_struct& object = decoder.Object();
    Jpeg_Coding coding;
    coding.progressive = object.progressive_mode != 0;
    switch (object.jpeg_color_space) {
    case JCS_GRAYSCALE: coding.colors = Jpeg_Coding::Colors::Grey; break;
    case JCS_YCbCr: coding.colors = Jpeg_Coding::Colors::YCbCr; break;
    case JCS_RGB: coding.colors = Jpeg_Coding::Colors::RGB; break;
    case JCS_CMYK: coding.colors = Jpeg_Coding::Colors::CMYK; break;
    case JCS_YCCK: coding.colors = Jpeg_Coding::Colors::YCCK; break;
    default: break;
    }
    for (int i = 0; i < object.num_components; ++i) {
        const jpeg_component_info& info = object.comp_info[i];
        Jpeg_Coding::Component component{.horizontal_sampling = info.h_samp_factor,
                                         .vertical_sampling = info.v_samp_factor};
        const bool in_range = info.quant_tbl_no >= 0 && info.quant_tbl_no < NUM_QUANT_TBLS;
        const JQUANT_TBL* table = in_range ? object.quant_tbl_ptrs[info.quant_tbl_no] : nullptr;
        if (table == nullptr) return Failure("has no quantisation table for one of its channels");
        std::copy(std::begin(table->quantval), std::end(table->quantval), component.quantisation.begin());
        coding.components.push_back(component);
    }
    return coding;
}

namespace {

std::int64_t Distance(const JQUANT_TBL* table, const Jpeg_Coding::Component& component)
{
    std::int64_t distance = 0;
    for (std::size_t i = 0; i < component.quantisation.size(); ++i)
        distance += std::abs(int(table->quantval[i]) - int(component.quantisation[i]));
    return distance;
}

} // namespace

int Estimated_Quality(const Jpeg_Coding& coding)
{
    jpeg_compress_struct object{};
    Jpeg_Errors errors;
    errors.Attach(Common(object));
    int best = -1;
    std::int64_t least = 0;
    const bool chroma = coding.components.size() >= 3 && coding.colors != Jpeg_Coding::Colors::RGB;
    Guarded(errors, [&] {
        jpeg_create_compress(&object);
        for (int quality = 100; quality >= 1; --quality) { // the best of equally near ones
            jpeg_set_quality(&object, quality, TRUE);
            std::int64_t distance = Distance(object.quant_tbl_ptrs[0], coding.components[0]);
            if (chroma) distance += Distance(object.quant_tbl_ptrs[1], coding.components[1]);
            if (best >= 0 && distance >= least) continue;
            best = quality;
            least = distance;
        }
    });
    jpeg_destroy_compress(&object);
    return best;
}

int Estimated_Quality(const Regular_File& file)
{
    if (Type_From_Signature(file) != Image_File_Type::JPEG) return -1;
    const auto coding = Coding_Of(file);
    return coding ? Estimated_Quality(*coding) : -1;
}
