#pragma once

#include "bkimgutl/contract/Load_Ahead.h"
#include "catalogue/Catalogue_State.h"

/// The picture that is likely to become the current one next: it is read on another core while the present one is looked
/// at, and its script is run, so that the change need not wait for either. One picture at a time.
class Next_Picture {
public:
    explicit Next_Picture(const Catalogue_State& state) : state_(state) {}

    /// Lets the picture before it go. An unknown key begins nothing.
    void Begin(int key);

    /// Does what has to be done on this thread, as soon as the picture is read. True when nothing is left to do.
    bool Go_On();

    struct Bitmaps {
        Owned_Bitmap picture{};  ///< full size, with the record's rotation and flips
        Owned_Bitmap adjusted{}; ///< with the script in force; empty when that has not run or changes nothing
    };

    /// Empty for any other picture, and when the file or what is pending for the picture has changed since. Waits for a
    /// picture that is still being read.
    Bitmaps Take(const Picture_Item& item);

private:
    /// What the bitmaps depend on.
    struct Facts {
        int key = 0, rotate = 0, flip = 0;
        File_Identity identity{};
        QString script{};
        bool operator==(const Facts&) const = default;
    };
    Facts Facts_Of(const Picture_Item& item) const;
    void Take_Read();

    const Catalogue_State& state_;
    Facts facts_;
    std::unique_ptr<Load_Ahead> reading_;
    Bitmaps bitmaps_;
};
