#include "bkimgutl/contract/Text_Buffer.h"

#include <algorithm>
#include <cstring>

void Put_In_Buffer(std::span<const std::byte> bytes, void* buffer, std::int32_t size, std::int32_t* length)
{
    const std::size_t room = buffer == nullptr ? 0 : std::size_t(std::max(size, 0));
    const std::size_t copied = std::min(bytes.size(), room);
    if (copied > 0) std::memcpy(buffer, bytes.data(), copied);
    if (copied < room) static_cast<char*>(buffer)[copied] = '\0';
    const bool fills_buffer = bytes.size() >= room && !bytes.empty();
    if (length != nullptr) *length = fills_buffer ? -std::int32_t(copied) : std::int32_t(copied);
}
