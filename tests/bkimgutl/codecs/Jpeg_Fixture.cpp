#include "tests/bkimgutl/codecs/Jpeg_Fixture.h"

#include <cstring>
#include <fstream>
#include <stdlib.h>

#include <jpeglib.h>

Jpeg_Fixture::Jpeg_Fixture()
{
    std::string name = (std::filesystem::temp_directory_path() / "halvine-jpeg-XXXXXX").string();
    folder_ = mkdtemp(name.data());
}

Jpeg_Fixture::~Jpeg_Fixture()
{
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

std::string Jpeg_Fixture::Put(const std::string& name, const File_Bytes& bytes) const
{
    std::ofstream(Path(name), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
    return Path(name);
}

File_Bytes Jpeg_Fixture::Get(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

Held_Bitmap Jpeg_Fixture::Load(const std::string& path, int divisor, int rotation)
{
    return Held_Bitmap(Load_Bitmap_From_File(path, 0, divisor, rotation));
}

bool Jpeg_Fixture::Save(const Held_Bitmap& bitmap, const std::string& path, const Save_Arguments& arguments)
{
    return Save_Bitmap_To_File(bitmap.Handle(), path, std::int32_t(Image_File_Type::JPEG), arguments.comment,
                               arguments.script, arguments.parent, arguments.quality, arguments.horizontal_dpi,
                               arguments.vertical_dpi, nullptr) != 0;
}

std::string Jpeg_Fixture::Error_Text()
{
    char buffer[512] = "";
    std::int32_t length = 0;
    Get_Last_Image_Error_String(buffer, sizeof buffer, &length);
    return {buffer, std::size_t(std::abs(length))};
}

std::string Jpeg_Fixture::Comment(const std::string& path)
{
    char buffer[4096];
    std::int32_t length = 0;
    return Get_File_Comment(path, 0, buffer, sizeof buffer, &length) ? std::string(buffer, std::size_t(length))
                                                                     : "FAIL";
}

std::string Jpeg_Fixture::Script(const std::string& path)
{
    std::vector<char> buffer(70'000);
    std::int32_t length = 0;
    const bool good = Get_File_Image_Script(path, 0, buffer.data(), std::int32_t(buffer.size()), &length) != 0;
    return good ? std::string(buffer.data(), std::size_t(length)) : "FAIL";
}

File_Bytes Jpeg_Fixture::EXIF(const std::string& path)
{
    File_Bytes buffer(70'000);
    std::int32_t length = 0;
    Get_File_EXIF_Data(path, 0, buffer.data(), std::int32_t(buffer.size()), &length);
    buffer.resize(std::size_t(length));
    return buffer;
}

Picture_Facts Jpeg_Fixture::Facts(const std::string& path)
{
    Picture_Facts facts;
    EXPECT_TRUE(Get_File_Dimensions(path, 0, &facts.width, &facts.height, &facts.pixel_depth, &facts.horizontal_dpi,
                                    &facts.vertical_dpi))
        << Error_Text();
    return facts;
}

Plain_Decode Decode_Plainly(const File_Bytes& file, int divisor)
{
    jpeg_decompress_struct object{};
    jpeg_error_mgr errors{};
    object.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&object);
    jpeg_mem_src(&object, file.data(), file.size());
    jpeg_read_header(&object, TRUE);
    if (object.num_components == 3) object.out_color_space = JCS_EXT_BGR;
    if (object.num_components == 4) object.out_color_space = JCS_CMYK;
    object.scale_num = 1;
    object.scale_denom = unsigned(divisor);
    Plain_Decode plain;
    plain.progressive = object.progressive_mode != 0;
    for (int i = 0; i < object.num_components; ++i) {
        const JQUANT_TBL* table = object.quant_tbl_ptrs[object.comp_info[i].quant_tbl_no];
        plain.tables.emplace_back(std::begin(table->quantval), std::end(table->quantval));
        plain.sampling.push_back(object.comp_info[i].h_samp_factor);
        plain.sampling.push_back(object.comp_info[i].v_samp_factor);
    }
    jpeg_start_decompress(&object);
    plain.width = int(object.output_width);
    plain.height = int(object.output_height);
    plain.channels = object.output_components;
    const std::size_t row_bytes = std::size_t(plain.width) * std::size_t(plain.channels);
    plain.bytes.resize(row_bytes * std::size_t(plain.height));
    while (object.output_scanline < object.output_height) {
        JSAMPROW row = plain.bytes.data() + row_bytes * object.output_scanline;
        jpeg_read_scanlines(&object, &row, 1);
    }
    jpeg_destroy_decompress(&object);
    return plain;
}

testing::AssertionResult Shows(const Plain_Decode& expected, const Bitmap& actual)
{
    const Bitmap_View view = actual.View();
    if (view.width != expected.width || view.height != expected.height || view.bytes_per_pixel != expected.channels)
        return testing::AssertionFailure() << "size " << view.width << " x " << view.height << " instead of "
                                           << expected.width << " x " << expected.height;
    for (int y = 0; y < view.height; ++y) {
        if (std::memcmp(view.Row(y), expected.bytes.data() + view.Row_Bytes() * std::size_t(y), view.Row_Bytes()) != 0)
            return testing::AssertionFailure() << "row " << y << " differs";
    }
    return testing::AssertionSuccess();
}

namespace {

/// The last 0xFF of those at `at`.
std::size_t Behind_Fill_Bytes(const File_Bytes& file, std::size_t at)
{
    while (at + 1 < file.size() && file[at] == 0xFF && file[at + 1] == 0xFF) ++at;
    return at;
}

} // namespace

std::vector<File_Segment> Outer_Segments(const File_Bytes& file)
{
    std::vector<File_Segment> segments;
    for (std::size_t at = Behind_Fill_Bytes(file, 2); at + 4 <= file.size() && file[at + 1] != 0xDA;) {
        const std::size_t length = std::size_t(file[at + 2]) << 8 | file[at + 3];
        const int marker = file[at + 1];
        const auto data = file.begin() + std::ptrdiff_t(at) + 4;
        if (marker >= 0xE0) segments.push_back({marker, File_Bytes(data, data + std::ptrdiff_t(length) - 2)});
        at = Behind_Fill_Bytes(file, at + 2 + length);
    }
    return segments;
}

File_Bytes Coded_Data(const File_Bytes& file)
{
    std::size_t at = Behind_Fill_Bytes(file, 2);
    while (file[at + 1] != 0xDA) at = Behind_Fill_Bytes(file, at + 2 + (std::size_t(file[at + 2]) << 8 | file[at + 3]));
    return {file.begin() + std::ptrdiff_t(at), file.end()};
}

File_Segment Segment(int marker, std::string_view text, std::size_t more_bytes)
{
    File_Bytes data(text.begin(), text.end());
    for (std::size_t i = 0; i < more_bytes; ++i) data.push_back(std::uint8_t(i * 7 + 3));
    return {marker, data};
}

File_Segment Profile_Segment(std::string_view model, int part, int parts, std::size_t bytes)
{
    File_Segment segment = Segment(0xE2, std::string_view("ICC_PROFILE\0", 12));
    segment.data.push_back(std::uint8_t(part));
    segment.data.push_back(std::uint8_t(parts));
    File_Bytes profile(bytes);
    for (std::size_t i = 0; i < bytes; ++i) profile[i] = std::uint8_t(i * 3 + std::size_t(part));
    if (part == 1) std::copy(model.begin(), model.end(), profile.begin() + 16);
    segment.data.insert(segment.data.end(), profile.begin(), profile.end());
    return segment;
}
