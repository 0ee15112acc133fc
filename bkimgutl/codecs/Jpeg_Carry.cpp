#include "bkimgutl/codecs/Jpeg_Carry.h"

#include "bkimgutl/codecs/EXIF_Block.h"
#include "bkimgutl/codecs/Image_Resources.h"
#include "bkimgutl/codecs/Jpeg_Texts.h"
#include "bkimgutl/codecs/Jpeg_XMP.h"
#include "bkimgutl/codecs/XMP_Thumbnails.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

using Bytes = std::vector<std::byte>;
using Colors = Jpeg_Coding::Colors;

constexpr std::size_t JFIF_Bytes = 14; ///< without a thumbnail
constexpr int Largest_JFIF_Density = 65535;

struct Resolution {
    int horizontal = -1;
    int vertical = -1;
    bool operator==(const Resolution&) const = default;
};

Resolution Stored_Resolution(const Carry_Plan& plan, int orientation)
{
    const auto known = [](int dpi) { return dpi >= 1 ? std::min(dpi, Largest_JFIF_Density) : -1; };
    Resolution stored{known(plan.horizontal_dpi), known(plan.vertical_dpi)};
    if (stored.horizontal < 1) stored.horizontal = stored.vertical; // a JFIF density of 0 is none
    if (stored.vertical < 1) stored.vertical = stored.horizontal;
    if (orientation >= 5) std::swap(stored.horizontal, stored.vertical);
    return stored;
}

Bytes JFIF_Data(const Resolution& resolution)
{
    const bool none = resolution.horizontal < 1;
    const int x = none ? 1 : resolution.horizontal, y = none ? 1 : resolution.vertical;
    Bytes data;
    for (const int byte : {int('J'), int('F'), int('I'), int('F'), 0, 1, 2, none ? 0 : 1, x >> 8, x, y >> 8, y, 0, 0})
        data.push_back(std::byte(byte));
    return data;
}

/// A JFIF segment says "YCbCr or grey" to decoders, so other colours go without.
bool May_Have_JFIF(Colors colors)
{
    return colors == Colors::YCbCr || colors == Colors::Grey;
}

bool Fits(const Bytes& profile, Colors colors)
{
    constexpr std::size_t model_at = 16;
    if (profile.size() < model_at + 4) return false;
    const std::string_view model(reinterpret_cast<const char*>(profile.data()) + model_at, 4);
    switch (colors) {
    case Colors::Grey: return model == "GRAY";
    case Colors::YCbCr:
    case Colors::RGB: return model == "RGB " || model == "Lab ";
    case Colors::CMYK:
    case Colors::YCCK: return model == "CMYK";
    case Colors::Other: return true;
    }
    return true;
}

Result<void> Write_Segment(Replacement_File& target, std::uint8_t marker, const Bytes& data)
{
    return target.Write(Segment_Bytes(marker, data));
}

Result<void> Write_Start(Replacement_File& target)
{
    const std::byte start[] = {std::byte(0xFF), std::byte(Marker_SOI)};
    return target.Write(start);
}

Result<void> Write_Texts(Replacement_File& target, const Carry_Plan& plan)
{
    if (auto written = target.Write(Comment_Segments(plan.comment)); !written) return written;
    return target.Write(Script_Segments(plan.script));
}

/// One pass over the parent's segments.
class Carrier {
public:
    Carrier(Replacement_File& target, const Jpeg_Parent& parent, const Carry_Plan& plan)
        : target_(target), parent_(parent), plan_(plan)
    {}

    Result<void> Run()
    {
        if (auto good = Look_Ahead(); !good) return good;
        if (auto good = Write_Start(target_); !good) return good;
        if (auto good = Write_Missing_JFIF(); !good) return good;
        bool texts_written = false;
        for (const Jpeg_Segment& segment : parent_.head.segments) {
            if (!texts_written && !Leads(segment)) {
                if (auto good = Write_Texts(target_, plan_); !good) return good;
                texts_written = true;
            }
            if (!Goes_Along(segment)) {
                gap_at_ = segment.End();
                continue;
            }
            if (auto good = Write_Gap(segment.at); !good) return good;
            if (auto good = Write_One(segment); !good) return good;
            gap_at_ = segment.End();
        }
        if (!texts_written)
            if (auto good = Write_Texts(target_, plan_); !good) return good;
        return Write_Gap(parent_.head.scan_at);
    }

private:
    bool Copies_Data() const { return plan_.pixels == Pixels::As_Stored || plan_.pixels == Pixels::Reoriented; }
    bool Is_Other_Picture() const { return plan_.pixels == Pixels::Turned || plan_.pixels == Pixels::Encoded; }

