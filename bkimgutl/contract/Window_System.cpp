#include "bkimgutl/contract/Window_System.h"

#include "bkimgutl/contract/Guard.h"
#include "bkimgutl/contract/Text_Buffer.h"
#include "bkimgutl/core/Handle_Table.h"
#include "bkimgutl/core/Last_Error.h"

#include <cstring>

namespace {

Window_System* installed = nullptr;

Result<Bitmap> Bitmap_Of(const Clipboard_Picture& picture)
{
    if (picture.width < 1 || picture.height < 1) return Failure("the clipboard holds no picture");
    auto bitmap = Bitmap::Create(picture.width, picture.height, 3);
    if (!bitmap) return bitmap;
    const auto view = bitmap->Change();
    if (picture.pixels.size() != view.Row_Bytes() * std::size_t(view.height))
        return Failure("the picture of the clipboard is incomplete");
    for (int y = 0; y < view.height; ++y)
        std::memcpy(view.Row(y), picture.pixels.data() + std::size_t(y) * view.Row_Bytes(), view.Row_Bytes());
    return bitmap;
}

} // namespace

void Install_Window_System(Window_System* window_system)
{
    installed = window_system;
}

Bitmap_Handle Get_Bitmap_From_Clipboard(std::intptr_t window)
{
    if (installed == nullptr) return Fail({"there is no window system"});
    return Guarded([&] { return Adopt_Or_Fail(Bitmap_Of(installed->Picture_Of_Clipboard(window))); },
                   [] { return Error{"not enough memory for the picture of the clipboard"}; });
}

std::int32_t Get_TrueType_Font_FaceNames(std::intptr_t device_context, char* buffer, std::int32_t size,
                                         std::int32_t* length)
{
    Put_In_Buffer({}, buffer, size, length);
    if (installed == nullptr) return Fail_Flag({"there is no window system"});
    const auto list = [&] {
        const auto names = installed->Scalable_Font_Names(device_context);
        std::string all;
        for (const std::string& name : names) all += (all.empty() ? "" : "\n") + name;
        Put_In_Buffer(std::as_bytes(std::span(all)), buffer, size, length);
        return std::int32_t(names.size());
    };
    return Guarded(list, [] { return Error{"not enough memory for the names of the fonts"}; });
}
