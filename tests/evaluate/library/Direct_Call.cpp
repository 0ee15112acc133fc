#include "tests/evaluate/library/Direct_Call.h"
#include "Project_Folders.h"

#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Dates.h"
#include "evaluate/variant/Operators.h"
#include "evaluate/variant/Variant_Array.h"

#include <fstream>
#include <gtest/gtest.h>
#include <set>

using namespace Formula;

namespace {

using Binary = Error_Number (*)(Variant&, const Variant&);

template <auto Routine>
Error_Number Plain(Variant& left, const Variant& right)
{
    return Routine(left, right, Compare_Mode::Binary);
}

const std::vector<std::pair<QString, Binary>> Operators = {
    {"+", Add},
    {"-", Subtract},
    {"*", Multiply},
    {"/", Divide},
    {"\\", Integer_Divide},
    {"^", Power},
    {"&", Concatenate},
    {"<>", Plain<Not_Equal>},
    {"<=", Plain<Less_Or_Equal>},
    {">=", Plain<Greater_Or_Equal>},
    {"=", Plain<Equal>},
    {"<", Plain<Less>},
    {">", Plain<Greater>},
    {"Mod", Modulo},
    {"And", And},
    {"Or", Or},
    {"Xor", Xor},
    {"Eqv", Eqv},
    {"Imp", Imp},
    {"Like", Plain<Like>},
};

Host_File_Facts Facts(const char* name, std::int64_t size, int attributes)
{
    return {QString::fromLatin1(name), size, QDateTime(QDate(2003, 1, 2), QTime(15, 4, 5)), attributes};
}

} // namespace

/// Reads a call and carries it out at once; the first error ends it.
class Direct_Call::Reader {
public:
    Reader(Direct_Call& owner, const QString& text) : owner_(owner), text_(text) {}

    Variant Call()
    {
        auto left = Value();
        Skip();
        for (const auto& [sign, routine] : Operators) {
            if (QStringView(text_).mid(place_, sign.size()).compare(sign, Qt::CaseInsensitive) != 0) continue;
            place_ += sign.size();
            const auto right = Value();
            Check(routine(left, right));
            break;
        }
        return left;
    }

    bool Is_At_End()
    {
        Skip();
        return place_ == text_.size();
    }

private:
    void Check(Error_Number number)
    {
        if (number != Error_Number::None && !owner_.error_) owner_.error_ = number;
    }

    void Skip()
    {
        while (place_ < text_.size() && text_[place_] == u' ') ++place_;
    }

    bool Take(QChar c)
    {
        Skip();
        if (place_ >= text_.size() || text_[place_] != c) return false;
        ++place_;
        return true;
    }

    Variant Value()
    {
        Skip();
        if (Take(u'(')) {
            auto value = Call();
            EXPECT_TRUE(Take(u')')) << text_.toStdString();
            return value;
        }
        const auto c = place_ < text_.size() ? text_[place_] : QChar();
        if (c == u'"') return Text_Literal();
        if (c == u'#') return Date_Literal();
        if (c == u'@') return ++place_, owner_.variables[Name()];
        if (c == u'-' || c == u'.' || c.isDigit()) return Number_Literal();
        return Named(Name());
    }

    Variant Text_Literal()
    {
        QString value;
        for (++place_; place_ < text_.size(); ++place_) {
            if (text_[place_] == u'"') {
                if (place_ + 1 >= text_.size() || text_[place_ + 1] != u'"') break;
                ++place_; // a doubled quote is one
            }
            value += text_[place_];
        }
        ++place_;
        return Variant(value);
    }

    Variant Date_Literal()
    {
        const auto end = text_.indexOf(u'#', place_ + 1);
        const auto date = Date_From_Text(QStringView(text_).mid(place_ + 1, end - place_ - 1), 2004);
        EXPECT_TRUE(date) << text_.toStdString();
        place_ = end + 1;
        return Variant(Date_Value{date.value_or(0)});
    }

    Variant Number_Literal()
    {
        const auto begin = place_++;
        while (place_ < text_.size() && (text_[place_].isDigit() || QLatin1StringView(".E").contains(text_[place_]) ||
                                         (text_[place_ - 1] == u'E' && text_[place_] == u'-')))
            ++place_;
        const auto word = text_.mid(begin, place_ - begin);
        if (word.contains(u'.') || word.contains(u'E')) return Variant(Val(word).value_or(0));
        return Variant(Long_From_Text(word).value_or(0));
    }