    /// Fill bytes in front of a marker stay with copied data: an index of further pictures counts them.
    Result<void> Write_Gap(std::int64_t end)
    {
        if (!Copies_Data() || end <= gap_at_) return {};
        Bytes gap(std::size_t(end - gap_at_));
        const auto got = parent_.file.Read_At(gap_at_, gap);
        if (!got) return tl::make_unexpected(got.error());
        return target_.Write(gap);
    }

    static bool Leads(const Jpeg_Segment& segment)
    {
        return segment.kind == Segment_Kind::JFIF || segment.kind == Segment_Kind::JFXX ||
               segment.kind == Segment_Kind::EXIF;
    }

    Result<void> Look_Ahead()
    {
        const int orientation = plan_.pixels == Pixels::As_Stored ? parent_.facts.orientation : plan_.orientation;
        wanted_ = Stored_Resolution(plan_, orientation);
        Resolution present{parent_.facts.horizontal_dpi, parent_.facts.vertical_dpi};
        const bool swapped_in_facts = parent_.facts.orientation >= 5;
        if (swapped_in_facts) std::swap(present.horizontal, present.vertical);
        patch_resolution_ = present != wanted_;
        first_JFIF_ = parent_.head.Find(Segment_Kind::JFIF);
        first_EXIF_ = parent_.head.Find(Segment_Kind::EXIF);
        if (plan_.pixels == Pixels::Encoded && parent_.head.Find(Segment_Kind::Profile) != nullptr) {
            const auto profile = Profile_Of_Jpeg(parent_.file, parent_.head);
            keep_profile_ = !profile || Fits(*profile, plan_.colors); // a damaged one goes along as it is
        }
        if (!Is_Other_Picture()) return {};
        resources_ = Resources_Without_Thumbnails();
        auto xmp = XMP_Without_Thumbnails(parent_.file, parent_.head);
        if (xmp) xmp_ = std::move(*xmp); // more than can be mended goes along as it is
        return {};
    }

    Bytes Resources_Without_Thumbnails() const
    {
        auto resources = Resources_Of_Jpeg(parent_.file, parent_.head);
        if (!resources) return {};
        Blank_Thumbnails(*resources);
        return std::move(*resources);
    }

    Result<void> Write_Missing_JFIF()
    {
        const bool has_one = first_JFIF_ != nullptr;
        const bool wants_one = patch_resolution_ && (wanted_.horizontal > 0 || wanted_.vertical > 0);
        if (has_one || !wants_one || !May_Have_JFIF(plan_.colors)) return {};
        return Write_Segment(target_, Marker_APP0, JFIF_Data(wanted_));
    }

    bool Goes_Along(const Jpeg_Segment& segment) const
    {
        switch (segment.kind) {
        case Segment_Kind::Comment:
        case Segment_Kind::Script: return false;
        case Segment_Kind::JFIF: return May_Have_JFIF(plan_.colors) || plan_.pixels != Pixels::Encoded;
        case Segment_Kind::JFXX: return !Is_Other_Picture();
        case Segment_Kind::Profile: return keep_profile_;
        case Segment_Kind::Adobe: return plan_.pixels != Pixels::Encoded || Adobe_Says_YCbCr(segment);
        case Segment_Kind::Coding: return Copies_Data();
        case Segment_Kind::EXIF:
        case Segment_Kind::Resources:
        case Segment_Kind::Foreign: return true;
        }
        return true;
    }

    bool Adobe_Says_YCbCr(const Jpeg_Segment& segment) const
    {
        constexpr std::size_t transform_at = 11;
        return plan_.colors == Colors::YCbCr && segment.Byte(transform_at) == 1;
    }

    Result<void> Write_One(const Jpeg_Segment& segment)
    {
        auto data = Read_Segment(parent_.file, segment);
        if (!data) return tl::make_unexpected(data.error());
        if (&segment == first_JFIF_) Mend_JFIF(*data);
        if (&segment == first_EXIF_ && plan_.pixels != Pixels::As_Stored)
            Mend_EXIF_Block(*data, plan_.orientation, Is_Other_Picture());
        if (&segment == first_EXIF_ && patch_resolution_)
            Put_Resolution_In_EXIF_Block(*data, wanted_.horizontal, wanted_.vertical);
        if (segment.kind == Segment_Kind::Resources) Take_Resources(*data);
        if (const auto mended = xmp_.find(&segment); mended != xmp_.end()) data = mended->second;
        return Write_Segment(target_, segment.marker, *data);
    }

    /// The mended resources go back into the segments that they came from.
    void Take_Resources(Bytes& data)
    {
        const std::size_t bytes = data.size() - Resources_Head.size();
        if (bytes > resources_.size() - resources_taken_) return;
        std::copy_n(resources_.begin() + std::ptrdiff_t(resources_taken_), bytes,
                    data.begin() + std::ptrdiff_t(Resources_Head.size()));
        resources_taken_ += bytes;
    }

