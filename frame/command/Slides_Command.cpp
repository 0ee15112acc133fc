#include "catalogue/File_Confirmation.h"
#include "documents/Document_File.h"
#include "frame/Program_State.h"
#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Stored_Pictures.h"
#include "frame/command/Terminal.h"
#include "frame/text/Text_Utilities.h"
#include "slides/Slide_Show_Copy.h"
#include "slides/Slide_Show_Finder.h"

namespace {

/// What a show holds and where its pictures are now. A missing picture is named and left out.
class Found_Slides final : public Slide_Show_Sink {
public:
    explicit Found_Slides(const QString& show_file) : finder_(show_file) {}
    void Take_Folder(const QString& folder) override { finder_.Set_Folder(folder); }
    void Take_Seconds(float new_seconds) override { seconds = new_seconds; }
    bool Take_Slide(const Slide& slide) override
    {
        const QString found = finder_.Find(slide.file);
        if (found.isEmpty())
            Miss(slide.file);
        else
            slides.push_back({found, slide.rotate, slide.seconds});
        return !Is_Interrupted();
    }
    bool Take_Sound(const QString& file) override
    {
        if (finder_.Find(file).isEmpty()) Miss(file);
        return !Is_Interrupted();
    }
    std::vector<Slide> slides;
    float seconds = Program_State().Slide_Display_Interval;
    Exit_Status status = Exit_Status::All_Done;

private:
    void Miss(const QString& file)
    {
        Print_Message(file, QStringLiteral("no such file"));
        status = Exit_Status::Some_Failed;
    }
    Slide_Show_Finder finder_;
};

/// False, with a message, when the show cannot be read at all.
bool Read_Show(const QString& file, Found_Slides& found)
{
    const auto text = Read_Document(Absolute_Path(file));
    if (!text) {
        Print_Message(file, QString::fromStdString(text.error().text));
        return false;
    }
    const Show_End end = Read_Slide_Show(*text, found);
    if (end == Show_End::Complete) return true;
    found.status = Exit_Status::Some_Failed;
    Print_Message(file, end == Show_End::Fault
                            ? QStringLiteral("the show is damaged; what stands before the fault was read")
                            : QStringLiteral("interrupted"));
    return true;
}

/// No target is written over unless that is allowed.
bool May_Write(const QString& target, bool overwrite)
{
    Terminal_Dialogs dialogs(overwrite);
    const bool may = Confirm_Overwrite(dialogs, Absolute_Path(target)) &&
                     Confirm_Writable(dialogs, Absolute_Path(target), QStringLiteral("overwrite"), true);
    if (!may) Print_Message(target, dialogs.Reason());
    return may;
}

Exit_Status List_Slides(const QStringList& arguments)
{
    Command_Line line("slides list", Command_Line::Takes::Nothing_More);
    line.Add_Fixed(QStringLiteral("FILE.hvs"));
    if (const auto end = line.Parse(arguments)) return *end;
    Found_Slides show(Absolute_Path(line.Fixed(0)));
    if (!Read_Show(line.Fixed(0), show)) return Exit_Status::Some_Failed;
    if (line.Wants_Json())
        Print_Json({{QStringLiteral("time"), double(show.seconds)}});
    else
        Print_Line(QStringLiteral("time\t") + Seconds_Text(show.seconds));
    for (const Slide& slide : show.slides) {
        if (line.Wants_Json())
            Print_Json({{QStringLiteral("file"), slide.file},
                        {QStringLiteral("rotate"), slide.rotate},
                        {QStringLiteral("time"), double(slide.seconds)}});
        else
            Print_Line(QStringLiteral("%1\t%2\t%3")
                           .arg(slide.file, QString::number(slide.rotate), Seconds_Text(slide.seconds)));
    }
    return show.status;
}

Exit_Status Make_Slides(const QStringList& arguments)
{
    Command_Line line("slides make", Command_Line::Takes::Files);
    line.Add_Fixed(QStringLiteral("FILE.hvs"));
    line.Add_Value(QStringLiteral("time"), QStringLiteral("SECONDS that each slide is shown (default 2)."),
                   QStringLiteral("SECONDS"));
    line.Add_Flag(QStringLiteral("overwrite"), QStringLiteral("Write over an existing show."));
    if (const auto end = line.Parse(arguments)) return *end;
    float seconds = Program_State().Slide_Display_Interval;
    if (line.Has(QStringLiteral("time"))) {
        seconds = Single_From_Text(line.Value(QStringLiteral("time"))).value_or(0);
        if (seconds < 0.01F || seconds > 30)
            return line.Complain(QStringLiteral("--time takes seconds from 0.01 to 30"));
    }
    if (!May_Write(line.Fixed(0), line.Has(QStringLiteral("overwrite")))) return Exit_Status::Some_Failed;
    std::vector<Slide> slides;
    const Exit_Status status = For_Each_File(line.Files(), [&slides](const QString& file) -> Result<void> {
        const QString path = Absolute_Path(file);
        if (Test_File_Exists(path, false).value_or(0) != 1) return Failure("no such file");
        if (File_Type_From_Signature(path) == 0) return Failure("is no picture");
        slides.push_back({.file = path});
        return {};
    });
    if (slides.empty() || Is_Interrupted()) return Exit_Status::Some_Failed;
    const auto written = Write_Document(Absolute_Path(line.Fixed(0)), Slide_Show_Text(slides, seconds));
    if (written) return status;
    Print_Message(line.Fixed(0), QString::fromStdString(written.error().text));
    return Exit_Status::Some_Failed;
}

Exit_Status Copy_Slides(const QStringList& arguments)
{
    Command_Line line("slides copy", Command_Line::Takes::Nothing_More);
    line.Add_Fixed(QStringLiteral("FILE.hvs"));
    line.Add_Fixed(QStringLiteral("TARGET.hvs"));
    line.Add_Flag(QStringLiteral("overwrite"), QStringLiteral("Write over an existing show."));
    if (const auto end = line.Parse(arguments)) return *end;
    const QString target = With_Default_Extension(line.Fixed(1), QStringLiteral("hvs"));
    if (!May_Write(target, line.Has(QStringLiteral("overwrite")))) return Exit_Status::Some_Failed;
    Found_Slides show(Absolute_Path(line.Fixed(0)));
    if (!Read_Show(line.Fixed(0), show) || Is_Interrupted()) return Exit_Status::Some_Failed;
    const auto left_out = Copy_Slide_Show(show.slides, show.seconds, Absolute_Path(target));
    if (!left_out) {
        Print_Message(target, QString::fromStdString(left_out.error().text));
        return Exit_Status::Some_Failed;
    }
    for (const QString& file : *left_out) Print_Message(file, QStringLiteral("could not be copied and is left out"));
    return left_out->isEmpty() ? show.status : Exit_Status::Some_Failed;
}

} // namespace

Exit_Status Run_Slides_Command(const QStringList& arguments)
{
    const QString action = arguments.value(0);
    if (action == u"list") return List_Slides(arguments.mid(1));
    if (action == u"make") return Make_Slides(arguments.mid(1));
    if (action == u"copy") return Copy_Slides(arguments.mid(1));
    Command_Line line("slides", Command_Line::Takes::Nothing_More);
    if (action == u"--help" || action == u"-h") return line.Parse({QStringLiteral("--help")}).value();
    return line.Complain(QStringLiteral("list, make or copy is missing"));
}
