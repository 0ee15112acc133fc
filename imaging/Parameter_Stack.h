#pragma once

#include <algorithm>
#include <vector>

/// States of one tool for undo and redo. Places are 1-based; the array starts with bounds 1 to 10 and grows, when the top
/// passes the upper bound, to top + 9. Undo and redo move the current place only; a push after an undo throws the states
/// above away.
template <class Record>
class Parameter_Stack {
public:
    void Clear() { *this = Parameter_Stack(); }

    void Push(Record record)
    {
        top_ = ++current_;
        if (top_ > Upper_Bound()) records_.resize(std::size_t(top_ + 9));
        records_[std::size_t(current_ - 1)] = std::move(record);
    }

    /// False, and `record` stays, while nothing was pushed.
    bool Peek(Record& record) const
    {
        if (current_ < 1) return false;
        record = records_[std::size_t(current_ - 1)];
        return true;
    }

    int Current() const { return current_; }
    int Top() const { return top_; }
    int Upper_Bound() const { return int(records_.size()); }

    /// Limited to 1..Top(); nothing happens while the stack is empty.
    void Set_Current(int place)
    {
        if (top_ > 0) current_ = std::clamp(place, 1, top_);
    }

    /// A record between 1 and Top(). The stack must not be empty.
    Record& At(int place) { return records_[std::size_t(std::clamp(place, 1, top_) - 1)]; }
    const Record& At(int place) const { return records_[std::size_t(std::clamp(place, 1, top_) - 1)]; }

private:
    std::vector<Record> records_ = std::vector<Record>(10);
    int current_ = 0;
    int top_ = 0;
};
