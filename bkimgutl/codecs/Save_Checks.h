#pragma once

#include "bkimgutl/codecs/Codec.h"

#include <string>

// What every codec asks before it writes.

/// The script is within its limit; the message names its length and the limit.
Result<void> Check_Script(const Save_Request& request);

/// The description to store, `most` bytes being what the format holds. Other programs store longer ones than the limit,
/// and callers read them into buffers that may cut them: where the parent's is brought back, whole or as far as a buffer
/// of the limit holds it, all of it is kept, since nobody meant to cut it. Any other beyond the limit is a failure.
Result<std::string> Comment_To_Store(const Save_Request& request, std::size_t most);

/// Bytes of the longest description that is read from a file.
std::size_t Longest_Comment();

/// A picture that was decoded with errors must not take the place of its file.
Result<void> Check_Damage(const Save_Request& request);

/// A save onto an original that stands aside under its "~" name takes the attributes from there; empty otherwise.
std::string Attributes_Source(const Save_Request& request);
