#include "catalogue/Text_Item_Turning.h"

#include "catalogue/Picture_Item.h"
#include "frame/files/Limits.h"
#include "frame/text/Text_Utilities.h"
#include "imaging/Script_Interpreter.h"
#include "imaging/Script_Utilities.h"

#include <cmath>
#include <numbers>

namespace {

/// Where the value of an attribute stands inside a start tag.
struct Value_Place {
    qsizetype at = -1;
    qsizetype length = 0;
};

/// name = 'value' or "value", the name without regard to case and as a whole word.
Value_Place Place_Of_Value(const QString& tag, const QString& name)
{
    for (qsizetype at = 0; (at = tag.indexOf(name, at, Qt::CaseInsensitive)) >= 0; at += name.size()) {
        if (at == 0 || !tag.at(at - 1).isSpace()) continue;
        qsizetype next = at + name.size();
        while (next < tag.size() && tag.at(next).isSpace()) ++next;
        if (next >= tag.size() || tag.at(next) != QLatin1Char('=')) continue;
        do ++next;
        while (next < tag.size() && tag.at(next).isSpace());
        if (next >= tag.size() || (tag.at(next) != QLatin1Char('\'') && tag.at(next) != QLatin1Char('"'))) continue;
        const qsizetype end = tag.indexOf(tag.at(next), next + 1);
        if (end < 0) return {};
        return {next + 1, end - next - 1};
    }
    return {};
}

double Number_At(const QString& tag, const QString& name)
{
    const Value_Place place = Place_Of_Value(tag, name);
    if (place.at < 0) return 0;
    return Double_From_Text(tag.mid(place.at, place.length).trimmed()).value_or(0);
}

/// A missing attribute counts as 0 and is added.
void Put_Number(QString& tag, const QString& name, const QString& number)
{
    const Value_Place place = Place_Of_Value(tag, name);
    if (place.at >= 0)
        tag.replace(place.at, place.length, number);
    else
        tag += QStringLiteral(" %1='%2'").arg(name, number);
}

struct Point {
    double x = 0;
    double y = 0;
};

Point Turned_Point(Point point, int degrees, Pixel_Size old_size)
{
    switch (degrees) {
    case 90: return {point.y, old_size.width - point.x};
    case 180: return {old_size.width - point.x, old_size.height - point.y};
    case 270: return {old_size.height - point.y, point.x};
    default: return point;
    }
}

constexpr int Escapement_Units_Per_Degree = 10;

/// Where a paragraph stands.
struct Place {
    Point origin;
    double escapement = 0; ///< tenths of a degree, counterclockwise
};

/// `tag` is what stands between "<" and ">". `move` gives the new place of one; it may read the tag's other numbers.
template <class Move>
QString Moved_Tag(QString tag, Move move)
{
    const QString x = QStringLiteral("orgx");
    const QString y = QStringLiteral("orgy");
    const QString escape = QStringLiteral("escape");
    const int full_turn = 360 * Escapement_Units_Per_Degree;
    const double old_escapement = Round_Half_Even(std::fmod(Number_At(tag, escape), full_turn));
    const Place place = move(tag, Place{{Number_At(tag, x), Number_At(tag, y)}, old_escapement});
    Put_Number(tag, x, Text_Of_Single(float(place.origin.x)));
    Put_Number(tag, y, Text_Of_Single(float(place.origin.y)));
    const int escapement = int(place.escapement);
    Put_Number(tag, escape, QString::number(((escapement % full_turn) + full_turn) % full_turn));
    return tag;
}

Place Turned_Place(const Place& place, int degrees, Pixel_Size old_size)
{
    return {Turned_Point(place.origin, degrees, old_size), place.escapement + degrees * Escapement_Units_Per_Degree};
}

/// The mirrored box is the old one with its text running backwards; it starts at the other end (or at the foot).
Place Mirrored_Place(const QString& tag, const Place& place, bool left_to_right, Pixel_Size size)
{
    const double angle = place.escapement / Escapement_Units_Per_Degree * std::numbers::pi / 180;
    Point origin = place.origin;
    if (left_to_right) {
        const double width = Number_At(tag, QStringLiteral("width"));
        origin = {size.width - origin.x - width * std::cos(angle), origin.y - width * std::sin(angle)};
    } else {
        const double height = Number_At(tag, QStringLiteral("height"));
        origin = {origin.x + height * std::sin(angle), size.height - origin.y - height * std::cos(angle)};
    }
    return {origin, -place.escapement};
}

/// `move` as for Moved_Tag, for each paragraph.
template <class Move>
QString Moved_Text_Body(const QString& body, Move move)
{
    const QString start = QStringLiteral("<Paragraph");
    QString result;
    qsizetype copied = 0;
    int objects = 0;
    for (qsizetype at = 0; (at = body.indexOf(start, at, Qt::CaseInsensitive)) >= 0;) {
        const qsizetype end = body.indexOf(QLatin1Char('>'), at);
        if (end < 0 || ++objects > Current_Limits().text_objects) break;
        const bool whole_word = !body.at(at + start.size()).isLetterOrNumber();
        if (whole_word) {
            result += body.mid(copied, at + 1 - copied) + Moved_Tag(body.mid(at + 1, end - at - 1), move);
            copied = end;
        }
        at = end;
    }
    return result + body.mid(copied);
}

template <class Change>
void Change_Text_Items(Script_Item_Array& items, Change change)
{
    for (int index = 1; index <= items.Count(); ++index) {
        QString body;
        if (items.Item(index).Script_Item_Type != int(Script_Item_Kind::Text)) continue;
        if (!Parse_Text_Item(items.Item(index).Script_Item_String, body)) continue;
        items.Set_Item(index, {int(Script_Item_Kind::Text), Format_Text_Item(change(body))});
    }
}

template <class Change>
void Change_Crop_Items(Script_Item_Array& items, Change change)
{
    for (int index = 1; index <= items.Count(); ++index) {
        int left = 0;
        int top = 0;
        int right = 0;
        int bottom = 0;
        if (items.Item(index).Script_Item_Type != int(Script_Item_Kind::Crop)) continue;
        if (!Parse_Crop_Item(items.Item(index).Script_Item_String, left, top, right, bottom)) continue;
        change(left, top, right, bottom);
        items.Set_Item(index, {int(Script_Item_Kind::Crop), Format_Crop_Item(left, top, right, bottom)});
    }
}

} // namespace

