#include "evaluate/Program_Code.h"

#include "frame/files/Limits.h"

#include <algorithm>
#include <numeric>

namespace Formula {

namespace {

/// Hosts hand the same few names over for every value: one that is the very text of a row is found without a look at its
/// letters.
template <class Rows, class Name_Of>
int Find_Same_Text(const Rows& rows, QStringView name, Name_Of name_of)
{
    constexpr std::size_t Most_Rows = 8;
    for (std::size_t i = 0; i < std::min(rows.size(), Most_Rows); ++i) {
        const QString& row = name_of(rows[i]);
        if (row.constData() == name.data() && row.size() == name.size()) return int(i);
    }
    return Name_Index::Not_Found;
}

} // namespace

int Variable_Table::Find(QStringView name) const
{
    const int same = Find_Same_Text(rows, name, [](const Variable_Record& row) -> const QString& { return row.Name; });
    return same != Name_Index::Not_Found ? same : index_.Find(name);
}

bool Variable_Table::Has_Room() const
{
    return int(rows.size()) < Current_Limits().formula_names;
}

int Variable_Table::Declare(const QString& name, int flags)
{
    const int row = int(rows.size());
    Variable_Record& record = rows.emplace_back();
    record.Name = name;
    record.Flags = flags;
    index_.Insert(name, row);
    order_.clear();
    return row;
}

void Variable_Table::Declare_Array(int row)
{
    rows[std::size_t(row)].Is_Array = true;
    rows[std::size_t(row)].Dimensions = 1;
}

void Variable_Table::Start()
{
    for (Variable_Record& variable : rows) {
        variable.Value.Clear();
        variable.Dimensions = variable.Is_Array;
    }
}

void Variable_Table::Remove(int row)
{
    rows.erase(rows.begin() + row);
    index_.Clear();
    for (std::size_t i = 0; i < rows.size(); ++i) index_.Insert(rows[i].Name, int(i));
    order_.clear();
}

void Variable_Table::Clear()
{
    rows.clear();
    index_.Clear();
    order_.clear();
}

int Variable_Table::Row_In_Order(int ordinal) const
{
    if (ordinal < 1 || ordinal > int(rows.size())) return -1;
    if (order_.size() != rows.size()) {
        order_.resize(rows.size());
        std::iota(order_.begin(), order_.end(), 0);
        std::sort(order_.begin(), order_.end(),
                  [this](int a, int b) { return Name_Before(rows[std::size_t(a)].Name, rows[std::size_t(b)].Name); });
    }
    return order_[std::size_t(ordinal - 1)];
}

int Value_Table::Find(QStringView name) const
{
    const int same = Find_Same_Text(rows, name, [](const auto& row) -> const QString& { return row.first; });
    return same != Name_Index::Not_Found ? same : index_.Find(name);
}

bool Value_Table::Has_Room() const
{
    return int(rows.size()) < Current_Limits().formula_names;
}

void Value_Table::Store(const QString& name, const Variant& value)
{
    const int row = Find(name);
    if (row != Name_Index::Not_Found) {
        rows[std::size_t(row)].second = value;
        return;
    }
    index_.Insert(name, int(rows.size()));
    rows.emplace_back(name, value);
}

void Value_Table::Remove(QStringView name)
{
    const int row = index_.Find(name);
    if (row == Name_Index::Not_Found) return;
    rows.erase(rows.begin() + row);
    index_.Clear();
    for (std::size_t i = 0; i < rows.size(); ++i) index_.Insert(rows[i].first, int(i));
}

void Value_Table::Clear()
{
    rows.clear();
    index_.Clear();
}

int Label_Table::Find_Or_Add(const QString& name)
{
    const int found = index_.Find(name);
    if (found != Name_Index::Not_Found) return found;
    index_.Insert(name, int(rows.size()));
    rows.push_back({.Name = name});
    return int(rows.size()) - 1;
}

Program_Code::Program_Code() : code(1)
{
    Find_Or_Add_Procedure(QStringLiteral("@Main"));
    procedures[Main].Kind = Token::Sub;
}

int Program_Code::Find_Or_Add_Procedure(const QString& name)
{
    const int found = procedure_index.Find(name);
    if (found != Name_Index::Not_Found) return found;
    procedure_index.Insert(name, int(procedures.size()));
    procedures.emplace_back().Name = name;
    return int(procedures.size()) - 1;
}

std::vector<int> Program_Code::Procedures_In_Order() const
{
    std::vector<int> order(procedures.size() - 1);
    std::iota(order.begin(), order.end(), 1);
    std::sort(order.begin(), order.end(), [this](int a, int b) {
        return Name_Before(procedures[std::size_t(a)].Name, procedures[std::size_t(b)].Name);
    });
    return order;
}

} // namespace Formula