    QString Name()
    {
        const auto begin = place_;
        while (place_ < text_.size() && (text_[place_].isLetterOrNumber() || text_[place_] == u'_')) ++place_;
        EXPECT_LT(begin, place_) << text_.toStdString();
        return text_.mid(begin, place_ - begin);
    }

    Variant Named(const QString& name)
    {
        const auto upper = name.toUpper();
        if (upper == QLatin1StringView("TRUE")) return Variant(true);
        if (upper == QLatin1StringView("FALSE")) return Variant(false);
        if (upper == QLatin1StringView("NULL")) return Variant::Null();
        if (upper == QLatin1StringView("EMPTY")) return Variant();
        if (upper == QLatin1StringView("NOT")) return In_Place(Not);
        for (const auto& row : Whole_Number_Constants())
            if (upper == QLatin1StringView(row.name.data(), qsizetype(row.name.size()))) return Variant(row.value);
        std::vector<Variant> arguments;
        const bool is_call = Take(u'(');
        if (is_call) arguments = Values();
        if (upper == QLatin1StringView("ARRAY")) return Make_List(std::move(arguments));
        if (upper == QLatin1StringView("NEG")) return Check(Negate(arguments[0])), arguments[0];
        const auto* row = Find_Built_In(upper.toStdString());
        if (row && owner_.error_) return {};
        if (row) return Run(*row, arguments);
        EXPECT_FALSE(is_call) << "no built-in " << name.toStdString();
        return Variant(name); // a reference
    }

    Variant In_Place(Error_Number (*routine)(Variant&))
    {
        auto value = Value();
        Check(routine(value));
        return value;
    }

    std::vector<Variant> Values()
    {
        std::vector<Variant> values;
        if (Take(u')')) return values;
        do values.push_back(Call());
        while (Take(u','));
        EXPECT_TRUE(Take(u')')) << text_.toStdString();
        return values;
    }

    Variant Run(const Built_In& row, std::vector<Variant>& arguments)
    {
        EXPECT_GE(arguments.size(), std::size_t(row.minimum)) << row.name;
        EXPECT_LE(arguments.size(), std::size_t(row.maximum)) << row.name;
        Variant result;
        Check(row.run(owner_.context, arguments, result));
        return result;
    }

    Direct_Call& owner_;
    QString text_;
    qsizetype place_ = 0;
};

Direct_Call::Direct_Call() : context{*this, *this} {}

namespace {

std::string Shown_Value(const Variant& value)
{
    if (value.Is_Null()) return "Null";
    if (value.Is_Empty()) return "Empty";
    if (value.Is_String()) return '"' + value.Text().toStdString() + '"';
    if (value.Is_Array()) {
        std::string list;
        for (const auto& element : value.Array().elements) list += (list.empty() ? "" : ", ") + Shown_Value(element);
        return '[' + list + ']';
    }
    const auto text = To_Text(value).value_or(QStringLiteral("?")).toStdString();
    switch (value.Type()) {
    case Variant_Type::Boolean: return text;
    case Variant_Type::Date: return '#' + text + '#';
    case Variant_Type::Byte: return "Byte " + text;
    case Variant_Type::Integer: return "Integer " + text;
    case Variant_Type::Long: return "Long " + text;
    case Variant_Type::Single: return "Single " + text;
    default: return "Double " + text;
    }
}

} // namespace

std::string Direct_Call::Shown(const std::string& call)
{
    error_.reset();
    auto text = QString::fromStdString(call);
    QString target;
    if (text.startsWith(QLatin1StringView("let "))) {
        target = text.section(u'=', 0, 0).mid(4).trimmed();
        text = text.section(u'=', 1);
    }
    Reader reader(*this, text);
    auto value = reader.Call();
    EXPECT_TRUE(reader.Is_At_End()) << call;
    if (error_) return "error " + std::to_string(int(*error_));
    const auto shown = Shown_Value(value);
    if (!target.isEmpty()) variables[target] = std::move(value);
    return shown;
}

