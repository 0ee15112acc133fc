#include "tests/evaluate/engine/Case_File.h"
#include "Project_Folders.h"

#include "evaluate/variant/Conversions.h"
#include "evaluate/variant/Variant_Array.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

using namespace Formula;

std::ostream& operator<<(std::ostream& out, const Formula_Case& row)
{
    return out << row.name.toStdString() << "\n" << row.source.toStdString();
}

namespace {

void Read_Expression(const QString& line, int number, std::vector<Formula_Case>& cases)
{
    const QString mark = QStringLiteral("' expect: ");
    const qsizetype at = line.lastIndexOf(mark);
    if (at < 0) return;
    Formula_Case row{.name = QString::number(number) + u' ' + line.left(at), .source = line.left(at).trimmed()};
    row.expected.push_back({{}, line.mid(at + mark.size())});
    cases.push_back(row);
}

void Read_Program_Line(const QString& line, Formula_Case& row)
{
    static const QRegularExpression expectation(QStringLiteral("^' expect ?(.*?): (.*)$"));
    static const QRegularExpression answer(QStringLiteral("^' answer: ?(.*)$"));
    if (const auto match = expectation.match(line); match.hasMatch())
        row.expected.push_back({match.captured(1), match.captured(2)});
    else if (const auto typed = answer.match(line); typed.hasMatch())
        row.answers += typed.captured(1);
    else
        row.source += line + u'\n';
}

} // namespace

std::vector<Formula_Case> Read_Formula_Cases(const char* path_in_tests)
{
    QFile file(QStringLiteral(HALVINE_SOURCE_DIR "/tests/") + QString::fromUtf8(path_in_tests));
    if (!file.open(QIODevice::ReadOnly)) return {};
    std::vector<Formula_Case> cases;
    bool in_program = false;
    int number = 0;
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        ++number;
        if (line.startsWith(u"=== ")) {
            in_program = true;
            cases.push_back({.name = line.mid(4), .source = {}, .program = true, .expected = {}, .answers = {}});
        } else if (in_program) {
            Read_Program_Line(line, cases.back());
        } else {
            Read_Expression(line, number, cases);
        }
    }
    return cases;
}

QString Shown(const Variant& value)
{
    const auto named = [&](const char* type) {
        return QString::fromLatin1(type) + u' ' + To_Display_Text(value).value_or(QStringLiteral("?"));
    };
    switch (value.Type()) {
    case Variant_Type::Empty: return QStringLiteral("Empty");
    case Variant_Type::Null: return QStringLiteral("Null");
    case Variant_Type::Integer: return named("Integer");
    case Variant_Type::Long: return named("Long");
    case Variant_Type::Single: return named("Single");
    case Variant_Type::Double: return named("Double");
    case Variant_Type::Date: return named("Date");
    case Variant_Type::String: return QStringLiteral("String ") + value.Text();
    case Variant_Type::Boolean: return named("Boolean");
    case Variant_Type::Byte: return named("Byte");
    case Variant_Type::Error: return QStringLiteral("Missing");
    case Variant_Type::Array: break;
    }
    QStringList elements;
    for (const Variant& element : value.Array().elements) elements += Shown(element);
    return QStringLiteral("Array(") + elements.join(QStringLiteral(", ")) + u')';
}

QString Shown(const Evaluation_Error& error, const QString& source)
{
    QString rest = source.mid(error.Position - 1);
    rest = rest.left(rest.indexOf(u'\n') < 0 ? rest.size() : rest.indexOf(u'\n'));
    return QStringLiteral("error %1 %2 @ %3").arg(error.Code).arg(error.Description, rest).trimmed();
}
