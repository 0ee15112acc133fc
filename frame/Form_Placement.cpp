#include "frame/Form_Placement.h"

#include "frame/Settings_Store.h"
#include "frame/text/Number_Text.h"
#include "frame/text/Text_Utilities.h"

#include <limits>

namespace {

constexpr int Largest_Coordinate = std::numeric_limits<int>::max();
constexpr int Screen_Margin = 2; // twips: a window never takes the whole screen

struct Axis {
    int start, size;
};

void Read_Coordinate_Pair(const QString& text, int& position, int& first, int& second)
{
    int number = 0;
    Read_Number(text, position, number, 0, Largest_Coordinate, /*skip_colon_first=*/true);
    first = number;
    Read_Number(text, position, number, 0, Largest_Coordinate, /*skip_colon_first=*/true);
    second = number;
}

float Read_Splitter(const QString& text, int& position)
{
    double number = 0;
    Read_Number(text, position, number, 0.0, double(Largest_Coordinate), /*skip_colon_first=*/true);
    return float(number);
}

int Centred_Start(int size, int screen)
{
    return (screen - size) / 2;
}

Axis Restored_Axis(Axis recorded, int minimum, int screen)
{
    const int size = std::min(std::max(recorded.size, minimum), screen - Screen_Margin);
    // The sum in 64 bits: a record may hold any number.
    const bool outside = recorded.start < 1 || std::int64_t(recorded.start) + size >= screen;
    return {outside ? Centred_Start(size, screen) : recorded.start, size};
}

} // namespace

Placement_Record Read_Placement_Record(const QString& text)
{
    Placement_Record record;
    int position = 1;
    Skip_Blanks(text, position);
    while (position <= text.size()) {
        bool comment = false;
        bool enabled = true;
        QString keyword;
        Read_Keyword(text, position, comment, enabled, keyword);
        keyword = comment ? QString() : keyword.toUpper();
        if (keyword == u"WOR") Read_Coordinate_Pair(text, position, record.place.left, record.place.top);
        if (keyword == u"WSZ") Read_Coordinate_Pair(text, position, record.place.width, record.place.height);
        if (keyword == u"SPR") record.splitters.push_back(Read_Splitter(text, position));
        Skip_To_Next_Record(text, position);
        Skip_Blanks(text, position);
    }
    return record;
}

QString Placement_Record_Text(const Form_Place& place, std::span<const float> splitters)
{
    QString text =
        QStringLiteral("WOR:%1:%2,WSZ:%3:%4").arg(place.left).arg(place.top).arg(place.width).arg(place.height);
    for (const float position : splitters)
        text += QStringLiteral(",SPR:") + Format_Number(double(position), QStringLiteral("0.000"));
    return text;
}

Form_Place Restored_Place(const Form_Place& recorded, QSize minimum, QSize screen)
{
    const Axis across = Restored_Axis({recorded.left, recorded.width}, minimum.width(), screen.width());
    const Axis down = Restored_Axis({recorded.top, recorded.height}, minimum.height(), screen.height());
    return {across.start, down.start, across.size, down.size};
}

Form_Place Centred_Place(QSize size, QSize screen)
{
    return {Centred_Start(size.width(), screen.width()), Centred_Start(size.height(), screen.height()), size.width(),
            size.height()};
}

QSize Form_Design_Size(bool Design_From_Form, QSize form, QSize global)
{
    if (Design_From_Form) return form;
    return {global.width() != 0 ? global.width() : form.width(),
            global.height() != 0 ? global.height() : form.height()};
}

void Save_Form_Placement(Settings_Map& settings, const Placed_Form& form, const QString& Value_Name,
                         std::span<const float> Splitter_Positions)
{
    settings.Write_Value(Settings_Key, Value_Name, Placement_Record_Text(form.Place(), Splitter_Positions));
}

std::vector<float> Restore_Form_Placement(const Platform& platform, Placed_Form& form, const QString& Value_Name,
                                          int Minimum_Width, int Minimum_Height)
{
    const QSize screen = platform.shell.Screen_Size_Twips();
    const QString stored = Read_Stored_Value(platform.settings, Value_Name);
    if (stored.isEmpty()) {
        const Form_Place present = form.Place();
        form.Move_To(Centred_Place({present.width, present.height}, screen));
        return {};
    }
    const Placement_Record record = Read_Placement_Record(stored);
    form.Move_To(Restored_Place(record.place, {Minimum_Width, Minimum_Height}, screen));
    return record.splitters;
}
