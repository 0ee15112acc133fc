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

std::vector<Name_Value_Pair> New_Rows(const Name_Value_List& before, const Name_Value_List& now)
{
    std::vector<Name_Value_Pair> rows;
    for (int i = 1; i <= now.Count(); ++i) {
        bool was_there = false;
        for (int j = 1; j <= before.Count(); ++j) was_there |= before[j] == now[i];
        if (!was_there) rows.push_back(now[i]);
    }
    return rows;
}
