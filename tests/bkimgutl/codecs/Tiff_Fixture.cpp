#include "tests/bkimgutl/codecs/Tiff_Fixture.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

Tiff_Folder::Tiff_Folder()
{
    std::string name = testing::TempDir() + "tiff-XXXXXX";
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for the test");
    folder_ = name;
}

Tiff_Folder::~Tiff_Folder()
{
    std::filesystem::remove_all(folder_);
}

namespace {

template <class Value>
Value Good(Result<Value> result)
{
    if (!result) throw std::runtime_error(result.error().text);
    return std::move(*result);
}

} // namespace

Regular_File Open_File(const std::string& path)
{
    return Good(Regular_File::Open(path));
}

std::vector<std::byte> File_Bytes(const std::string& path)
{
    return Good(Open_File(path).Read_All(1 << 30));
}

void Write_File(const std::string& path, const std::vector<std::byte>& bytes)
{
    std::ofstream file(path, std::ios::binary);
    file.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

Bitmap Loaded(const std::string& path, int divisor)
{
    return Good(TIFF_Codec().Load(Open_File(path), divisor));
}

std::string Load_Error(const std::string& path, int divisor)
{
    const auto result = TIFF_Codec().Load(Open_File(path), divisor);
    return result ? std::string() : result.error().text;
}

Picture_Facts Facts(const std::string& path)
{
    return Good(TIFF_Codec().Read_Facts(Open_File(path)));
}

std::string Comment(const std::string& path)
{
    return Good(TIFF_Codec().Read_Comment(Open_File(path)));
}

std::string Script(const std::string& path)
{
    return Good(TIFF_Codec().Read_Script(Open_File(path)));
}

std::vector<std::byte> EXIF(const std::string& path)
{
    return Good(TIFF_Codec().Read_EXIF(Open_File(path)));
}

std::vector<std::byte> Tag_Value(const std::string& path, std::uint16_t tag)
{
    const auto file = Open_File(path);
    const auto structure = Good(Tiff_Structure::Open(file));
    const auto directory = Good(structure.First_Directory());
    const Tiff_Entry* entry = directory.Find(tag);
    return entry ? Good(structure.Value(*entry, 1 << 30)) : std::vector<std::byte>();
}

std::vector<std::byte> EXIF_Tag_Value(const std::string& path, std::uint16_t tag, std::uint64_t* position)
{
    const auto file = Open_File(path);
    const auto structure = Good(Tiff_Structure::Open(file));
    const auto first = Good(structure.First_Directory());
    const auto directory = Good(structure.Read_Directory(structure.Number(first, Tiff_Tag::EXIF_Directory, 0)));
    const Tiff_Entry* entry = directory.Find(tag);
    if (entry && position) *position = entry->position;
    return entry ? Good(structure.Value(*entry, 1 << 30)) : std::vector<std::byte>();
}

std::uint64_t Tag_Number(const std::string& path, std::uint16_t tag, std::uint64_t otherwise)
{
    const auto file = Open_File(path);
    const auto structure = Good(Tiff_Structure::Open(file));
    return structure.Number(Good(structure.First_Directory()), tag, otherwise);
}

Bitmap Bitmap_Of(const Sample_Picture& picture)
{
    Bitmap bitmap = Good(Bitmap::Create(picture.width, picture.height, picture.channels));
    const Mutable_Bitmap_View view = bitmap.Change();
    for (int y = 0; y < picture.height; ++y)
        for (int x = 0; x < picture.width; ++x)
            for (int c = 0; c < picture.channels; ++c)
                view.Row(y)[x * picture.channels + c] = picture.Pixel(x, y)[picture.channels - 1 - c];
    return bitmap;
}

std::string Text_Of(const std::vector<std::byte>& bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void Save(const Save_Request& request)
{
    const auto saved = TIFF_Codec().Save(request);
    ASSERT_TRUE(saved) << saved.error().text;
}

std::vector<std::byte> Raw_Tiff(const std::vector<Raw_Entry>& entries, std::uint32_t next, std::size_t tail_bytes)
{
    const Tiff_Layout layout;
    std::vector<std::byte> bytes(8 + layout.Directory_Size(entries.size()) + tail_bytes);
    bytes[0] = bytes[1] = std::byte('I');
    layout.Put(bytes.data() + 2, 2, 42);
    layout.Put(bytes.data() + 4, 4, 8);
    layout.Put(bytes.data() + 8, 2, entries.size());
    std::byte* at = bytes.data() + 10;
    for (const Raw_Entry& entry : entries) {
        layout.Put(at, 2, entry.tag);
        layout.Put(at + 2, 2, entry.type);
        layout.Put(at + 4, 4, entry.count);
        layout.Put(at + 8, 4, entry.value);
        at += 12;
    }
    layout.Put(at, 4, next);
    return bytes;
}
