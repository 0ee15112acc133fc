#include "bkimgutl/codecs/Tiff_Texts.h"

#include "bkimgutl/codecs/Save_Checks.h"
#include "frame/files/Limits.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

std::string Text_From(const std::vector<std::byte>& bytes, std::size_t start = 0)
{
    return {reinterpret_cast<const char*>(bytes.data()) + start, bytes.size() - start};
}

/// Pixels per inch of a resolution tag, -1 without a usable one.
int Dots_Per_Inch(const Tiff_Structure& structure, const Tiff_Directory& directory, std::uint16_t tag)
{
    constexpr std::uint64_t inch = 2, centimetre = 3;
    const std::uint64_t unit = structure.Number(directory, Tiff_Tag::Resolution_Unit, inch);
    const Tiff_Entry* entry = directory.Find(tag);
    if (entry == nullptr || entry->type != Tiff_Type::Rational || entry->count != 1) return -1;
    const auto value = structure.Value(*entry, 8);
    if (!value || (unit != inch && unit != centimetre)) return -1;
    const double numerator = double(structure.Layout().Get(value->data(), 4));
    const double denominator = double(structure.Layout().Get(value->data() + 4, 4));
    if (denominator == 0) return -1;
    const double dots = std::nearbyint(numerator / denominator * (unit == centimetre ? 2.54 : 1.0));
    return dots >= 1 && dots <= Largest_Tiff_Resolution ? int(dots) : -1;
}

int Pixel_Depth(const Tiff_Structure& structure, const Tiff_Directory& directory)
{
    const std::uint64_t samples = structure.Number(directory, Tiff_Tag::Samples_Per_Pixel, 1);
    const Tiff_Entry* entry = directory.Find(Tiff_Tag::Bits_Per_Sample);
    const auto bits =
        entry ? structure.Numbers(*entry, 64) : Result<std::vector<std::uint64_t>>(std::vector<std::uint64_t>{1});
    if (!bits || bits->empty()) return 0;
    std::uint64_t depth = 0;
    for (std::size_t i = 0; i < std::min<std::uint64_t>(samples, 64); ++i)
        depth += std::min<std::uint64_t>(bits->at(std::min(i, bits->size() - 1)), 64);
    return int(depth);
}

} // namespace

Result<Picture_Facts> Facts_Of_Tiff(const Tiff_Structure& structure, const Tiff_Directory& directory)
{
    const std::uint64_t width = structure.Number(directory, Tiff_Tag::Image_Width, 0);
    const std::uint64_t height = structure.Number(directory, Tiff_Tag::Image_Length, 0);
    constexpr std::uint64_t most = std::numeric_limits<std::int32_t>::max();
    if (width == 0 || height == 0) return Failure("the picture has no size");
    if (width > most || height > most) return Failure("the picture is larger than any that can be shown");
    Picture_Facts facts{.width = int(width), .height = int(height), .pixel_depth = Pixel_Depth(structure, directory)};
    facts.horizontal_dpi = Dots_Per_Inch(structure, directory, Tiff_Tag::X_Resolution);
    facts.vertical_dpi = Dots_Per_Inch(structure, directory, Tiff_Tag::Y_Resolution);
    const std::uint64_t orientation = structure.Number(directory, Tiff_Tag::Orientation, 1);
    facts.orientation = orientation >= 1 && orientation <= 8 ? int(orientation) : 1;
    if (Symmetry_Of_Orientation(facts.orientation).Swaps_Sides()) {
        std::swap(facts.width, facts.height);
        std::swap(facts.horizontal_dpi, facts.vertical_dpi);
    }
    return facts;
}

Result<std::string> Comment_Of_Tiff(const Tiff_Structure& structure, const Tiff_Directory& directory)
{
    const Tiff_Entry* entry = directory.Find(Tiff_Tag::Image_Description);
    if (entry == nullptr || entry->count == 0) return std::string();
    if (Tiff_Type_Size(entry->type) != 1) return Failure("the description is no text");
    const auto most = std::uint64_t(Longest_Comment());
    // One byte more for the closing zero, which belongs to the format.
    const auto value = structure.Value(*entry, most + 1);
    if (!value) return tl::make_unexpected(value.error());
    std::string text = Text_From(*value);
    text.resize(std::min(text.find('\0'), text.size()));
    if (text.size() > most) return Failure("the description is longer than " + std::to_string(most) + " bytes");
    return text;
}

Result<std::string> Script_Of_Tiff(const Tiff_Structure& structure, const Tiff_Directory& directory)
{
    const Tiff_Entry* entry = directory.Find(Tiff_Tag::Image_Script);
    if (entry == nullptr || entry->type != Tiff_Type::Undefined || entry->size < Tiff_Script_Head.size())
        return std::string();
    const auto most = std::uint64_t(Current_Limits().script_bytes);
    const auto value = structure.Value(*entry, structure.Size());
    if (!value) return tl::make_unexpected(value.error());
    if (!Text_From(*value).starts_with(Tiff_Script_Head)) return std::string();
    if (value->size() - Tiff_Script_Head.size() > most)
        return Failure("the script is longer than " + std::to_string(most) + " bytes");
    return Text_From(*value, Tiff_Script_Head.size());
}

namespace {

bool Is_Foreign_Script(const Tiff_Structure& structure, const Tiff_Directory& directory)
{
    if (directory.Find(Tiff_Tag::Image_Script) == nullptr) return false;
    const auto script = Script_Of_Tiff(structure, directory);
    if (!script) return false;
    const Tiff_Entry& entry = *directory.Find(Tiff_Tag::Image_Script);
    return script->empty() && !(entry.type == Tiff_Type::Undefined && entry.size == Tiff_Script_Head.size());
}

Tiff_Field Script_Field(const std::string& script)
{
    const std::string value = std::string(Tiff_Script_Head) + script;
    return Bytes_Field(Tiff_Tag::Image_Script, Tiff_Type::Undefined, std::as_bytes(std::span(value)));
}

} // namespace

Result<void> Set_Texts(Tiff_Fields& fields, const Tiff_Structure* parent, const Tiff_Directory* directory,
                       const std::string& comment, const std::string& script)
{
    const bool known = parent != nullptr && directory != nullptr;
    const bool keep_comment = known && comment.empty() && !Comment_Of_Tiff(*parent, *directory);
    if (!keep_comment) Remove_Field(fields, Tiff_Tag::Image_Description);
    if (!comment.empty()) fields.push_back(Text_Field(Tiff_Tag::Image_Description, comment));

    const bool foreign = known && Is_Foreign_Script(*parent, *directory);
    if (foreign && !script.empty())
        return Failure("the file has a tag " + std::to_string(int(Tiff_Tag::Image_Script)) +
                       " of another program where the script belongs");
    if (!foreign) Remove_Field(fields, Tiff_Tag::Image_Script);
    if (!script.empty()) fields.push_back(Script_Field(script));
    return {};
}

void Set_Resolution(Tiff_Fields& fields, const Tiff_Layout& layout, int horizontal, int vertical)
{
    for (const auto tag : {Tiff_Tag::X_Resolution, Tiff_Tag::Y_Resolution, Tiff_Tag::Resolution_Unit})
        Remove_Field(fields, tag);
    if (horizontal < 1) return;
    fields.push_back(Rational_Field(layout, Tiff_Tag::X_Resolution, std::uint32_t(horizontal), 1));
    fields.push_back(Rational_Field(layout, Tiff_Tag::Y_Resolution, std::uint32_t(vertical), 1));
    constexpr std::uint16_t inch = 2;
    fields.push_back(Short_Field(layout, Tiff_Tag::Resolution_Unit, inch));
}
