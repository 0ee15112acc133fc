#include "frame/Settings_Store.h"

#include "frame/files/Limits.h"
#include "frame/files/Regular_File.h"
#include "frame/text/Number_Text.h"
#include "frame/text/Path_Utilities.h"
#include "frame/text/Text_Utilities.h"

#include <QtCore/QStringList>

namespace {

constexpr int Most_Stored_Characters = 65536;
constexpr double Shortest_Interval = 0.001;
constexpr double Longest_Interval = 30.0;

/// One reading of a line with all that it includes. The number of included files is bounded, since four levels of files
/// that include one another a thousand times would otherwise never end.
class Settings_Reader {
public:
    explicit Settings_Reader(Program_State& state) : state_(state) {}
    void Read_String(const QString& text, int nesting);
    void Read_File(const QString& file_name, int nesting);

private:
    void Read_Record(const QString& keyword, const QString& text, int& position, int nesting);
    void Read_Interval(const QString& text, int& position);
    Name_Value_List* List_Of(const QString& keyword);
    QString* Text_Target_Of(const QString& keyword);

    Program_State& state_;
    int included_ = 0;
};

QString Quoted_Value(const QString& text, int& position)
{
    QString value;
    Read_Quoted_String(text, position, value, /*skip_colon_first=*/true);
    return value;
}

bool Opens_Quote(const QString& text, int position)
{
    if (position > text.size()) return false;
    const QChar c = text[position - 1];
    return c == u'\'' || c == u'"' || c == u'<';
}

Name_Value_List* Settings_Reader::List_Of(const QString& keyword)
{
    if (keyword == u"RNP") return &state_.Rename_Patterns;
    if (keyword == u"RNF") return &state_.Rename_Formulas;
    if (keyword == u"FDF") return &state_.File_Data_Formulas;
    return nullptr;
}

QString* Settings_Reader::Text_Target_Of(const QString& keyword)
{
    if (keyword == u"DIR") return &state_.Default_Path;
    if (keyword == u"EXT") return &state_.Default_Extensions;
    if (keyword == u"PRN") return &state_.Default_Printer_Name;
    return nullptr;
}

void Settings_Reader::Read_Interval(const QString& text, int& position)
{
    double seconds = state_.Slide_Display_Interval;
    Read_Number(text, position, seconds, Shortest_Interval, Longest_Interval, /*skip_colon_first=*/true);
    state_.Slide_Display_Interval = float(seconds);
}

void Settings_Reader::Read_Record(const QString& keyword, const QString& text, int& position, int nesting)
{
    if (QString* target = Text_Target_Of(keyword)) {
        Skip_Colon(text, position);
        if (Opens_Quote(text, position)) *target = Quoted_Value(text, position);
    } else if (Name_Value_List* list = List_Of(keyword)) {
        if (const auto pair = Pair_From_Text(Quoted_Value(text, position))) list->Append(*pair);
    } else if (keyword == u"SDI") {
        Read_Interval(text, position);
    } else if (keyword == u"INI") {
        Read_File(Quoted_Value(text, position), nesting + 1);
    }
}

void Settings_Reader::Read_String(const QString& text, int nesting)
{
    int position = 1;
    Skip_Blanks(text, position);
    while (position <= text.size()) {
        bool comment = false;
        bool enabled = true;
        QString keyword;
        Read_Keyword(text, position, comment, enabled, keyword);
        if (!comment) Read_Record(keyword.toUpper(), text, position, nesting);
        Skip_To_Next_Record(text, position);
        Skip_Blanks(text, position);
    }
}

void Settings_Reader::Read_File(const QString& file_name, int nesting)
{
    const QString name = file_name.trimmed();
    if (name.isEmpty() || nesting >= Settings_Nesting_Limit || included_ >= Settings_Includes_Limit) return;
    ++included_;
    const QStringList lines = Text_Of_Settings_File(Existing_Path(name)).split(u'\n');
    for (const QString& line : lines) {
        const QString record_line = line.trimmed();
        if (!record_line.isEmpty() && !record_line.startsWith(u'~')) Read_String(record_line, nesting);
    }
}

QString Quoted_Record(const char* keyword, const QString& value)
{
    return QLatin1String(keyword) + QStringLiteral(":'") + Quote_Single(value) + u'\'';
}

void Add_List(QString& line, const char* keyword, const Name_Value_List& list)
{
    for (int index = 1; index <= list.Count(); ++index)
        line += u',' + QLatin1String(keyword) + QStringLiteral(":\"") + Quote_Double(Text_Of_Pair(list[index])) + u'"';
}

} // namespace

QString Read_Stored_Value(Settings_Map& settings, const QString& name)
{
    return settings.Read_Value(Settings_Key, name).left(Most_Stored_Characters);
}

void Read_Settings_String(Program_State& state, const QString& Settings_String, int Nesting)
{
    Settings_Reader(state).Read_String(Settings_String, Nesting);
}

void Read_Settings_File(Program_State& state, const QString& File_Name, int Nesting)
{
    Settings_Reader(state).Read_File(File_Name, Nesting);
}

QString Text_Of_Settings_File(const QString& path)
{
    const auto file = Regular_File::Open(File_System_Bytes(path));
    if (!file) return {};
    const auto bytes = file->Read_All(Current_Limits().settings_file_bytes);
    if (!bytes) return {};
    return Decode_Text(QByteArray(reinterpret_cast<const char*>(bytes->data()), qsizetype(bytes->size())));
}

QString Settings_String_Of(const Program_State& state, bool With_Extensions)
{
    QString line = Quoted_Record("DIR", state.Default_Path) + u',' + Quoted_Record("PRN", state.Default_Printer_Name) +
                   QStringLiteral(",SDI:") +
                   Format_Number(double(state.Slide_Display_Interval), QStringLiteral("#0.00"));
    if (With_Extensions) line += u',' + Quoted_Record("EXT", state.Default_Extensions);
    Add_List(line, "RNP", state.Rename_Patterns);
    Add_List(line, "RNF", state.Rename_Formulas);
    Add_List(line, "FDF", state.File_Data_Formulas);
    return line;
}

void Write_Settings_String(const Program_State& state, Settings_Map& settings, const QString& Alias_String,
                           bool With_Extensions)
{
    settings.Write_Value(Settings_Key, Settings_Value, Settings_String_Of(state, With_Extensions));
    settings.Write_Value(Settings_Key, Alias_Value, Alias_String);
}

QString Text_Of_Pair(const Name_Value_Pair& pair)
{
    return u'\'' + Quote_Single(pair.Name) + QStringLiteral("','") + Quote_Single(pair.Value) + u'\'';
}

std::optional<Name_Value_Pair> Pair_From_Text(const QString& text)
{
    if (text.isEmpty()) return std::nullopt;
    if (!Opens_Quote(text, 1)) return Name_Value_Pair{text, text};
    Name_Value_Pair pair;
    int position = 1;
    Read_Quoted_String(text, position, pair.Name);
    Skip_Blanks(text, position);
    if (position > text.size() || text[position - 1] != u',') {
        pair.Value = pair.Name;
        return pair;
    }
    ++position;
    Skip_Blanks(text, position);
    Read_Quoted_String(text, position, pair.Value);
    return pair;
}
