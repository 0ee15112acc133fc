#include "rename/Name_Value_Rows.h"

Name_Value_List List_From_Rows(const std::vector<Name_Value_Pair>& rows)
{
    Name_Value_List list;
    for (const Name_Value_Pair& row : rows) {
        const QString name = row.Name.trimmed();
        if (name.isEmpty() && row.Value.isEmpty()) continue;
        list.Append({name.isEmpty() ? row.Value : name, row.Value});
    }
    return list;
}

bool Stands_In(const Name_Value_List& list, const Name_Value_Pair& row)
{
    for (int i = 1; i <= list.Count(); ++i)
        if (list[i] == row) return true;
    return false;
}

std::vector<Name_Value_Pair> New_Rows(const Name_Value_List& before, const Name_Value_List& now)
{
    std::vector<Name_Value_Pair> rows;
    for (int i = 1; i <= now.Count(); ++i)
        if (!Stands_In(before, now[i])) rows.push_back(now[i]);
    return rows;
}
