#include "dev/samples/Camera_Block.h"
#include "dev/samples/Jpeg_File.h"
#include "dev/samples/Picture.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

// hv_fuzz_seeds FOLDER: small files of every kind to start the fuzz programs from.

namespace {

using Bytes = std::vector<std::uint8_t>;
using Colors = Jpeg_File_Options::Colors;

void Put(const std::filesystem::path& path, const Bytes& bytes)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

Bytes Text(std::string_view text)
{
    return {text.begin(), text.end()};
}

Camera_Facts Camera(bool big_endian)
{
    Camera_Facts facts{.big_endian = big_endian, .orientation = big_endian ? 6 : 3};
    facts.thumbnail = Bytes(40, 0xAB);
    facts.maker_note = Bytes(20, 0x55);
    return facts;
}

/// A packet with a thumbnail, and an extended packet in two parts that has one too.
std::vector<Jpeg_File_Options::Segment> XMP_Packets()
{
    using namespace std::string_literals;
    const std::string number = "0123456789ABCDEF0123456789ABCDEF", head = "http://ns.adobe.com/xap/1.0/\0"s;
    const std::string thumbnail =
        "<a xmlns:g='http://ns.adobe.com/xap/1.0/g/img/' g:image='AA'><g:image>/9j/</g:image></a>";
    const std::string packet =
        "<rdf:RDF xmlns:rdf='r'><b xmpNote:HasExtendedXMP='" + number + "'/>" + thumbnail + "</rdf:RDF>";
    const std::string extended = "<rdf:RDF xmlns:rdf='r'>" + thumbnail + "</rdf:RDF>";
    const auto part = [&](std::size_t first, std::size_t end) {
        const std::string places = {0, 0, 0, char(extended.size()), 0, 0, 0, char(first)};
        return Jpeg_File_Options::Segment{0xE1, Text("http://ns.adobe.com/xmp/extension/\0"s + number + places +
                                                     extended.substr(first, end - first))};
    };
    return {{0xE1, Text(head + packet)}, part(0, 70), part(70, extended.size())};
}

void Put_Jpegs(const std::filesystem::path& folder)
{
    using namespace std::string_view_literals;
    const Sample_Picture picture = Meadow(33, 17, 1);
    const Jpeg_File_Options kinds[] = {
        {},
        {.progressive = true},
        {.horizontal_sampling = 4, .vertical_sampling = 1},
        {.colors = Colors::CMYK},
        {.colors = Colors::YCCK},
        {.colors = Colors::RGB},
        {.restart_rows = 1},
        {.arithmetic = true},
        {.dpi = 72,
         .segments = {{0xE1, Camera_Block(Camera(true))},
                      {0xFE, Text("comment")},
                      {0xEA, Text("Halvine script\0\1\1Crop,1,2,3,4;"sv)},
                      {0xE2, Text("ICC_PROFILE\0\1\1 a profile that is too short"sv)},
                      {0xE0, Text("JFXX\0\x13\1\1abc"sv)}}},
        {.segments = XMP_Packets()},
    };
    int number = 0;
    for (const Jpeg_File_Options& options : kinds)
        Put(folder / (std::to_string(number++) + ".jpg"), Jpeg_File(picture, options));
    Put(folder / "grey.jpg", Jpeg_File(To_Grey(picture), {}));
    Put(folder / "units.jpg", Jpeg_File(Meadow(32, 16, 1), {.segments = {{0xE1, Camera_Block(Camera(false))}}}));
}

} // namespace

int main(int argument_count, char** arguments)
{
    if (argument_count != 2) {
        std::fputs("usage: hv_fuzz_seeds FOLDER\n", stderr);
        return 2;
    }
    const std::filesystem::path folder = arguments[1];
    Put_Jpegs(folder / "jpeg");
    Put(folder / "exif" / "little", Camera_Block(Camera(false)));
    Put(folder / "exif" / "big", Camera_Block(Camera(true)));
    return 0;
}
