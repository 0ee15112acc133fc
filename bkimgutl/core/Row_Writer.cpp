#include "bkimgutl/core/Row_Writer.h"

#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace {

constexpr std::size_t line = 64;
constexpr std::size_t least_streamed_picture = std::size_t(16) << 20;

#if defined(__SSE2__)

constexpr bool can_stream = true;

// Whole lines only: part of a line would travel by itself.
void Stream_Bytes(std::uint8_t* to, const std::uint8_t* from, std::size_t bytes)
{
    const std::size_t before = -reinterpret_cast<std::uintptr_t>(to) % line;
    if (bytes < before + line) {
        std::memcpy(to, from, bytes);
        return;
    }
    std::memcpy(to, from, before);
    std::size_t done = before;
    for (; done + line <= bytes; done += line)
        for (std::size_t i = 0; i < line; i += 16)
            _mm_stream_si128(reinterpret_cast<__m128i*>(to + done + i),
                             _mm_loadu_si128(reinterpret_cast<const __m128i*>(from + done + i)));
    std::memcpy(to + done, from + done, bytes - done);
}

// Streamed bytes may otherwise arrive after the word that all is done.
void Finish_Streams()
{
    _mm_sfence();
}

#else

constexpr bool can_stream = false;

void Stream_Bytes(std::uint8_t* to, const std::uint8_t* from, std::size_t bytes)
{
    std::memcpy(to, from, bytes);
}

void Finish_Streams() {}

#endif

} // namespace

Row_Writer::Row_Writer(const Mutable_Bitmap_View& target)
    : target_(target),
      past_caches_(can_stream && target.Row_Bytes() * std::size_t(target.height) >= least_streamed_picture)
{}

Row_Writer::~Row_Writer()
{
    if (past_caches_) Finish_Streams();
}

void Row_Writer::Copy_To_Row(int y, std::size_t offset, const std::uint8_t* from, std::size_t bytes)
{
    if (past_caches_)
        Stream_Bytes(target_.Row(y) + offset, from, bytes);
    else
        std::memcpy(target_.Row(y) + offset, from, bytes);
}
