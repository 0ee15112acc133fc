#pragma once

#include "bkimgutl/codecs/Codec.h"

/// What every codec asks before it writes.

/// The texts are within the limits; the message names the text, its length and the limit.
Result<void> Check_Texts(const Save_Request& request);

/// A picture that was decoded with errors must not take the place of its file.
Result<void> Check_Damage(const Save_Request& request);

/// A save onto an original that stands aside under its "~" name takes the attributes from there; empty otherwise.
std::string Attributes_Source(const Save_Request& request);
