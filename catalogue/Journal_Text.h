#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <cstdint>
#include <optional>
#include <vector>

/// The journal of unsaved work as text. The first line names the format. Every other line is eight digits of a check sum,
/// a blank, and a JSON object: a picture as it is now, which replaces what stood about its key before, or a key that left
/// the list.

/// A picture of the list with what its file does not hold yet.
struct Kept_Picture {
    int key = 0; ///< of the run; keys grow with the order of the list
    QString file;
    int rotate = 0; ///< degrees, 0 to 359
    int flip = 0;
    float seconds = 0;                    ///< slide time, 0 the global one
    std::optional<QString> script{};      ///< only when it was changed
    std::optional<QString> description{}; ///< only when it was changed
    // Of the file when it was read or written last.
    std::uint64_t inode = 0;
    std::int64_t size = -1;
    std::int64_t modified_nanoseconds = 0;

    bool Has_Changes() const { return rotate != 0 || flip != 0 || seconds != 0 || script || description; }
    bool operator==(const Kept_Picture&) const = default;
};

struct Kept_Work {
    std::vector<Kept_Picture> pictures; ///< in the order of the list
    bool is_damaged = false;            ///< what stands behind the fault is missing
};

QByteArray Journal_Head();
QByteArray Journal_Line(const Kept_Picture& picture);
QByteArray Journal_Line_Of_Dropped(int key);

/// Reads until the end or the first line that is damaged or cut; of another file nothing.
Kept_Work Read_Journal_Text(const QByteArray& text);
