#include "catalogue/Template_List.h"

#include "frame/text/Text_Utilities.h"

#include <algorithm>

Template_List::Template_List(std::vector<Template_Name> templates)
{
    for (Template_Name& one : templates) {
        const QString name = one.name;
        rows_.push_back({std::move(one), name});
    }
}

void Template_List::Mark(int row, bool marked)
{
    if (Has(row)) rows_[std::size_t(row - 1)].marked = marked;
}

bool Template_List::Has_Marks() const
{
    return std::any_of(rows_.begin(), rows_.end(), [](const Entry& entry) { return entry.marked; });
}

bool Template_List::Rename(int row, const QString& name)
{
    const QString wanted = name.trimmed();
    if (!Has(row) || wanted.isEmpty()) return false;
    for (int other = 1; other <= Count(); ++other)
        if (other != row && Case_Folded(Row(other).name) == Case_Folded(wanted)) return false;
    rows_[std::size_t(row - 1)].present.name = wanted;
    return true;
}

bool Template_List::Is_Changed() const
{
    return std::any_of(rows_.begin(), rows_.end(),
                       [](const Entry& entry) { return entry.marked || entry.present.name != entry.first_name; });
}

std::vector<Template_Name> Template_List::Result() const
{
    std::vector<Template_Name> result;
    for (const Entry& entry : rows_)
        if (!entry.marked) result.push_back(entry.present);
    return result;
}
