#include "bench/Harness.h"
#include "bkimgutl/codecs/Codec.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>
#include <vips/vips8>
#undef Rect // some versions of libvips define it, which hides cv::Rect

#include <jpeglib.h>

// JPEG files in and out, beside plain use of libjpeg-turbo. Files lie in memory, so that no disk is measured.

namespace {

constexpr int Quality = 92;
constexpr int Thumbnails = 100;

/// A folder in memory with the picture as baseline 4:2:0 at quality 92, gone at the end.
class Files {
public:
    Files() : folder_("/dev/shm/halvine-codec-bench-" + std::to_string(getpid()))
    {
        std::filesystem::create_directories(folder_);
    }
    ~Files()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }
    std::string Path(const std::string& name) const { return folder_ + "/" + name; }

private:
    std::string folder_;
};

const Files& Folder()
{
    static const Files files;
    return files;
}

std::vector<unsigned char> Bytes_Of(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Encode_Plainly(const cv::Mat& picture, const std::string& path)
{
    jpeg_compress_struct object{};
    jpeg_error_mgr errors{};
    object.err = jpeg_std_error(&errors);
    jpeg_create_compress(&object);
    std::FILE* file = std::fopen(path.c_str(), "wb");
    jpeg_stdio_dest(&object, file);
    object.image_width = JDIMENSION(picture.cols);
    object.image_height = JDIMENSION(picture.rows);
    object.input_components = 3;
    object.in_color_space = JCS_EXT_BGR;
    jpeg_set_defaults(&object);
    jpeg_set_quality(&object, Quality, TRUE);
    jpeg_start_compress(&object, TRUE);
    while (object.next_scanline < object.image_height) {
        JSAMPROW row = const_cast<JSAMPROW>(picture.ptr(int(object.next_scanline)));
        jpeg_write_scanlines(&object, &row, 1);
    }
    jpeg_finish_compress(&object);
    jpeg_destroy_compress(&object);
    std::fclose(file);
}

/// Into `target`, which is kept from call to call: the codec pays for no fresh memory.
void Decode_Plainly(const std::string& path, int divisor, cv::Mat& target)
{
    jpeg_decompress_struct object{};
    jpeg_error_mgr errors{};
    object.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&object);
    std::FILE* file = std::fopen(path.c_str(), "rb");
    jpeg_stdio_src(&object, file);
    jpeg_read_header(&object, TRUE);
    object.out_color_space = JCS_EXT_BGR;
    object.scale_num = 1;
    object.scale_denom = unsigned(divisor);
    jpeg_start_decompress(&object);
    target.create(int(object.output_height), int(object.output_width), CV_8UC3);
    while (object.output_scanline < object.output_height) {
        JSAMPROW row = target.ptr(int(object.output_scanline));
        jpeg_read_scanlines(&object, &row, 1);
    }
    jpeg_destroy_decompress(&object);
    std::fclose(file);
}

Bitmap Loaded(const std::string& path, int divisor)
{
    const auto file = Regular_File::Open(path);
    return std::move(JPEG_Codec().Load(file.value(), divisor).value());
}

void Add_Decode(Bench_Suite& suite, int divisor)
{
    static cv::Mat target;
    const std::string path = Folder().Path("photo.jpg");
    suite.Add({.name = "decode JPEG at 1/" + std::to_string(divisor),
               .ours = {"Load", [path, divisor] { Loaded(path, divisor); }},
               .peers = {{"libjpeg-turbo", [path, divisor] { Decode_Plainly(path, divisor, target); }}},
               .goal = 1.05,
               .allowed_error = 0,
               .check = [path, divisor] {
                   cv::Mat exact;
                   Decode_Plainly(path, divisor, exact);
                   return Compare(Bitmap_Of(exact).View(), Loaded(path, divisor).View());
               }});
}

void Save(const Bitmap& bitmap, const std::string& target, const std::string& parent, int quality)
{
    Save_Request request;
    request.bitmap = &bitmap;
    request.target = target;
    request.comment = "a description";
    request.parent = parent;
    request.quality = quality;
    if (!JPEG_Codec().Save(request)) std::abort();
}

