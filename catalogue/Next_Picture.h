#pragma once

#include "catalogue/Catalogue_State.h"

#include <atomic>
#include <future>

/// The picture that is likely to become the current one next: it is read and its script is run on a thread of its own
/// while the present one is looked at, so that the change need not wait for either and the window answers meanwhile. One
/// picture at a time. The thread has a copy of what it needs and shares no bitmap before it is done.
class Next_Picture {
public:
    explicit Next_Picture(const Catalogue_State& state) : state_(state) {}

    /// Gives the picture before it up, unless it is the same one with nothing changed. An unknown key begins nothing.
    /// Never waits for what is given up: that ends by itself at the decoder's next row or the script's next item.
    void Begin(int key);

    /// Gives everything up and waits until nothing of it is left.
    void End();

    /// True from Begin until the picture can be taken without waiting.
    bool Is_Being_Made(int key) const;

    struct Bitmaps {
        Owned_Bitmap picture{};  ///< full size, with the record's rotation and flips
        Owned_Bitmap adjusted{}; ///< with the script in force; empty when that has not run or changes nothing
    };

    /// Empty for any other picture, and when the file or what is pending for the picture has changed since. Waits for a
    /// picture that is still being made.
    Bitmaps Take(const Picture_Item& item);

private:
    /// What the bitmaps depend on.
    struct Facts {
        int key = 0, rotate = 0, flip = 0;
        QString file{};
        File_Identity identity{};
        Script_Item_Array script{};
        bool operator==(const Facts&) const = default;
    };

    /// A picture on its thread. Its end tells the thread to stop, and waits for that.
    struct Making {
        explicit Making(const Facts& of);
        ~Making();
        bool Is_Done() const;
        const Facts facts;
        std::atomic<bool> stop = false;
        std::future<Bitmaps> bitmaps;
    };

    Facts Facts_Of(const Picture_Item& item) const;
    static Bitmaps Made(const Facts& facts, const std::atomic<bool>& stop);
    static Bitmaps Read(const Facts& facts);
    void Give_Up();

    const Catalogue_State& state_;
    std::unique_ptr<Making> making_;
    std::vector<std::unique_ptr<Making>> given_up_; // until their threads have ended
};
