#pragma once

#include <QtCore/QString>
#include <QtCore/QStringView>
#include <vector>

namespace Formula {

/// Finds a number by a name, without regard to case and without building strings. The names stay with the caller's
/// table as well; the index keeps a shared copy of each.
class Name_Index {
public:
    static constexpr int Not_Found = -1;

    int Find(QStringView name) const;
    /// The name must not be in the index yet.
    void Insert(const QString& name, int number);
    void Clear();
    int Count() const { return count_; }

private:
    struct Slot {
        QString name;
        std::uint32_t hash = 0;
        int number = Not_Found;
    };
    void Place(Slot slot);
    void Grow();

    std::vector<Slot> slots_; ///< a power of two, linear probing
    int count_ = 0;
};

/// The order of every name list that a host sees.
bool Name_Before(const QString& left, const QString& right);

} // namespace Formula
