#include "rename/Rename_Preview.h"

#include "frame/text/Text_Utilities.h"
#include "rename/Rename_Plan.h"

#include <QtCore/QHash>

QString Rename_Preview::Status() const
{
    const auto counted = [](qsizetype count, const QString& one, const QString& many) {
        return QString::number(count) + u' ' + (count == 1 ? one : many);
    };
    QString text = counted(qsizetype(marks.size()), QStringLiteral("file"), QStringLiteral("files")) +
                   QStringLiteral(", ") + counted(new_names, QStringLiteral("new name"), QStringLiteral("new names"));
    if (twice > 0)
        text += QStringLiteral(", ") +
                counted(twice, QStringLiteral("name stands twice"), QStringLiteral("names stand twice"));
    if (unusable > 0)
        text += QStringLiteral(", ") +
                counted(unusable, QStringLiteral("name cannot be used"), QStringLiteral("names cannot be used"));
    return text;
}

QString Rename_Preview::Hint(const Rename_Inputs& inputs) const
{
    if (Has_New_Names()) return {};
    if (inputs.change_from.isEmpty() && inputs.pattern_mode)
        return QStringLiteral("The pattern in Change From is empty");
    if (inputs.change_from.isEmpty())
        return QStringLiteral("Type into Change From what the names begin with, or define a pattern such as *_");
    if (inputs.change_to.isEmpty()) return QStringLiteral("Type into Change To what takes its place");
    return inputs.pattern_mode ? QStringLiteral("The beginning of a name is to fit the pattern in Change From")
                               : QStringLiteral("A name is to begin with the text in Change From");
}

Rename_Preview Preview_Of(const std::vector<Rename_Row>& rows)
{
    Rename_Preview preview;
    preview.marks.assign(rows.size(), Rename_Preview::Mark::None);
    QHash<QString, std::size_t> first_by_name;
    first_by_name.reserve(qsizetype(rows.size()));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const QString& name = rows[i].Final_Name();
        if (name != rows[i].file_name) {
            ++preview.new_names;
            if (!Name_Fault(File_System_Bytes(name), {}).empty()) {
                preview.marks[i] = Rename_Preview::Mark::Unusable;
                ++preview.unusable;
            }
        }
        const QString key = Case_Folded(name);
        const auto first = first_by_name.constFind(key);
        if (first == first_by_name.constEnd()) {
            first_by_name.insert(key, i);
            continue;
        }
        ++preview.twice;
        for (const std::size_t row : {*first, i})
            if (preview.marks[row] == Rename_Preview::Mark::None) preview.marks[row] = Rename_Preview::Mark::Twice;
    }
    return preview;
}

QString Common_Beginning(const std::vector<Rename_Row>& rows)
{
    if (rows.empty()) return {};
    QString common = Root_Of_Name(rows.front().file_name);
    for (const Rename_Row& row : rows) common = Common_Path(common, Root_Of_Name(row.file_name));
    QString without_digits = common;
    while (!without_digits.isEmpty() && without_digits.back() >= u'0' && without_digits.back() <= u'9')
        without_digits.chop(1);
    return without_digits.isEmpty() ? common : without_digits;
}
