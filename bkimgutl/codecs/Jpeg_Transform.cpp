#include "bkimgutl/codecs/Jpeg_Transform.h"

#include "bkimgutl/codecs/Jpeg_Session.h"

#include <array>
#include <utility>

namespace {

/// A symmetry as a transposition (or none) that is followed by mirrorings of the result.
struct Block_Moves {
    bool transpose = false;
    bool flip_x = false; ///< of the result: left becomes right
    bool flip_y = false;
};

Block_Moves Moves_Of(Pixel_Symmetry symmetry)
{
    // Counterclockwise by 90 degrees is a transposition with top and bottom exchanged.
    constexpr Block_Moves turns[4] = {
        {false, false, false}, {true, false, true}, {false, true, true}, {true, true, false}};
    Block_Moves moves = turns[symmetry.quarter_turns & 3];
    // A mirroring left to right that comes first acts on the other axis once it is transposed.
    if (symmetry.mirrored) (moves.transpose ? moves.flip_y : moves.flip_x) ^= true;
    return moves;
}

void Move_Block(const JCOEF* from, JCOEF* to, const Block_Moves& moves)
{
    for (int v = 0; v < DCTSIZE; ++v) {
        for (int u = 0; u < DCTSIZE; ++u) {
            const JCOEF value = moves.transpose ? from[u * DCTSIZE + v] : from[v * DCTSIZE + u];
            const bool negate = (moves.flip_x && (u & 1) != 0) != (moves.flip_y && (v & 1) != 0);
            to[v * DCTSIZE + u] = negate ? JCOEF(-value) : value;
        }
    }
}

/// The two objects of one transformation. Everything here runs inside of a step.
class Turning {
public:
    Turning(jpeg_decompress_struct& from, jpeg_compress_struct& to, const Block_Moves& moves)
        : from_(from), to_(to), moves_(moves)
    {}

    void Run()
    {
        jvirt_barray_ptr* source = jpeg_read_coefficients(&from_);
        jpeg_copy_critical_parameters(&from_, &to_);
        to_.write_JFIF_header = FALSE; // both are carried along with the parent's segments
        to_.write_Adobe_marker = FALSE;
        to_.optimize_coding = TRUE;
        to_.restart_interval = from_.restart_interval;
        if (moves_.transpose) Transpose_Parameters();
        if (from_.progressive_mode) jpeg_simple_progression(&to_);
        std::array<jvirt_barray_ptr, MAX_COMPONENTS> target{};
        for (int i = 0; i < to_.num_components; ++i) target[std::size_t(i)] = New_Array(i);
        to_.mem->realize_virt_arrays(&Common(to_));
        for (int i = 0; i < to_.num_components; ++i) Move_Channel(i, source[i], target[std::size_t(i)]);
        jpeg_write_coefficients(&to_, target.data());
        jpeg_finish_compress(&to_);
    }

private:
    void Transpose_Parameters()
    {
        std::swap(to_.image_width, to_.image_height);
        for (int i = 0; i < to_.num_components; ++i)
            std::swap(to_.comp_info[i].h_samp_factor, to_.comp_info[i].v_samp_factor);
        for (JQUANT_TBL* table : to_.quant_tbl_ptrs) {
            if (table == nullptr) continue;
            for (int v = 0; v < DCTSIZE; ++v) {
                for (int u = 0; u < v; ++u)
                    std::swap(table->quantval[v * DCTSIZE + u], table->quantval[u * DCTSIZE + v]);
            }
        }
    }

    /// Blocks of the target's channel; the codec reads rows of whole units.
    std::pair<JDIMENSION, JDIMENSION> Blocks_Of(int channel) const
    {
        const jpeg_component_info& info = from_.comp_info[channel];
        if (moves_.transpose) return {info.height_in_blocks, info.width_in_blocks};
        return {info.width_in_blocks, info.height_in_blocks};
    }

    static JDIMENSION Rounded_Up(JDIMENSION blocks, int unit)
    {
        const JDIMENSION size = JDIMENSION(unit);
        return (blocks + size - 1) / size * size;
    }

    jvirt_barray_ptr New_Array(int channel)
    {
        const jpeg_component_info& info = to_.comp_info[channel];
        const auto [columns, rows] = Blocks_Of(channel);
        return to_.mem->request_virt_barray(&Common(to_), JPOOL_IMAGE, TRUE, Rounded_Up(columns, info.h_samp_factor),
                                            Rounded_Up(rows, info.v_samp_factor), JDIMENSION(info.v_samp_factor));
    }

    void Move_Channel(int channel, jvirt_barray_ptr source, jvirt_barray_ptr target)
    {
        const auto [columns, rows] = Blocks_Of(channel);
        for (JDIMENSION y = 0; y < rows; ++y) {
            const JBLOCKARRAY to = to_.mem->access_virt_barray(&Common(to_), target, y, 1, TRUE);
            const JDIMENSION old_y = moves_.flip_y ? rows - 1 - y : y;
            if (moves_.transpose) {
                Move_Column(source, old_y, to[0], columns);
                continue;
            }
            const JBLOCKARRAY from = from_.mem->access_virt_barray(&Common(from_), source, old_y, 1, FALSE);
            for (JDIMENSION x = 0; x < columns; ++x)
                Move_Block(from[0][moves_.flip_x ? columns - 1 - x : x], to[0][x], moves_);
        }
    }

    /// A row of the target is a column of the source.
    void Move_Column(jvirt_barray_ptr source, JDIMENSION column, JBLOCKROW to, JDIMENSION count)
    {
        for (JDIMENSION x = 0; x < count; ++x) {
            const JDIMENSION row = moves_.flip_x ? count - 1 - x : x;
            const JBLOCKARRAY from = from_.mem->access_virt_barray(&Common(from_), source, row, 1, FALSE);
            Move_Block(from[0][column], to[x], moves_);
        }
    }

    jpeg_decompress_struct& from_;
    jpeg_compress_struct& to_;
    Block_Moves moves_;
};

} // namespace

bool Can_Turn_Without_Loss(const Jpeg_Coding& coding, int width, int height, Pixel_Symmetry symmetry)
{
    const Block_Moves moves = Moves_Of(symmetry);
    const bool old_x_changes_ends = moves.transpose ? moves.flip_y : moves.flip_x;
    const bool old_y_changes_ends = moves.transpose ? moves.flip_x : moves.flip_y;
    if (old_x_changes_ends && width % coding.Unit_Width() != 0) return false;
    return !old_y_changes_ends || height % coding.Unit_Height() == 0;
}

Result<void> Write_Turned(Replacement_File& target, const Regular_File& parent, Pixel_Symmetry symmetry)
{
    Jpeg_Decoder decoder(parent);
    if (auto read = decoder.Read_Header(); !read) return read;
    Jpeg_Encoder encoder(target);
    // Both objects report into one place, since either may fail inside of the other's call.
    decoder.Object().err = encoder.Object().err;
    const Block_Moves moves = Moves_Of(symmetry);
    const bool good = Guarded(encoder.Errors(), [&] { Turning(decoder.Object(), encoder.Object(), moves).Run(); });
    if (!good) return tl::make_unexpected(encoder.Reason());
    // The bitmap was read without damage, so an end mark may be missing, but no more.
    if (encoder.Errors().damages > encoder.Errors().cut_offs) return Failure("the parent's picture data is damaged");
    return {};
}
