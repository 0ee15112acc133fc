#include "frame/command/Command_Line.h"
#include "frame/command/File_Jobs.h"
#include "frame/command/Stored_Pictures.h"
#include "frame/command/Terminal.h"
#include "imaging/Brennick_Image_Utilities.h"
#include "imaging/Script_Utilities.h"

namespace {

Exit_Status Get_Scripts(const QStringList& arguments)
{
    Command_Line line("script get", Command_Line::Takes::Files);
    if (const auto end = line.Parse(arguments)) return *end;
    return For_Each_File(line.Files(), [&](const QString& file) -> Result<void> {
        const int type = File_Type_From_Signature(file);
        if (type == 0 || !Image_Script_Is_Readable(file, type)) return Image_Failure();
        const QString script = Get_Image_Script(file, type);
        if (line.Wants_Json())
            Print_Json({{QStringLiteral("file"), file}, {QStringLiteral("script"), script}});
        else
            Print_Line((line.Files().size() > 1 ? file + u'\t' : QString()) + On_One_Line(script));
        return {};
    });
}

/// The script's normal form, or why there is none.
Result<Script_Item_Array> Checked_Items(const QString& script)
{
    Script_Item_Array items;
    const Script_Status status = Parse_Script_Items(script, items);
    if (status != Script_Status::Complete) return Failure(Script_Status_Text(status).toStdString());
    return items;
}

const QString Left_Out = QStringLiteral("an item does not begin with a known keyword");

/// A damaged item is stored and run as far as it can be read, which is seldom what was meant.
void Tell_Damaged_Items(const Script_Item_Array& items)
{
    for (int index = 1; index <= items.Count(); ++index)
        if (const QString& item = items.Item(index).Script_Item_String; !Check_Item(item))
            Print_Message({}, QStringLiteral("item %1 is damaged: %2").arg(index).arg(item));
}

/// Items of unknown keywords are none; who types one means something else.
bool Leaves_Items_Out(const QString& script, const Script_Item_Array& items)
{
    const auto characters = [](QString text) { return text.remove(u' ').remove(u';').size(); };
    return characters(Join_Script_Items(items)) < characters(script);
}

void Add_Overwrite(Command_Line& line)
{
    line.Add_Flag(QStringLiteral("overwrite"),
                  QStringLiteral("Write over read-only files, and files with several names."));
}

Exit_Status Store_Script(const Command_Line& line, const QString& script)
{
    return For_Each_File(line.Files(), [&](const QString& file) {
        return Store_Texts(file, {.script = script}, line.Has(QStringLiteral("overwrite")));
    });
}

Exit_Status Set_Scripts(const QStringList& arguments)
{
    Command_Line line("script set", Command_Line::Takes::Files);
    line.Add_Fixed(QStringLiteral("TEXT"));
    Add_Overwrite(line);
    if (const auto end = line.Parse(arguments)) return *end;
    const auto items = Checked_Items(line.Fixed(0));
    if (!items) return line.Complain(QString::fromStdString(items.error().text));
    if (Leaves_Items_Out(line.Fixed(0), *items)) return line.Complain(Left_Out);
    Tell_Damaged_Items(*items);
    return Store_Script(line, Join_Script_Items(*items));
}

Exit_Status Clear_Scripts(const QStringList& arguments)
{
    Command_Line line("script clear", Command_Line::Takes::Files);
    Add_Overwrite(line);
    if (const auto end = line.Parse(arguments)) return *end;
    return Store_Script(line, QString());
}

void Print_Item(const Script_Item& item, bool as_json)
{
    const QString label = Script_Item_Type_Label(item.Script_Item_Type);
    if (as_json)
        Print_Json({{QStringLiteral("type"), item.Script_Item_Type},
                    {QStringLiteral("label"), label},
                    {QStringLiteral("item"), item.Script_Item_String}});
    else
        Print_Line(
            QStringLiteral("%1\t%2\t%3").arg(item.Script_Item_Type).arg(label, On_One_Line(item.Script_Item_String)));
}

Exit_Status Check_Script(const QStringList& arguments)
{
    Command_Line line("script check", Command_Line::Takes::Nothing_More);
    line.Add_Fixed(QStringLiteral("TEXT"));
    line.Add_Flag(QStringLiteral("items"), QStringLiteral("Print the items, one a line: type, label, text."));
    if (const auto end = line.Parse(arguments)) return *end;
    const auto items = Checked_Items(line.Fixed(0));
    if (!items) {
        Print_Message({}, QString::fromStdString(items.error().text));
        return Exit_Status::Some_Failed;
    }
    if (Leaves_Items_Out(line.Fixed(0), *items)) Print_Message({}, Left_Out);
    Tell_Damaged_Items(*items);
    if (line.Has(QStringLiteral("items"))) {
        for (int index = 1; index <= items->Count(); ++index) Print_Item(items->Item(index), line.Wants_Json());
    } else if (line.Wants_Json()) {
        Print_Json({{QStringLiteral("script"), Join_Script_Items(*items)}});
    } else {
        Print_Line(On_One_Line(Join_Script_Items(*items)));
    }
    return Exit_Status::All_Done;
}

} // namespace

Exit_Status Run_Script_Command(const QStringList& arguments)
{
    const QString action = arguments.value(0);
    if (action == u"get") return Get_Scripts(arguments.mid(1));
    if (action == u"set") return Set_Scripts(arguments.mid(1));
    if (action == u"clear") return Clear_Scripts(arguments.mid(1));
    if (action == u"check") return Check_Script(arguments.mid(1));
    Command_Line line("script", Command_Line::Takes::Nothing_More);
    if (action == u"--help" || action == u"-h") return line.Parse({QStringLiteral("--help")}).value();
    return line.Complain(QStringLiteral("get, set, clear or check is missing"));
}
