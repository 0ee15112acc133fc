#include "bkimgutl/core/Last_Error.h"

#include <string>

namespace {

std::string& Last_Text()
{
    thread_local std::string text;
    return text;
}

} // namespace

Bitmap_Handle Fail(const Error& error)
{
    Last_Text() = error.text;
    return 0;
}

Flag Fail_Flag(const Error& error)
{
    Last_Text() = error.text;
    return Flag_False;
}

std::string_view Last_Error_Text()
{
    return Last_Text();
}
