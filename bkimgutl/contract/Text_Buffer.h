#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

/// Copies into the caller's buffer of `size` bytes, with a terminating zero where there is room. `length` takes the number
/// of bytes copied, negative when the whole fills the buffer or is longer. Buffer and length may be null.
void Put_In_Buffer(std::span<const std::byte> bytes, void* buffer, std::int32_t size, std::int32_t* length);
