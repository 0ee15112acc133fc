#include "catalogue/Text_Item_Turning.h"
#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Stored_Pictures.h"

namespace {

const QString Overwrite = QStringLiteral("overwrite");

Exit_Status Turn_Files(const Command_Line& line, int degrees, int flip_bits)
{
    return For_Each_File(line.Files(), [&](const QString& file) {
        return Change_Picture(file, line.Has(Overwrite), [&](Single_Picture& picture) {
            if (degrees == 0 && flip_bits == 0) return true;
            picture.Item().Rotate = degrees;
            picture.Item().Flip = flip_bits;
            // Nobody has seen the script on the flipped picture: it is to do what it did before.
            Mirror_Items(picture.Item().Script_Items, flip_bits,
                         {picture.Item().Horz_Pixels, picture.Item().Vert_Pixels});
            return picture.Form().Saving().Save_Rotation_And_Flips(picture.Key());
        });
    });
}

void Add_Overwrite(Command_Line& line)
{
    line.Add_Flag(Overwrite, QStringLiteral("Write over read-only files, and files that hold more than is kept."));
}

/// A negative angle would be taken for an option. "-0" is one: names end with a zero byte.
QStringList With_Plain_Angle(QStringList arguments)
{
    for (QString& argument : arguments) {
        const auto degrees = Right_Angle(argument);
        if (!degrees || argument == u"-0") continue;
        argument = QString::number(*degrees);
        break;
    }
    return arguments;
}

} // namespace

Exit_Status Run_Rotate_Command(const QStringList& arguments)
{
    Command_Line line("rotate", Command_Line::Takes::Files);
    line.Add_Fixed(QStringLiteral("DEGREES"));
    Add_Overwrite(line);
    if (const auto end = line.Parse(With_Plain_Angle(arguments))) return *end;
    const auto degrees = Right_Angle(line.Fixed(0));
    if (!degrees) return line.Complain(QStringLiteral("DEGREES is a multiple of 90, counterclockwise"));
    return Turn_Files(line, *degrees, 0);
}

Exit_Status Run_Flip_Command(const QStringList& arguments)
{
    Command_Line line("flip", Command_Line::Takes::Files);
    line.Add_Fixed(QStringLiteral("h|v"));
    Add_Overwrite(line);
    if (const auto end = line.Parse(arguments)) return *end;
    const QString direction = line.Fixed(0);
    if (direction != u"h" && direction != u"v") return line.Complain(QStringLiteral("the direction is h or v"));
    return Turn_Files(line, 0, direction == u"h" ? Flip_Left_To_Right : Flip_Top_To_Bottom);
}
