#pragma once

#include "slides/Slide_Player.h"
#include "slides/Slide_Show_Forwarder.h"
#include "tests/catalogue/Catalogue_Fixture.h"

inline QString Q(const char* text)
{
    return QString::fromUtf8(text);
}

struct Recording_Window final : Slide_Main_Window {
    bool Is_Busy() const override { return busy; }
    bool Is_Full_Window() const override { return full; }
    void Set_Full_Window(bool on) override
    {
        full = on;
        if (on_switch) on_switch();
    }
    void Set_Show_Look(bool running) override { look = running; }
    bool busy = false, full = false, look = false;
    std::function<void()> on_switch;
};

struct Recording_Control final : Slide_Control_Window {
    void Form_Display(int index, int count, bool play) override
    {
        said += QStringLiteral("display %1/%2%3;").arg(index).arg(count).arg(play ? Q(" play") : QString());
    }
    void Set_Slide_Index(int index) override { said += QStringLiteral("index %1;").arg(index); }
    void Set_Slide_Count(int count) override { said += QStringLiteral("count %1;").arg(count); }
    void Set_Playing(bool playing) override { said += playing ? Q("playing;") : Q("paused;"); }
    void Form_Erase() override { said += Q("erase;"); }
    QString said;
};

/// Records without files: a slide's picture is the current one, loaded or not.
class Slide_Player_Test : public Catalogue_Test {
protected:
    Slide_Player_Test()
    {
        form.Set_Slide_Show(&link);
        player.Set_Windows(&window, &control);
    }
    ~Slide_Player_Test() override { form.Set_Slide_Show(nullptr); }

    void Add_Pictures(int count)
    {
        for (int i = 1; i <= count; ++i) keys.push_back(Add(QStringLiteral("%1.jpg").arg(i)));
    }
    void Select(std::initializer_list<int> indices)
    {
        form.State().selection.Clear();
        for (const int index : indices) form.State().selection.Set_Index(index, true);
    }
    std::vector<int> Selected() const { return form.State().selection.Selected_Indices(); }
    int Shown() const { return form.State().Current_Picture_Index(); }
    Scripted_Timer& Timer() const { return *platform.timers.at(0); }
    void Control(Slide_Control_Code code) { form.Slide_Show_Control(int(code), player.Slide_Index()); }

    Program_State program;
    Slide_Shows shows{form.State(), form.Picking(), program};
    Slide_Player player{form.State(), form.Pictures(), shows, program};
    Slide_Show_Forwarder link{shows, player};
    Recording_Window window;
    Recording_Control control;
    std::vector<int> keys;
};