std::string Direct_Call::Text(const std::string& call)
{
    error_.reset();
    Reader reader(*this, QString::fromStdString(call));
    const auto value = reader.Call();
    EXPECT_TRUE(reader.Is_At_End()) << call;
    if (error_) return "error " + std::to_string(int(*error_));
    if (value.Is_Null()) return "Null";
    return To_Text(value).value_or(QStringLiteral("?")).toStdString();
}

Evaluated<Variable_View> Direct_Call::Find_Variable(const Variant& reference)
{
    const auto place = variables.find(reference.Text());
    if (place == variables.end()) return Fails(Error_Number::Unknown_Variable);
    return Variable_View{&place->second, place->second.Is_Array() ? int(place->second.Array().bounds.size()) : 0};
}

QString Direct_Call::Current_Folder(const QString& drive)
{
    return drive.isEmpty() ? QStringLiteral("/pictures") : QStringLiteral("/drive/") + drive;
}

QString Direct_Call::Input_Box(const Host_Input_Question& question)
{
    questions += question.prompt + u'|' + question.title + u'|' + question.text;
    return QString();
}

int Direct_Call::Message_Box(const Host_Message& message)
{
    questions += message.prompt + u'|' + message.title + u'|' + QString::number(message.buttons);
    return 1;
}

QString Direct_Call::Environment_Value(const QString& name)
{
    return name == QLatin1StringView("HOME") ? QStringLiteral("/home/ann") : QString();
}

std::optional<std::vector<Host_File_Facts>> Direct_Call::Folder_Entries(const QString& folder)
{
    const QStringList known = {QStringLiteral("/pictures"), QStringLiteral("/pictures/"),
                               QStringLiteral("\\pictures\\")};
    if (!known.contains(folder)) return std::nullopt;
    return std::vector{Facts("A.JPG", 10, 32),    Facts("a[1].jpg", 10, 0), Facts("b.tif", 20, 0),
                       Facts("hidden.jpg", 5, 2), Facts("sub", 0, 16),      Facts("#1.png", 1, 0),
                       Facts("boot.sys", 1, 4)};
}

std::optional<Host_File_Facts> Direct_Call::File_Facts(const QString& path)
{
    if (path == QLatin1StringView("/pictures/b.tif")) return Facts("b.tif", 20, 1);
    if (path == QLatin1StringView("/pictures/huge")) return Facts("huge", 3'000'000'000, 0);
    return std::nullopt;
}

std::optional<QString> Direct_Call::Setting(const QString& application, const QString& section, const QString& key)
{
    for (const auto& [known, value] : All_Settings(application, section))
        if (key == known) return value;
    return std::nullopt;
}

std::vector<std::pair<QString, QString>> Direct_Call::All_Settings(const QString& application, const QString& section)
{
    if (application != QLatin1StringView("App") || section != QLatin1StringView("Main")) return {};
    return {{QStringLiteral("Color"), QStringLiteral("red")}, {QStringLiteral("Size"), QStringLiteral("5")}};
}

std::vector<Call_Row> Call_Rows(const std::string& path)
{
    std::ifstream file(std::string(HALVINE_SOURCE_DIR "/") + path);
    std::vector<Call_Row> rows;
    std::string text;
    for (int line = 1; std::getline(file, text); ++line) {
        if (text.empty() || text[0] == '\'') continue;
        const auto colon = text.find(": "), arrow = text.rfind(" => ");
        if (colon == std::string::npos || arrow == std::string::npos || arrow < colon) {
            ADD_FAILURE() << path << ':' << line << " is no row: " << text;
            continue;
        }
        rows.push_back(
            {text.substr(0, colon), text.substr(colon + 2, arrow - colon - 2), text.substr(arrow + 4), line});
    }
    return rows;
}

void Expect_Call_Rows(const std::string& path, std::size_t least_rows)
{
    const auto rows = Call_Rows(path);
    EXPECT_GE(rows.size(), least_rows);
    std::set<std::string> names;
    Direct_Call caller;
    for (const auto& row : rows) {
        EXPECT_TRUE(names.insert(row.name).second) << row.name << " stands twice";
        EXPECT_EQ(row.result, caller.Shown(row.call))
            << path << ':' << row.line << " " << row.name << "\n  " << row.call;
    }
}
