#include "frame/Configuration_File.h"

#include "documents/Brennick_XML_Utilities.h"
#include "documents/Document_File.h"
#include "frame/Settings_Store.h"
#include "frame/text/Text_Utilities.h"

namespace {

const QString Root = QStringLiteral("hvConfigure");
const QString Line_End = QStringLiteral("\r\n");

void Take_Pair(Name_Value_List& list, const QString& text)
{
    if (const auto pair = Pair_From_Text(text)) list.Append(*pair);
}

/// False when there is no such element. The old "EAS" is known and means nothing.
bool Take_Element(Program_State& state, const QString& name, const QString& value)
{
    if (name == u"DIR")
        state.Default_Path = value;
    else if (name == u"EXT")
        state.Default_Extensions = value;
    else if (name == u"PRN")
        state.Default_Printer_Name = value;
    else if (name == u"SDI")
        state.Slide_Display_Interval =
            (Is_Signed_Decimal(value) ? Single_From_Text(value) : std::nullopt).value_or(state.Slide_Display_Interval);
    else if (name == u"RNP")
        Take_Pair(state.Rename_Patterns, value);
    else if (name == u"RNF")
        Take_Pair(state.Rename_Formulas, value);
    else if (name == u"FDF")
        Take_Pair(state.File_Data_Formulas, value);
    else
        return name == u"EAS";
    return true;
}

/// The text of the element that `tag` opens; the item behind it is taken in any case.
QString Value_Of(const XML_Tag& tag, const QString& text, int& position)
{
    if (tag.Self_Closing) return {};
    const XML_Tag end = XML_Next_Tag(text, position, Behind_Text(text));
    return Equal_Without_Case(end.Name, u'/' + tag.Name) ? end.Text : QString();
}

/// The elements up to the end tag; false after a fault.
bool Take_Elements(Program_State& state, const QString& text, int& position)
{
    for (;;) {
        const XML_Tag tag = XML_Next_Tag(text, position, Behind_Text(text));
        if (Equal_Without_Case(tag.Name, u'/' + Root)) return true;
        if (tag.Name.isEmpty() || tag.Name.startsWith(u'/')) return false;
        if (!Take_Element(state, tag.Name.toUpper(), Value_Of(tag, text, position))) return false;
    }
}

QString Element(const char* name, const QString& value)
{
    return XML_Tag_Text({.Name = QLatin1String(name), .Text = value}, false) + Line_End;
}

QString List_Elements(const char* name, const Name_Value_List& list)
{
    QString elements;
    for (int index = 1; index <= list.Count(); ++index) elements += Element(name, Text_Of_Pair(list[index]));
    return elements;
}

} // namespace

bool Read_Configuration_Text(Program_State& state, const QString& text, const Configuration_Question& may_take)
{
    int position = 1;
    XML_Read_Prolog(text, position, Behind_Text(text));
    if (!Equal_Without_Case(XML_Next_Tag(text, position, Behind_Text(text)).Name, Root)) return false;
    Program_State read = state;
    Reset_Formula_Lists(read);
    const bool complete = Take_Elements(read, text, position);
    if (may_take && !may_take(read)) return false;
    state = std::move(read);
    return complete;
}

QString Configuration_Text(const Program_State& state)
{
    QString elements = Element("DIR", state.Default_Path) + Element("EXT", state.Default_Extensions) +
                       Element("PRN", state.Default_Printer_Name) +
                       Element("SDI", Format_Number(double(state.Slide_Display_Interval), QStringLiteral("#0.00"))) +
                       List_Elements("RNP", state.Rename_Patterns) + List_Elements("RNF", state.Rename_Formulas) +
                       List_Elements("FDF", state.File_Data_Formulas);
    elements.chop(Line_End.size());
    const QString version = XML_Attribute_Text(QStringLiteral("version"), Document_Version()).trimmed();
    return XML_Prolog() + Line_End + XML_Tag_Text({.Name = Root, .Attributes = version, .Text = elements}, true) +
           Line_End;
}

bool Load_Configuration_File(Program_State& state, const QString& path, const Configuration_Question& may_take)
{
    const auto text = Read_Document(path);
    return text && Read_Configuration_Text(state, *text, may_take);
}

Result<void> Store_Configuration_File(const Program_State& state, const QString& path)
{
    return Write_Document(path, Configuration_Text(state));
}