    void Mend_JFIF(Bytes& data) const
    {
        if (patch_resolution_) {
            const Bytes patched = JFIF_Data(wanted_);
            constexpr std::ptrdiff_t unit_at = 7;
            std::copy(patched.begin() + unit_at, patched.begin() + unit_at + 5, data.begin() + unit_at);
        }
        if (Is_Other_Picture() && data.size() > JFIF_Bytes) {
            data.resize(JFIF_Bytes);
            data[12] = data[13] = std::byte(0); // size of the thumbnail
        }
    }

    Replacement_File& target_;
    const Jpeg_Parent& parent_;
    const Carry_Plan& plan_;
    Resolution wanted_;       ///< along the stored sides
    std::int64_t gap_at_ = 2; ///< in the parent, behind the last segment
    bool patch_resolution_ = false;
    bool keep_profile_ = true;
    const Jpeg_Segment* first_JFIF_ = nullptr;
    const Jpeg_Segment* first_EXIF_ = nullptr;
    Bytes resources_; ///< of all segments; empty where they go along as they stand
    std::size_t resources_taken_ = 0;
    Mended_Segments xmp_;
};

/// Everything from `at` to the end of the file, what stands behind the picture included.
Result<void> Copy_Rest(Replacement_File& target, const Regular_File& file, std::int64_t at)
{
    Bytes buffer(std::size_t(1) << 20);
    while (at < file.Size()) {
        const std::size_t left = std::size_t(std::min<std::int64_t>(file.Size() - at, std::int64_t(buffer.size())));
        const auto got = file.Read_At(at, std::span(buffer).first(left));
        if (!got) return tl::make_unexpected(got.error());
        if (*got != left) return Failure("the parent has become shorter while it was read");
        if (auto written = target.Write(std::span(buffer).first(left)); !written) return written;
        at += std::int64_t(left);
    }
    return {};
}

} // namespace

Result<Jpeg_Parent> Jpeg_Parent::Open(const std::string& path)
{
    auto file = Regular_File::Open(path);
    if (!file) return tl::make_unexpected(file.error());
    auto head = Read_Jpeg_Head(*file);
    if (!head) return Failure(path + ": " + head.error().text);
    auto facts = Facts_Of_Jpeg(*file, *head);
    if (!facts) return Failure(path + ": " + facts.error().text);
    return Jpeg_Parent{std::move(*file), std::move(*head), *facts};
}

Result<void> Write_Carried(Replacement_File& target, const Jpeg_Parent& parent, const Carry_Plan& plan)
{
    if (auto carried = Carrier(target, parent, plan).Run(); !carried) return carried;
    if (plan.pixels != Pixels::As_Stored && plan.pixels != Pixels::Reoriented) return {};
    return Copy_Rest(target, parent.file, parent.head.scan_at);
}

Result<void> Write_New_Head(Replacement_File& target, Foreign_Data foreign, const Carry_Plan& plan)
{
    Bytes& exif = foreign.exif;
    if (exif.size() > Longest_Segment_Data)
        return Failure("the camera data of " + std::to_string(exif.size()) + " bytes does not fit into a JPEG file, " +
                       std::to_string(Longest_Segment_Data) + " are the limit");
    Blank_XMP_Thumbnails(foreign.xmp);
    const auto xmp = XMP_Segments(foreign.xmp);
    if (!xmp) return tl::make_unexpected(xmp.error());
    const auto profile = Fits(foreign.profile, plan.colors) ? Profile_Segments(foreign.profile) : Bytes();
    if (!profile) return tl::make_unexpected(profile.error());
    if (auto good = Write_Start(target); !good) return good;
    const Resolution resolution = Stored_Resolution(plan, 1);
    if (May_Have_JFIF(plan.colors)) {
        if (auto good = Write_Segment(target, Marker_APP0, JFIF_Data(resolution)); !good) return good;
    }
    if (!exif.empty()) {
        Mend_EXIF_Block(exif, 1, true);
        Put_Resolution_In_EXIF_Block(exif, resolution.horizontal, resolution.vertical);
        if (auto good = Write_Segment(target, Marker_APP1, exif); !good) return good;
    }
    if (auto good = Write_Texts(target, plan); !good) return good;
    if (auto good = target.Write(*xmp); !good) return good;
    Blank_Thumbnails(foreign.resources);
    if (auto good = target.Write(Resource_Segments(foreign.resources)); !good) return good;
    return target.Write(*profile);
}

Result<void> Write_What_Stands_Behind(Replacement_File& target, const Jpeg_Parent& parent)
{
    return Copy_Rest(target, parent.file, End_Of_Picture(parent.file, parent.head));
}