void Add_Encode(Bench_Suite& suite)
{
    const Bench_Inputs& in = suite.Inputs();
    const std::string photo = Folder().Path("photo.jpg");
    const std::string ours = Folder().Path("ours.jpg");
    const std::string theirs = Folder().Path("theirs.jpg");
    // The parent's tables and sampling, so that both write the same picture; the bitmap comes from no file.
    suite.Add({.name = "encode JPEG at 92",
               .ours = {"Save", [&in, ours, photo] { Save(in.picture, ours, photo, Quality_Of_Parent); }},
               .peers = {{"libjpeg-turbo", [&in, theirs] { Encode_Plainly(in.mat, theirs); }}},
               .goal = 1.05,
               .allowed_error = 0,
               .check = [&in, ours, photo] {
                   Save(in.picture, ours, photo, Quality_Of_Parent);
                   return Compare(Loaded(photo, 1).View(), Loaded(ours, 1).View());
               }});
    static const Bitmap loaded = Loaded(photo, 1);
    suite.Add({.name = "save of texts alone",
               .ours = {"Save", [ours, photo] { Save(loaded, ours, photo, Quality_Of_Parent); }},
               .peers = {{"libjpeg-turbo, encoding", [&in, theirs] { Encode_Plainly(in.mat, theirs); }}},
               .goal = 0.2,
               .allowed_error = 0,
               .check = [ours, photo] {
                   Save(loaded, ours, photo, Quality_Of_Parent);
                   return Compare(Loaded(photo, 1).View(), Loaded(ours, 1).View());
               }});
}

/// Does `one(path)` for a hundred files, two at once.
template <class One>
void For_Each_Thumbnail(One one)
{
    const std::string path = Folder().Path("photo.jpg");
    std::atomic<int> next{0};
    const auto work = [&] {
        while (next.fetch_add(1) < Thumbnails) one(path);
    };
    std::thread other(work);
    work();
    other.join();
}

void Make_Thumbnail_With_Vips(const std::string& path)
{
    std::size_t size = 0;
    const auto* options = vips::VImage::option()->set("size", VIPS_SIZE_DOWN);
    const vips::VImage image =
        vips::VImage::thumbnail(path.c_str(), 750, const_cast<vips::VOption*>(options)); // takes the options over
    g_free(image.write_to_memory(&size));
}

/// The worst of all thumbnails, made as they are timed.
Bench_Error Thumbnails_Error()
{
    cv::Mat exact;
    Decode_Plainly(Folder().Path("photo.jpg"), 8, exact);
    const Bitmap expected = Bitmap_Of(exact);
    std::atomic<int> most{0};
    For_Each_Thumbnail([&](const std::string& path) {
        const int error = Compare(expected.View(), Loaded(path, 8).View()).most;
        for (int seen = most; error > seen && !most.compare_exchange_weak(seen, error);) {
        }
    });
    return {most, 0};
}

void Add_Thumbnails(Bench_Suite& suite)
{
    suite.Add({.name = "100 thumbnails at 1/8, 2 files at once",
               .ours = {"Load", [] { For_Each_Thumbnail([](const std::string& path) { Loaded(path, 8); }); }},
               .peers = {{"libjpeg-turbo",
                          [] {
                              For_Each_Thumbnail([](const std::string& path) {
                                  cv::Mat target;
                                  Decode_Plainly(path, 8, target);
                              });
                          }},
                         {"libvips thumbnail", [] { For_Each_Thumbnail(Make_Thumbnail_With_Vips); }}},
               .goal = 1.05,
               .allowed_error = 0,
               .check = [] { return Thumbnails_Error(); }});
}

void Add_Codecs(Bench_Suite& suite)
{
    Encode_Plainly(suite.Inputs().mat, Folder().Path("photo.jpg"));
    for (const int divisor : {1, 2, 4, 8}) Add_Decode(suite, divisor);
    Add_Encode(suite);
    Add_Thumbnails(suite);
}

const Bench_Area area("codecs", Add_Codecs);

} // namespace
