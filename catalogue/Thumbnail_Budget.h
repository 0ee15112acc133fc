#pragma once

#include "catalogue/Picture_Pictures.h"

#include <list>
#include <unordered_map>

/// What the filmstrip draws, and how much memory that may take. A picture is drawn as it would be seen: its thumbnail, which
/// already is turned and flipped, with the script in force run over it. Both are made when the picture comes on view, and
/// again when its thumbnail, its script or the prepared script in force has changed since.
///
/// The memory of all thumbnails stays bounded: the ones that were not on view for the longest time are given up, and read
/// again from their file when they come on view. At least `Least_Kept` stay, so that a full view never reads in circles.
class Thumbnail_Budget {
public:
    static constexpr std::int64_t Standard_Bytes = std::int64_t(512) * 1024 * 1024;
    static constexpr int Least_Kept = 64;
    static constexpr int Most_Kept = 20'000; ///< small ones too: the library's handles are not without end

    Thumbnail_Budget(Catalogue_State& state, Picture_Pictures& pictures, std::int64_t bytes = Standard_Bytes)
        : state_(state), pictures_(pictures), budget_(bytes)
    {}

    /// The thumbnail of this picture has come or was changed, away from the view: it counts, and no script runs yet.
    void Note(int key);

    /// The picture is about to be drawn: a thumbnail that was given up is read again, and the script is run when what was
    /// made before no longer holds. False when the picture has no thumbnail.
    bool Use(int key);

    /// Use would have nothing to do.
    bool Is_Ready(const Picture_Item& item) const;

    /// What to draw now, without reading or computing; 0 when there is nothing. Until Use was called again this is the
    /// thumbnail with its former script, and nothing for a picture that was turned since.
    Bitmap_Handle Drawn(const Picture_Item& item) const;

    /// Gives up what belongs to pictures that are listed no more.
    void Forget_Removed();

    std::int64_t Bytes() const { return bytes_; }
    int Kept() const { return int(order_.size()); }

private:
    struct Entry {
        std::list<int>::iterator place;
        std::int64_t bytes = 0;
        Bitmap_Handle thumbnail = 0; ///< the record's own, which `adjusted` was made from
        Script_Item_Array items{};   ///< that were run
        bool is_adjusted = false;    ///< they were
        Owned_Bitmap adjusted{};     ///< empty when they changed nothing
    };
    Entry& Put_First(const Picture_Item& item);
    void Adjust(Entry& entry, const Picture_Item& item) const;
    void Count(Entry& entry);
    void Forget(int key);
    void Trim();

    Catalogue_State& state_;
    Picture_Pictures& pictures_;
    std::int64_t budget_;
    std::int64_t bytes_ = 0;
    std::list<int> order_; // keys, the latest first
    std::unordered_map<int, Entry> entries_;
};
