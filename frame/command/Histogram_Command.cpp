#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Stored_Pictures.h"
#include "frame/command/Terminal.h"
#include "imaging/Script_Interpreter.h"
#include "imaging/Script_Utilities.h"
#include "imaging/Tone_Tables.h"

#include <QtCore/QJsonArray>
#include <bit>

namespace {

/// One letter of RGBLCMYK, or RGB for all three; 0 for anything else.
int Component_From_Name(const QString& name)
{
    const int mask = Color_Components_From_String(name);
    const bool is_plain = Color_Components_To_String(mask) == name.toUpper();
    return is_plain && (mask == Component_RGB || std::has_single_bit(unsigned(mask))) ? mask : 0;
}

Result<Histogram_Counts> Rendered_Histogram(const QString& file, int component, bool with_script)
{
    Script_Item_Array items;
    if (with_script) {
        auto stored = Stored_Items(file);
        if (!stored) return tl::make_unexpected(stored.error());
        items = std::move(*stored);
    }
    const Owned_Bitmap picture(Load_Adjusted_Picture({.path = file}, items));
    if (!picture) return Failure(Last_Load_Error().toStdString());
    Histogram_Counts counts{};
    std::int32_t samples = 0;
    if (!Compute_Bitmap_Color_Component_Histogram_CPP(picture.Get(), component, counts.data(), &samples))
        return Image_Failure();
    return counts;
}

void Print_Counts(const QString& file, const QString& component, const Histogram_Counts& counts, bool as_json)
{
    if (!as_json) {
        for (std::size_t level = 0; level < counts.size(); ++level)
            Print_Line(QStringLiteral("%1\t%2").arg(level).arg(counts[level]));
        return;
    }
    QJsonArray list;
    for (const auto count : counts) list.append(count);
    Print_Json(
        {{QStringLiteral("file"), file}, {QStringLiteral("component"), component}, {QStringLiteral("counts"), list}});
}

} // namespace

Exit_Status Run_Histogram_Command(const QStringList& arguments)
{
    Command_Line line("histogram", Command_Line::Takes::Nothing_More);
    line.Add_Fixed(QStringLiteral("FILE"));
    line.Add_Value(QStringLiteral("component"), QStringLiteral("RGB, R, G, B, L, C, M, Y or K; RGB without it."),
                   QStringLiteral("NAME"));
    line.Add_Flag(QStringLiteral("no-script"), QStringLiteral("Leave the stored script aside."));
    if (const auto end = line.Parse(arguments)) return *end;
    const QString name = line.Has(QStringLiteral("component")) ? line.Value(QStringLiteral("component")).toUpper()
                                                               : QStringLiteral("RGB");
    const int component = Component_From_Name(name);
    if (component == 0) return line.Complain(QStringLiteral("no such component: %1").arg(name));
    return For_Each_File({line.Fixed(0)}, [&](const QString& file) -> Result<void> {
        const auto counts = Rendered_Histogram(file, component, !line.Has(QStringLiteral("no-script")));
        if (!counts) return tl::make_unexpected(counts.error());
        Print_Counts(file, name, *counts, line.Wants_Json());
        return {};
    });
}
