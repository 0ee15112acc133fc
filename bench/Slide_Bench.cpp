// slide_bench [ROUNDS]: how long a slide takes from the tick of the timer to the picture at the size of a screen, on files
// of 24 megapixels, with the next slide read ahead and without.

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
    /// Milliseconds of each change of slides.
    std::vector<double> Run(int rounds, bool ahead, const QString& script)
    {
        for (int index = 1; index <= Files; ++index)
            Parse_Script_Items(script, form.State().pictures.Item(index).Script_Items);
        player.Start_Slide_Show(true);
        std::vector<double> times;
        for (int round = -1; round < rounds; ++round) { // the first one warms up
            while (ahead && desktop.timers[1]->on) {
                desktop.timers[1]->Fire();
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            }
            const Clock_Point start = std::chrono::steady_clock::now();
            desktop.timers[0]->Fire();
            if (round >= 0) times.push_back(std::chrono::duration<double, std::milli>(view.Shown_At() - start).count());
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

void Print(const char* name, std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    std::printf("%-48s median %7.1f ms, longest %7.1f ms\n", name, times[times.size() / 2], times.back());
}

} // namespace

int main(int argc, char** argv)
{
    const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 9;
    const QTemporaryDir folder;
    Bench bench(Make_Files(folder));
    Print("no script, read when it is due", bench.Run(rounds, false, {}));
    Print("no script, read ahead", bench.Run(rounds, true, {}));
    Print("contrast and sharpening, read when it is due", bench.Run(rounds, false, Script));
    Print("contrast and sharpening, read ahead", bench.Run(rounds, true, Script));
}
