#include "catalogue/Save_Qualifier.h"

#include "frame/text/Text_Utilities.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace {

int Type_Of_Word(const QString& word)
{
    if (Equal_Without_Case(word, QStringLiteral("JPG"))) return 1;
    if (Equal_Without_Case(word, QStringLiteral("TIF"))) return 2;
    return 0;
}

std::optional<int> Quality_Of_Word(const QString& word)
{
    if (!Is_Whole_Number(word)) return std::nullopt;
    const auto number = Long_From_Text(word);
    return number && *number <= 100 ? number : std::nullopt;
}

const QRegularExpression& Separators()
{
    static const QRegularExpression separators(QStringLiteral(R"([/\\:])"));
    return separators;
}

} // namespace

Qualified_Name Split_Qualifier(const QString& text)
{
    Qualified_Name result{.name = text, .qualifier = {}};
    for (;;) {
        const auto at = result.name.lastIndexOf(Separators());
        if (at <= 0) break;
        const QString word = result.name.mid(at + 1);
        const QString rest = result.name.left(at);
        if ((Type_Of_Word(word) == 0 && !Quality_Of_Word(word)) || QFileInfo(rest).isDir()) break;
        result.qualifier = result.qualifier.isEmpty() ? word : word + QLatin1Char(':') + result.qualifier;
        result.name = rest;
    }
    return result;
}

void Parse_Save_Qualifier(const QString& target, const QString& qualifier, int& type, int& quality)
{
    int told_type = 0;
    for (const QString& part : qualifier.split(Separators(), Qt::SkipEmptyParts)) {
        const QString word = part.trimmed();
        if (const int word_type = Type_Of_Word(word); word_type != 0) told_type = word_type;
        if (const auto number = Quality_Of_Word(word)) quality = *number;
    }
    if (told_type == 0) told_type = Type_Of_Word(Extension_Part(target));
    if (told_type != 0) type = told_type;
}
