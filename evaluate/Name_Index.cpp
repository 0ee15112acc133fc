#include "evaluate/Name_Index.h"

#include <QtCore/QHashFunctions>

namespace Formula {

namespace {

std::uint32_t Folded(QChar character)
{
    const char16_t code = character.unicode();
    if (code < 0x80) return code >= 'A' && code <= 'Z' ? code + 32u : code;
    return character.toCaseFolded().unicode();
}

std::uint32_t Folded_Hash(QStringView name)
{
    // Seeded anew in each process: names in a foreign text cannot be chosen so that they collide.
    static const auto seed = std::uint32_t(std::size_t(QHashSeed::globalSeed())) ^ 2166136261u;
    std::uint32_t hash = seed;
    for (const QChar character : name) hash = (hash ^ Folded(character)) * 16777619u;
    return hash ^ (hash >> 15);
}

bool Same_Name(QStringView left, QStringView right)
{
    if (left.size() != right.size()) return false;
    for (qsizetype i = 0; i < left.size(); ++i)
        if (left[i] != right[i] && Folded(left[i]) != Folded(right[i])) return false;
    return true;
}

} // namespace

int Name_Index::Find(QStringView name) const
{
    if (slots_.empty()) return Not_Found;
    const std::uint32_t hash = Folded_Hash(name);
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t i = hash & mask; slots_[i].number != Not_Found; i = (i + 1) & mask)
        if (slots_[i].hash == hash && Same_Name(slots_[i].name, name)) return slots_[i].number;
    return Not_Found;
}

void Name_Index::Insert(const QString& name, int number)
{
    if (std::size_t(count_ + 1) * 2 > slots_.size()) Grow();
    Place({name, Folded_Hash(name), number});
    ++count_;
}

void Name_Index::Clear()
{
    slots_.clear();
    count_ = 0;
}

void Name_Index::Place(Slot slot)
{
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = slot.hash & mask;
    while (slots_[i].number != Not_Found) i = (i + 1) & mask;
    slots_[i] = std::move(slot);
}

void Name_Index::Grow()
{
    std::vector<Slot> old(std::max<std::size_t>(8, slots_.size() * 2));
    old.swap(slots_);
    for (Slot& slot : old)
        if (slot.number != Not_Found) Place(std::move(slot));
}

bool Name_Before(const QString& left, const QString& right)
{
    return QString::compare(left, right, Qt::CaseInsensitive) < 0;
}

} // namespace Formula
