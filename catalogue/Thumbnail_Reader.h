#pragma once

#include "bkimgutl/contract/Load_Ahead.h"
#include "catalogue/Picture_Pictures.h"

#include <optional>
#include <span>
#include <vector>

/// Reads thumbnails that were given up on other cores, while the window stays live. Each picture is read by itself, so that
/// a small one need not wait for a very large one, and one that is wanted no more is ended alone.
class Thumbnail_Reader {
public:
    static constexpr int Most_At_Once = 4;

    Thumbnail_Reader(Catalogue_State& state, const Picture_Pictures& pictures) : state_(state), pictures_(pictures) {}

    /// Keys of pictures without a thumbnail, the first one first. What is being read and is not among them any more is given
    /// up. Call it again whenever Take gave something: only Most_At_Once are read at a time.
    void Want(std::span<const int> keys);

    /// The key of a picture whose reading has ended: its record has the thumbnail now, perhaps not yet in line with a change
    /// that was made meanwhile, or the file cannot be read. Nothing when none has ended. What no longer is the picture of
    /// the record is dropped without a word: such a picture has to be wanted again.
    std::optional<int> Take();

    int Being_Read() const { return int(readings_.size()); }

private:
    struct Reading {
        int key = 0;
        QString full_name{};
        int rotate = 0; ///< as it is read; flips are made afterwards
        bool is_large = false;
        std::unique_ptr<Load_Ahead> file{};
    };
    bool Is_Being_Read(int key) const;
    void Begin(const Picture_Item& item);
    bool Take_Over(const Reading& reading) const;

    Catalogue_State& state_;
    const Picture_Pictures& pictures_;
    std::vector<Reading> readings_;
};
