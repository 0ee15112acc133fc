#pragma once

#include "slides/Slide_Player.h"

/// What the catalogue asks of the slide show, answered by the show file and the player.
class Slide_Show_Forwarder final : public Slide_Show_Link {
public:
    Slide_Show_Forwarder(Slide_Shows& shows, Slide_Player& player) : shows_(shows), player_(player) {}

    bool Is_Running() const override { return player_.Is_Running(); }
    void Stop() override { player_.Stop_Slide_Show(); }
    void Pictures_Removed() override { player_.Forget_Removed(); }
    bool Is_File_Open() const override { return shows_.Is_File_Open(); }
    QString File_Name() const override { return shows_.Slide_Show_File_Name(); }
    void Set_File_Modified() override { shows_.Set_File_Modified(); }
    void Forget_File() override { shows_.Forget_File(); }
    bool Confirm_Abandon() override { return shows_.Confirm_Abandon_Slide_Show(); }
    void Control(int code, int slide) override { player_.Slide_Show_Control(code, slide); }
    int Picture_Key_Of_Slide(int slide) const override { return player_.Picture_Key_Of_Slide(slide); }

private:
    Slide_Shows& shows_;
    Slide_Player& player_;
};
