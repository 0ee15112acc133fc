#include "frame/Default_Printer.h"

#include "frame/Settings_Store.h"
#include "frame/text/Text_Utilities.h"

#include <QtCore/QDir>
#include <QtCore/QStringList>
#include <optional>

namespace {

/// Words between blanks. Quotes of either kind hold a value together, and a backslash takes the next character as it is.
QStringList Words_Of(const QString& line)
{
    QStringList words;
    QString word;
    QChar quote;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (c == u'\\' && i + 1 < line.size())
            word += line[++i];
        else if (!quote.isNull() && c == quote)
            quote = QChar();
        else if (quote.isNull() && (c == u'\'' || c == u'"'))
            quote = c;
        else if (!quote.isNull() || !c.isSpace())
            word += c;
        else if (!word.isEmpty())
            words << std::exchange(word, {});
    }
    if (!word.isEmpty()) words << word;
    return words;
}

std::optional<Page_Orientation> Orientation_Of(const QString& option)
{
    const QString name = option.section(u'=', 0, 0).toLower();
    const QString value = option.section(u'=', 1).toLower();
    if (name == u"orientation-requested") // 3 upright, 4 and 5 on either side, 6 upside down
        return value == u"4" || value == u"5" ? Page_Orientation::Landscape : Page_Orientation::Portrait;
    const bool is_on = !option.contains(u'=') || value == u"true" || value == u"yes" || value == u"on";
    if (name == u"landscape") return is_on ? Page_Orientation::Landscape : Page_Orientation::Portrait;
    return std::nullopt;
}

struct Printer_Line {
    bool is_default = false;
    QString name{};
    QStringList options{};
};

std::vector<Printer_Line> Lines_Of(const QString& text)
{
    std::vector<Printer_Line> lines;
    for (const QString& line : text.split(u'\n')) {
        QStringList words = Words_Of(line);
        if (words.size() < 2) continue;
        const QString kind = words.takeFirst().toLower();
        if (kind == u"default" || kind == u"dest") lines.push_back({kind == u"default", words.takeFirst(), words});
    }
    return lines;
}

/// PRINTER=lp is what some logins set for everybody; it names no printer.
QString Name_In_Environment()
{
    const QString printer = qEnvironmentVariable("LPDEST", qEnvironmentVariable("PRINTER"));
    return printer == u"lp" && !qEnvironmentVariableIsSet("LPDEST") ? QString() : printer;
}

} // namespace

Default_Printer Default_Printer_From(const QString& machine_options, const QString& user_options, const QString& named)
{
    std::vector<Printer_Line> lines = Lines_Of(machine_options);
    const std::vector<Printer_Line> users = Lines_Of(user_options);
    lines.insert(lines.end(), users.begin(), users.end());
    Default_Printer printer{.name = named};
    if (named.isEmpty())
        for (const Printer_Line& line : lines)
            if (line.is_default) printer.name = line.name;
    for (const Printer_Line& line : lines) {
        if (printer.name.isEmpty() || Case_Folded(line.name) != Case_Folded(printer.name)) continue;
        for (const QString& option : line.options)
            printer.orientation = Orientation_Of(option).value_or(printer.orientation);
    }
    return printer;
}

Default_Printer Read_Default_Printer()
{
    const QString users = QDir::homePath() + QStringLiteral("/.cups/lpoptions");
    return Default_Printer_From(Text_Of_Settings_File(QStringLiteral("/etc/cups/lpoptions")),
                                Text_Of_Settings_File(users), Name_In_Environment());
}
