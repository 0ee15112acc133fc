// slide_bench [ROUNDS]: how long a slide takes from the tick of the timer to the picture at the size of a screen, on files
// of 24 megapixels, with the next slide made ahead and without; and how long the thread of the window did nothing else, in
// each change and while the next slide was made.

#include "catalogue/Halvine_Form.h"
#include "dev/samples/Jpeg_File.h"
#include "frame/ports/Scripted_Platform.h"
#include "imaging/Script_Interpreter.h"
#include "slides/Slide_Show_Forwarder.h"

#include <QtCore/QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

constexpr int Width = 6000, Height = 4000, Files = 3;
constexpr int Screen_Width = 1920, Screen_Height = 1080;
const QString Script = QStringLiteral("ConOpt(0.005,0.005,LUM);Unsharp(0.75,0.25,1.5,2,5,K)");

using Clock_Point = std::chrono::steady_clock::time_point;

double Milliseconds(std::chrono::steady_clock::duration time)
{
    return std::chrono::duration<double, std::milli>(time).count();
}

/// Brings the current picture to the size of a screen, as the main window does.
class Screen_View : public Catalogue_View {
public:
    explicit Screen_View(Halvine_Form& form) : form_(form) {}
    bool Shows_Thumbnails() const override { return false; }
    void Show_Current_Picture() override
    {
        Catalogue_State& state = form_.State();
        const Picture_Item* item = state.pictures.Find(state.current_picture_key);
        if (item == nullptr) return;
        const Bitmap_Handle own = state.Current_Picture_Bitmap.Get();
        Owned_Bitmap adjusted(form_.Pictures().Take_Current_Adjusted());
        if (!adjusted) {
            const Bitmap_Handle made = Apply_Script_Items(own, state.Items_In_Force(*item), {.divisor = 1});
            if (made != own) adjusted.Reset(made);
        }
        const double scale = std::min(double(Screen_Width) / Width, double(Screen_Height) / Height);
        shown_.Reset(Count_Bitmap(Create_Scaled_Bitmap_CPP(adjusted ? adjusted.Get() : own, int(Width * scale),
                                                           int(Height * scale), int(Interpolation_Method::Triangle))));
        if (!shown_) std::abort();
        at_ = std::chrono::steady_clock::now();
    }
    Clock_Point Shown_At() const { return at_; }

private:
    Halvine_Form& form_;
    Owned_Bitmap shown_;
    Clock_Point at_;
};

struct Bench {
    explicit Bench(const QStringList& files)
    {
        form.Set_View(&view);
        std::vector<File_Entry> entries;
        for (const QString& file : files) entries.push_back(Entry_Of_File(file));
        form.Pick_Files(entries, false, false);
        if (form.State().pictures.Count() != Files) std::abort();
        player.Slide_Continuous = true;
    }
    struct Times {
        std::vector<double> changes{}; ///< milliseconds of each change of slides
        double longest_silence = 0;    ///< milliseconds in which the window's thread answered nobody
    };

    /// What the window's thread does while the next slide is made: it looks for events all the time.
    void Answer_Until_Made(double& longest_silence)
    {
        Clock_Point last = std::chrono::steady_clock::now();
        const auto look = [&] {
            const Clock_Point now = std::chrono::steady_clock::now();
            longest_silence = std::max(longest_silence, Milliseconds(now - last));
            last = now;
        };
        desktop.timers[1]->Fire();
        do {
            look();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            look();
        } while (Is_Made_Aside());
    }
    bool Is_Made_Aside()
    {
        for (int slide = 1; slide <= Files; ++slide)
            if (form.Pictures().Next().Is_Being_Made(player.Picture_Key_Of_Slide(slide))) return true;
        return false;
    }

    Times Run(int rounds, bool ahead, const QString& script)
    {
        for (int index = 1; index <= Files; ++index)
            Parse_Script_Items(script, form.State().pictures.Item(index).Script_Items);
        player.Start_Slide_Show(true);
        Times times;
        for (int round = -1; round < rounds; ++round) { // the first one warms up
            double silence = 0;
            if (ahead) Answer_Until_Made(silence);
            const Clock_Point start = std::chrono::steady_clock::now();
            if (ahead)
                desktop.timers[0]->Fire();
            else
                player.Slide_Show_Control(int(Slide_Control_Code::Next), 0); // which waits for nothing
            if (round < 0) continue;
            times.changes.push_back(Milliseconds(view.Shown_At() - start));
            times.longest_silence =
                std::max({times.longest_silence, silence, Milliseconds(std::chrono::steady_clock::now() - start)});
        }
        player.Stop_Slide_Show();
        return times;
    }

    Scripted_Platform desktop;
    Halvine_Form form{desktop.platform};
    Screen_View view{form};
    Program_State program;
    Slide_Shows shows{form.State(), form.Picking(), program};
    Slide_Player player{form.State(), form.Pictures(), shows, program};
};

QStringList Make_Files(const QTemporaryDir& folder)
{
    QStringList files;
    for (int i = 1; i <= Files; ++i) {
        const auto bytes = Jpeg_File(Meadow(Width, Height, unsigned(i)), {.quality = 92});
        QFile file(folder.filePath(QStringLiteral("%1.jpg").arg(i)));
        if (!file.open(QIODevice::WriteOnly) ||
            file.write(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())) < 0)
            std::abort();
        files << file.fileName();
    }
    return files;
}

void Print(const char* name, Bench::Times times)
{
    std::vector<double>& changes = times.changes;
    std::sort(changes.begin(), changes.end());
    std::printf("%-48s median %7.1f ms, longest %7.1f ms, window silent for %7.1f ms at most\n", name,
                changes[changes.size() / 2], changes.back(), times.longest_silence);
}

} // namespace

int main(int argc, char** argv)
{
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 9;
    const QTemporaryDir folder;
    Bench bench(Make_Files(folder));
    Print("no script, made when it is due", bench.Run(rounds, false, {}));
    Print("no script, made ahead", bench.Run(rounds, true, {}));
    Print("contrast and sharpening, made when it is due", bench.Run(rounds, false, Script));
    Print("contrast and sharpening, made ahead", bench.Run(rounds, true, Script));
}
