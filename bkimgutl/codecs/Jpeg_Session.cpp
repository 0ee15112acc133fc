#include "bkimgutl/codecs/Jpeg_Session.h"

#include "bkimgutl/core/Cancellation.h"
#include "frame/files/Limits.h"

#include <algorithm>
#include <cstring>

#include <jerror.h>

namespace {

Jpeg_Errors& Errors_Of(jpeg_common_struct* object)
{
    return *reinterpret_cast<Jpeg_Errors*>(object->err);
}

[[noreturn]] void Exit(jpeg_common_struct* object)
{
    Jpeg_Errors& errors = Errors_Of(object);
    errors.manager.format_message(object, errors.text.data());
    std::longjmp(errors.jump, 1);
}

/// Oddities of the writing program that leave every pixel as it was meant.
bool Is_Harmless(int code)
{
    return code == JWRN_ADOBE_XFORM || code == JWRN_JFIF_MAJOR || code == JWRN_BOGUS_ICC;
}

void Note_Message(jpeg_common_struct* object, int level)
{
    if (level >= 0) return; // traces
    Jpeg_Errors& errors = Errors_Of(object);
    if (!Is_Harmless(errors.manager.msg_code)) ++errors.damages;
    if (errors.manager.msg_code == JWRN_JPEG_EOF) ++errors.cut_offs;
    if (++errors.warnings > Current_Limits().jpeg_warnings) Give_Up(object, "is damaged in too many places");
}

/// Called all along the reading of scans.
void Count_Scans(jpeg_common_struct* object)
{
    if (Is_Cancelled()) Give_Up(object, Cancelled_Reason);
    const auto* decoder = reinterpret_cast<const jpeg_decompress_struct*>(object);
    if (decoder->input_scan_number > Current_Limits().jpeg_scans) Give_Up(object, "has too many scans");
}

void Do_Nothing(jpeg_decompress_struct*) {}

void Output_Nothing(jpeg_common_struct*) {}

/// -1 on failure. The reason is dropped here, where leaving is still safe.
std::ptrdiff_t Read_Chunk(const Regular_File& file, std::int64_t at, std::span<std::byte> target)
{
    const auto got = file.Read_At(at, target);
    return got ? std::ptrdiff_t(*got) : -1;
}

} // namespace

void Jpeg_Errors::Attach(jpeg_common_struct& object)
{
    object.err = jpeg_std_error(&manager);
    manager.error_exit = Exit;
    manager.emit_message = Note_Message;
    manager.output_message = Output_Nothing;
    text[0] = '\0';
}

void Give_Up(jpeg_common_struct* object, const char* reason)
{
    Jpeg_Errors& errors = Errors_Of(object);
    std::strncpy(errors.text.data(), reason, errors.text.size() - 1);
    errors.text.back() = '\0';
    std::longjmp(errors.jump, 1);
}

Jpeg_Decoder::Jpeg_Decoder(const Regular_File& file)
{
    source_.manager = {};
    source_.manager.init_source = Do_Nothing;
    source_.manager.fill_input_buffer = Fill;
    source_.manager.skip_input_data = Skip;
    source_.manager.resync_to_restart = jpeg_resync_to_restart;
    source_.manager.term_source = Do_Nothing;
    source_.file = &file;
    source_.at = 0;
    progress_.progress_monitor = Count_Scans;
    errors_.Attach(Common(object_));
}

Jpeg_Decoder::~Jpeg_Decoder()
{
    jpeg_destroy_decompress(&object_); // does nothing on an object that was never created
}

Result<void> Jpeg_Decoder::Read_Header()
{
    const bool good = Guarded(errors_, [this] {
        jpeg_create_decompress(&object_);
        object_.mem->max_memory_to_use = long(Live_Bitmap_Bytes_Limit());
        object_.src = &source_.manager;
        object_.progress = &progress_;
        jpeg_read_header(&object_, TRUE);
    });
    if (!good) return tl::make_unexpected(errors_.As_Error());
    return {};
}

boolean Jpeg_Decoder::Fill(jpeg_decompress_struct* object)
{
    auto& source = *reinterpret_cast<Source*>(object->src);
    const auto got = Read_Chunk(*source.file, source.at, std::as_writable_bytes(std::span(source.buffer)));
    if (got < 0) Give_Up(&Common(*object), "cannot be read");
    source.manager.next_input_byte = source.buffer.data();
    source.manager.bytes_in_buffer = std::size_t(got);
    source.at += got;
    if (got > 0) return TRUE;
    // The end of the file inside the picture: what is missing becomes grey, and the picture counts as damaged.
    WARNMS(object, JWRN_JPEG_EOF);
    source.buffer[0] = 0xFF;
    source.buffer[1] = JPEG_EOI;
    source.manager.bytes_in_buffer = 2;
    return TRUE;
}

void Jpeg_Decoder::Skip(jpeg_decompress_struct* object, long bytes)
{
    if (bytes <= 0) return;
    auto& source = *reinterpret_cast<Source*>(object->src);
    const std::size_t here = std::min(std::size_t(bytes), source.manager.bytes_in_buffer);
    source.manager.next_input_byte += here;
    source.manager.bytes_in_buffer -= here;
    source.at += bytes - long(here);
}

Jpeg_Encoder::Jpeg_Encoder(Replacement_File& file) : file_(file)
{
    destination_.manager = {};
    destination_.manager.init_destination = [](jpeg_compress_struct*) {};
    destination_.manager.empty_output_buffer = Empty;
    destination_.manager.term_destination = Finish;
    destination_.manager.next_output_byte = destination_.buffer.data();
    destination_.manager.free_in_buffer = destination_.buffer.size();
    destination_.encoder = this;
    destination_.to_drop = 2;
    errors_.Attach(Common(object_));
    Guarded(errors_, [this] { jpeg_create_compress(&object_); });
    object_.dest = &destination_.manager;
}

Jpeg_Encoder::~Jpeg_Encoder()
{
    jpeg_destroy_compress(&object_);
}

bool Jpeg_Encoder::Write(std::size_t bytes)
{
    const auto all = std::as_bytes(std::span(destination_.buffer)).first(bytes);
    const std::size_t drop = std::min(destination_.to_drop, bytes);
    destination_.to_drop -= drop;
    auto written = file_.Write(all.subspan(drop));
    if (!written) write_error_ = std::move(written.error());
    return written.has_value();
}

boolean Jpeg_Encoder::Empty(jpeg_compress_struct* object)
{
    auto& destination = *reinterpret_cast<Destination*>(object->dest);
    if (!destination.encoder->Write(destination.buffer.size())) Give_Up(&Common(*object), "cannot be written");
    destination.manager.next_output_byte = destination.buffer.data();
    destination.manager.free_in_buffer = destination.buffer.size();
    return TRUE;
}

void Jpeg_Encoder::Finish(jpeg_compress_struct* object)
{
    auto& destination = *reinterpret_cast<Destination*>(object->dest);
    const std::size_t filled = destination.buffer.size() - destination.manager.free_in_buffer;
    if (!destination.encoder->Write(filled)) Give_Up(&Common(*object), "cannot be written");
}
