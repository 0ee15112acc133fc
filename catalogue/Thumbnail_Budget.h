#pragma once

#include "catalogue/Picture_Pictures.h"

#include <QtCore/QHash>
#include <list>

/// Keeps the memory of all thumbnails bounded: the ones that were not on view for the longest time are given up, and read
/// again from their file when they come on view. At least `Least_Kept` stay, so that a full view never reads in circles.
class Thumbnail_Budget {
public:
    static constexpr std::int64_t Standard_Bytes = std::int64_t(512) * 1024 * 1024;
    static constexpr int Least_Kept = 64;

    Thumbnail_Budget(Catalogue_State& state, Picture_Pictures& pictures, std::int64_t bytes = Standard_Bytes)
        : state_(state), pictures_(pictures), budget_(bytes)
    {}

    /// The thumbnail of this picture has come, was changed, or is about to be drawn. One that was given up is read again.
    /// False when the picture has none.
    bool Use(int key);

    std::int64_t Bytes() const { return bytes_; }
    int Kept() const { return int(order_.size()); }

private:
    struct Entry {
        std::list<int>::iterator place;
        std::int64_t bytes = 0;
    };
    void Forget(int key);
    void Trim();

    Catalogue_State& state_;
    Picture_Pictures& pictures_;
    std::int64_t budget_;
    std::int64_t bytes_ = 0;
    std::list<int> order_; // keys, the latest first
    QHash<int, Entry> entries_;
};
