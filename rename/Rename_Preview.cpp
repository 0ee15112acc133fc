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

Rename_Preview Preview_Of(const std::vector<Rename_Row>& rows)
{
    Rename_Preview preview;
    preview.marks.assign(rows.size(), Rename_Preview::Mark::None);
    QHash<QString, std::size_t> first_by_name;
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
    while (!common.isEmpty() && common.back() >= u'0' && common.back() <= u'9') common.chop(1);
    return common;
}
