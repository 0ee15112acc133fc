#pragma once

#include "bkimgutl/contract/Window_System.h"

/// Qt's clipboard and fonts for the pixel library, for as long as this lives.
class Qt_Window_System final : public Window_System {
public:
    Qt_Window_System() { Install_Window_System(this); }
    ~Qt_Window_System() override { Install_Window_System(nullptr); }
    Qt_Window_System(const Qt_Window_System&) = delete;
    Qt_Window_System& operator=(const Qt_Window_System&) = delete;

    /// Transparent parts lie over white. Qt has one clipboard for all windows.
    Clipboard_Picture Picture_Of_Clipboard(std::intptr_t window) override;
    /// Qt has one list of fonts for all devices.
    std::vector<std::string> Scalable_Font_Names(std::intptr_t device_context) override;
};
