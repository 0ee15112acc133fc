#include "frame/command/Command_Line.h"

#include "frame/command/Terminal.h"
#include "frame/text/Text_Utilities.h"

#include <QtCore/QFile>
#include <cstdio>

Command_Line::Command_Line(const char* command, Takes takes) : command_(QString::fromLatin1(command)), takes_(takes)
{
    parser_.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    Add_Flag(QStringLiteral("json"), QStringLiteral("Print one JSON object a line."));
    if (takes == Takes::Nothing_More) return;
    Add_Value(QStringLiteral("files-from"),
              QStringLiteral("Read file names from LIST, one a line; - is standard input."), QStringLiteral("LIST"));
    Add_Flag(QStringLiteral("0"), QStringLiteral("Names in LIST end with a zero byte."));
}

void Command_Line::Add_Flag(const QString& name, const QString& description)
{
    parser_.addOption({name, description});
}

void Command_Line::Add_Value(const QString& name, const QString& description, const QString& value_name)
{
    parser_.addOption({name, description, value_name});
}

std::optional<Exit_Status> Command_Line::Parse(const QStringList& arguments)
{
    if (!parser_.parse(QStringList(QStringLiteral("hv")) + arguments)) return Complain(parser_.errorText());
    if (Has(QStringLiteral("help"))) {
        Print_Help();
        return Exit_Status::All_Done;
    }
    files_ = parser_.positionalArguments();
    for (const QString& name : fixed_names_) {
        if (files_.isEmpty()) return Complain(QStringLiteral("%1 is missing").arg(name));
        fixed_ << files_.takeFirst();
    }
    if (takes_ == Takes::Nothing_More)
        return files_.isEmpty() ? std::nullopt
                                : std::optional(Complain(QStringLiteral("too many arguments: %1").arg(files_.first())));
    if (Has(QStringLiteral("files-from"))) {
        if (!Read_File_List(Value(QStringLiteral("files-from")))) return Exit_Status::Wrong_Usage;
    } else if (files_.isEmpty()) {
        return Complain(QStringLiteral("no file was named"));
    }
    return {};
}

bool Command_Line::Read_File_List(const QString& list)
{
    QFile file(list);
    const bool opened = list == u"-" ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!opened) {
        Print_Message(list, file.errorString());
        return false;
    }
    const char separator = Has(QStringLiteral("0")) ? '\0' : '\n';
    for (const QByteArray& name : file.readAll().split(separator))
        if (!name.isEmpty()) files_ << Path_From_Bytes(name);
    return true;
}

void Command_Line::Print_Help() const
{
    const Command* command = Find_Command(command_.section(u' ', 0, 0));
    const QString usage = command != nullptr ? QString::fromLatin1(command->usage) : QString();
    QString options = parser_.helpText();
    options.remove(0, std::max<qsizetype>(options.indexOf(QStringLiteral("Options:")), 0));
    const QString name = command_.section(u' ', 0, 0);
    Print_Line(QStringLiteral("Usage: hv %1 [OPTIONS] %2\n\n%3").arg(name, usage, options.trimmed()));
}

Exit_Status Command_Line::Complain(const QString& reason) const
{
    Print_Message({}, QStringLiteral("%1: %2 (see hv %1 --help)").arg(command_, reason));
    return Exit_Status::Wrong_Usage;
}

std::optional<int> Command_Line::Number(const QString& name, int standard, int low, int high) const
{
    if (!Has(name)) return standard;
    const auto number = Long_From_Text(Value(name));
    if (number && *number >= low && *number <= high) return number;
    Complain(QStringLiteral("--%1 takes a number from %2 to %3").arg(name).arg(low).arg(high));
    return {};
}

std::optional<int> Right_Angle(const QString& text)
{
    const auto degrees = Long_From_Text(text);
    if (!degrees || *degrees % 90 != 0) return {};
    return ((*degrees % 360) + 360) % 360;
}

std::optional<int> File_Type_From_Name(const QString& name)
{
    const QString folded = Case_Folded(name);
    if (folded.isEmpty()) return 0;
    if (folded == u"jpg" || folded == u"jpeg" || folded == u"jif") return 1;
    if (folded == u"tif" || folded == u"tiff") return 2;
    return {};
}
