#include "frame/Recent_List.h"

#include "frame/Settings_Store.h"

namespace {

constexpr qsizetype Longest_Path = 4096; // a longer one is no path of a file

} // namespace

Recent_List::Recent_List(Settings_Map& settings, QString Value_Name)
    : settings_(settings), value_name_(std::move(Value_Name))
{
    for (int number = 1; number <= Most_Paths; ++number) {
        const QString path = settings_.Read_Value(Settings_Key, this->Value_Name(number));
        if (!path.isEmpty() && path.size() <= Longest_Path && !paths_.contains(path)) paths_ << path;
    }
}

QString Recent_List::Value_Name(int number) const
{
    return value_name_ + u'-' + QString::number(number);
}

void Recent_List::Add(const QString& path)
{
    if (path.isEmpty() || path.size() > Longest_Path || paths_.value(0) == path) return;
    paths_.removeAll(path);
    paths_.prepend(path);
    while (paths_.size() > Most_Paths) paths_.removeLast();
    for (int number = 1; number <= paths_.size(); ++number)
        settings_.Write_Value(Settings_Key, Value_Name(number), paths_[number - 1]);
}
