#pragma once

#include "bkimgutl/contract/Types.h"
#include "frame/files/Result.h"

#include <string_view>

/// Stores the text of the last failure on this thread for Get_Last_Image_Error_String; only the shells of the contract call
/// these.
Bitmap_Handle Fail(const Error& error); ///< returns 0
Flag Fail_Flag(const Error& error);     ///< returns 0 (false)

std::string_view Last_Error_Text();
