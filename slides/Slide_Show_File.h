#pragma once

#include <QtCore/QString>
#include <span>

/// Slide show files, "hvs": an ordered list of pictures with a rotation and a time each. Two forms, told apart by the first
/// line: mark-up, which Save writes, and lines of keywords, which Copy writes.

struct Slide {
    QString file{};    ///< as it stands in the file while reading; the full native name for writing
    int rotate = 0;    ///< degrees, 0 to 359
    float seconds = 0; ///< 0 means the show's time
};

/// Gets what a file says, in its order.
class Slide_Show_Sink {
public:
    virtual ~Slide_Show_Sink() = default;
    virtual void Take_Folder(const QString& folder) = 0; ///< as it stands in the file
    virtual void Take_Seconds(float seconds) = 0;        ///< any number that the file holds
    virtual bool Take_Slide(const Slide& slide) = 0;     ///< false stops the reading
    virtual bool Take_Sound(const QString& file) = 0;    ///< false stops the reading
};

enum class Show_End {
    Complete,
    Fault,   ///< what stands before the fault was handed on
    Stopped, ///< by the sink
};

Show_End Read_Slide_Show(const QString& text, Slide_Show_Sink& sink);

/// The mark-up form. Names below the folder that all slides share are written without it.
QString Slide_Show_Text(std::span<const Slide> slides, float seconds);

/// The folder that all slides share, with its trailing separator; empty when there is none but the root.
QString Common_Folder(std::span<const Slide> slides);

/// Paths are written with "\"; one that holds a "\" in a name stays native, so that it can be found again.
QString Written_Path(const QString& native_path);

/// "#0.00", as both forms hold seconds.
QString Seconds_Text(float seconds);