QString Turned_Text_Body(const QString& body, int degrees, Pixel_Size old_size)
{
    degrees = Normal_Rotation(degrees);
    if (degrees == 0 || degrees % 90 != 0) return body;
    return Moved_Text_Body(body,
                           [&](const QString&, const Place& place) { return Turned_Place(place, degrees, old_size); });
}

void Turn_Text_Items(Script_Item_Array& items, int degrees, Pixel_Size old_size)
{
    Change_Text_Items(items, [&](const QString& body) { return Turned_Text_Body(body, degrees, old_size); });
}

void Turn_Crop_Items(Script_Item_Array& items, int degrees)
{
    Change_Crop_Items(items, [degrees](int& left, int& top, int& right, int& bottom) {
        Rotate_Crop_Margins(left, top, right, bottom, degrees);
    });
}

void Turn_Items(Script_Item_Array& items, int degrees, Pixel_Size old_size)
{
    if (Normal_Rotation(degrees) == 0) return;
    Turn_Crop_Items(items, degrees);
    Turn_Text_Items(items, degrees, old_size);
}

void Mirror_Items(Script_Item_Array& items, int flip, Pixel_Size size)
{
    for (const int kind : {Flip_Left_To_Right, Flip_Top_To_Bottom}) {
        if ((flip & kind) == 0) continue;
        const bool left_to_right = kind == Flip_Left_To_Right;
        Change_Crop_Items(items, [&](int& left, int& top, int& right, int& bottom) {
            left_to_right ? std::swap(left, right) : std::swap(top, bottom);
        });
        Change_Text_Items(items, [&](const QString& body) {
            return Moved_Text_Body(body, [&](const QString& tag, const Place& place) {
                return Mirrored_Place(tag, place, left_to_right, size);
            });
        });
    }
}
