#pragma once

#include "bkimgutl/contract/Types.h"

#include <string>
#include <vector>

/// What the library hands out of the window system: the clipboard's picture and the fonts. The library knows no window
/// system itself; the program installs one. Without one these functions fail.

/// Rows from the top, blue, green, red, without padding.
struct Clipboard_Picture {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> pixels{};
};

class Window_System {
public:
    virtual ~Window_System() = default;

    /// Empty when the clipboard holds no picture. `window` is the handle of the window that asks.
    virtual Clipboard_Picture Picture_Of_Clipboard(std::intptr_t window) = 0;

    /// Names of the families that scale to any size, in UTF-8, sorted. `device_context` is where they will be drawn; 0 is
    /// the screen.
    virtual std::vector<std::string> Scalable_Font_Names(std::intptr_t device_context) = 0;
};

/// Null removes it. Not owned.
void Install_Window_System(Window_System* window_system);

/// A new bitmap of 3 bytes a pixel, or 0 with the reason in Get_Last_Image_Error_String.
Bitmap_Handle Get_Bitmap_From_Clipboard(std::intptr_t window);

/// How many faces there are; their names stand in the buffer, one a line. `length` as for the texts of files: negative when
/// the list fills the whole buffer.
std::int32_t Get_TrueType_Font_FaceNames(std::intptr_t device_context, char* buffer, std::int32_t size,
                                         std::int32_t* length);
